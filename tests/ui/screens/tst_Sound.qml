import QtQuick
import QtTest
import Korvantis.Screens
import ScreenTests

Item {
    id: stage

    width: 1220
    height: 790

    ThemedContent {
        id: themed

        anchors.fill: parent
        store: Fixture.store
    }

    TestCase {
        id: test

        readonly property string first: "daemon:application1"

        name: "Sound"
        when: windowShown

        function init() {
            Fixture.reset();
            Fixture.plugInAudio();
            stage.width = 1220;
            stage.height = 790;
            Fixture.store.selectedPane = "sound";
            Fixture.setApplications(4);
            Fixture.tick();
            themed.rebuild();
            waitForRendering(themed);
        }
        function view(name) {
            const found = findChild(themed, name);
            verify(found !== null, name);
            return found;
        }
        function mixer() {
            return Fixture.store.audioMixer;
        }
        function rows() {
            const rows = Array.from(view("streams").children).filter(child => child instanceof AudioStreamRowView);
            return rows.sort((left, right) => left.y - right.y);
        }
        function textOf(item, name) {
            const found = findChild(item, name);
            verify(found !== null, name);
            return found.text;
        }
        function sliderOf(row) {
            return findChild(row, "volume-" + row.appID);
        }
        // Where the handle of a slider is.
        function handleX(slider) {
            return slider.leftPadding + slider.visualPosition * (slider.availableWidth - 16) + 8;
        }

        function test_theCaptionsOfTheCards() {
            const routing = view("routingCaption");
            compare(routing.text, "SYSTEM AUDIO ROUTING & MASTER OUTPUT");
            const mixer = view("mixerCaption");
            compare(mixer.text, "PER-APPLICATION VOLUME MIXER");
            for (const caption of [routing, mixer]) {
                compare(caption.font, OstrelFont.system(11, Font.Bold, 0.6));
                compare(caption.opacity, 0.6);
            }
            compare(view("routingSymbol").name, "speaker.wave.3.fill");
            compare(view("refreshDevices").text, "Refresh CoreAudio");
            verify(view("hardwareDevicesCard").y < view("perAppVolumeMixerCard").y);
        }
        function test_theFiguresAndSymbolsHaveTheirSizes() {
            compare(view("masterText").font, OstrelFont.monospaced(12, Font.Medium));
            compare(view("masterMute").fontSize, 14);
            const row = rows()[0];
            compare(findChild(row, "appName").font, OstrelFont.system(13, Font.Medium));
            compare(findChild(row, "status").font, OstrelFont.system(10.5));
            compare(findChild(row, "volumeText").font, OstrelFont.monospaced(11.5));
            compare(view("mute-" + test.first).fontSize, 13);
        }
        function test_aRowShowsTheIconOfItsApplication() {
            const path = Fixture.installApplication();
            Fixture.setBundlePath(path);
            Fixture.tick();
            compare(findChild(rows()[0], "icon").bundlePath, path);
            compare(findChild(rows()[1], "icon").bundlePath, "");
        }
        function test_thePickersNameTheDevices() {
            const output = view("outputPicker");
            compare(output.caption, "Output");
            compare(output.Accessible.name, "Output Device: Interface");
            compare(output.count, 2);
            compare(output.textAt(0), "Headphones");
            compare(output.currentIndex, 1);
            const input = view("inputPicker");
            compare(input.caption, "Input");
            compare(input.Accessible.name, "Input Microphone: Microphone");
            compare(input.currentIndex, 0);
        }
        function test_aNewChoiceIsMadeTheDefault() {
            view("outputPicker").forceActiveFocus();
            keyClick(Qt.Key_Space);
            tryVerify(() => view("outputPicker").popup.opened);
            keyClick(Qt.Key_Up);
            keyClick(Qt.Key_Return);
            compare(mixer().selectedOutputDeviceID, 70);
            compare(view("outputPicker").displayText, "Headphones");
            view("inputPicker").forceActiveFocus();
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            compare(mixer().selectedInputDeviceID, 72);
        }
        function test_aChoiceThatTheSystemRefusesIsTakenBack() {
            Fixture.setRefusesAudio(true);
            view("outputPicker").forceActiveFocus();
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_Up);
            keyClick(Qt.Key_Return);
            compare(mixer().selectedOutputDeviceID, 72);
            compare(view("outputPicker").currentIndex, 1);
            compare(view("outputPicker").displayText, "Interface");
        }
        function test_anOpenPickerSurvivesATick() {
            mouseClick(view("outputPicker"));
            tryVerify(() => view("outputPicker").popup.opened);
            keyClick(Qt.Key_Up);
            compare(view("outputPicker").highlightedIndex, 0);
            Fixture.setApplications(6);
            Fixture.tick();
            waitForRendering(themed);
            verify(view("outputPicker").popup.opened);
            compare(view("outputPicker").highlightedIndex, 0);
            keyClick(Qt.Key_Return);
            compare(mixer().selectedOutputDeviceID, 70);
        }
        function test_refreshingWithTheSameDevicesLeavesThePickersAsTheyAre() {
            mouseClick(view("refreshDevices"));
            compare(view("outputPicker").displayText, "Interface");
            compare(view("outputPicker").currentIndex, 1);
            compare(view("inputPicker").displayText, "Microphone");
            compare(view("inputPicker").currentIndex, 0);
        }
        function test_aDevicePluggedInIsOfferedAfterARefreshAndTheChoiceStays() {
            Fixture.plugInMonitor();
            compare(view("outputPicker").count, 2);
            mouseClick(view("refreshDevices"));
            compare(view("outputPicker").count, 3);
            compare(view("outputPicker").displayText, "Interface");
            compare(view("outputPicker").currentIndex, 2);
        }
        function test_aNewListWithTheChoiceAtTheSamePlaceStillShowsIt() {
            Fixture.renameInterface("Renamed Interface");
            mouseClick(view("refreshDevices"));
            compare(view("outputPicker").textAt(1), "Renamed Interface");
            compare(view("outputPicker").currentIndex, 1);
            compare(view("outputPicker").displayText, "Renamed Interface");
        }
        function test_aMasterVolumeOf0755Shows75Percent() {
            mixer().masterVolume = 0.755;
            compare(view("masterText").text, "75%");
            compare(view("masterSlider").value, 0.755);
            compare(view("masterSlider").from, 0);
            compare(view("masterSlider").to, 1);
        }
        function test_theMasterIsMutedAndBack() {
            const button = view("masterMute");
            compare(button.symbol, "speaker.wave.3.fill");
            compare(String(button.ink), String(OstrelTheme.ink1));
            mouseClick(button);
            compare(mixer().isMasterMuted, true);
            compare(button.symbol, "speaker.slash.fill");
            compare(String(button.ink), String(OstrelTheme.strainRed));
            compare(String(button.hoverInk), String(OstrelTheme.strainRed));
            button.forceActiveFocus();
            keyClick(Qt.Key_Space);
            compare(mixer().isMasterMuted, false);
        }
        function test_theMasterSliderIsMovedByMouseAndKeys() {
            const slider = view("masterSlider");
            mouseDrag(slider, handleX(slider), slider.height / 2, -slider.width / 4, 0);
            verify(mixer().masterVolume < 0.6);
            slider.forceActiveFocus();
            mixer().masterVolume = 0.75;
            keyClick(Qt.Key_Left);
            compare(view("masterText").text, "70%");
            keyClick(Qt.Key_Left);
            compare(view("masterText").text, "65%");
            keyClick(Qt.Key_Right);
            compare(view("masterText").text, "70%");
            keyClick(Qt.Key_Home);
            compare(mixer().masterVolume, 0);
            keyClick(Qt.Key_Left);
            compare(mixer().masterVolume, 0);
            keyClick(Qt.Key_End);
            compare(mixer().masterVolume, 1);
            mixer().masterVolume = 0.25;
            compare(slider.value, 0.25);
        }
        function test_aRowSaysWhoItIs() {
            const row = rows()[0];
            compare(rows().length, 4);
            compare(textOf(row, "appName"), "application1");
            compare(textOf(row, "status"), "Active CoreAudio Stream · PID 1001");
            compare(textOf(row, "volumeText"), "100%");
            compare(sliderOf(row).width, 220);
            compare(sliderOf(row).value, 1);
            compare(row.Accessible.role, Accessible.ListItem);
            compare(row.Accessible.name, "application1, Active CoreAudio Stream · PID 1001, 100%");
        }
        function test_aMutedApplicationShowsMutedAndKeepsItsSlider() {
            mixer().setAppVolume(test.first, 0.4);
            mouseClick(view("mute-" + test.first));
            const row = rows()[0];
            compare(textOf(row, "volumeText"), "Muted");
            compare(sliderOf(row).value, 0.4);
            compare(view("mute-" + test.first).symbol, "speaker.slash.fill");
            mouseClick(view("mute-" + test.first));
            compare(textOf(row, "volumeText"), "40%");
            compare(view("mute-" + test.first).symbol, "speaker.wave.2.fill");
        }
        function test_anApplicationThatIsNotActiveIsReady() {
            mixer().setAppVolume(test.first, 0.4);
            Fixture.setCPU(0);
            Fixture.tick();
            compare(textOf(rows()[0], "status"), "Ready · PID 1001");
        }
        function test_aSliderBeingDraggedIsNotDisturbedByATick() {
            const row = rows()[0];
            const slider = sliderOf(row);
            const y = slider.height / 2;
            mousePress(slider, handleX(slider), y);
            mouseMove(slider, slider.width / 2 + 20, y);
            mouseMove(slider, slider.width / 2, y);
            const volume = slider.value;
            fuzzyCompare(volume, 0.5, 0.1);
            // The load falls, so that an application not touched would go, and the order changes.
            Fixture.setCPU(0);
            Fixture.reverseGroups();
            Fixture.tick();
            waitForRendering(themed);
            compare(rows().length, 4);
            compare(rows()[3], row);
            verify(slider.pressed);
            compare(slider.value, volume);
            mouseMove(slider, slider.width / 4 + 10, y);
            mouseMove(slider, slider.width / 4, y);
            verify(slider.value < volume);
            mouseRelease(slider, slider.width / 4, y);
            const stream = rows()[3];
            compare(stream.appID, test.first);
            compare(stream.volume, slider.value);
            compare(rows().filter(other => other.volume !== 1).length, 1);
        }
        function test_aSliderThatIsOnlyHeldKeepsItsRow() {
            const slider = sliderOf(rows()[0]);
            mousePress(slider, handleX(slider), slider.height / 2);
            Fixture.setCPU(0);
            Fixture.tick();
            waitForRendering(themed);
            verify(slider.pressed);
            compare(rows().length, 4);
            mouseRelease(slider, handleX(slider), slider.height / 2);
            compare(rows()[0].volume, 1);
        }
        function test_aMuteButtonHeldDownThroughATickHitsItsOwnApplication() {
            const button = view("mute-" + test.first);
            mousePress(button);
            Fixture.reverseGroups();
            Fixture.tick();
            waitForRendering(themed);
            mouseRelease(button);
            for (const row of rows())
                compare(row.isMuted, row.appID === test.first, row.appID);
        }
        function test_aDeviceWithALongNameStaysInsideItsPicker() {
            stage.width = 820;
            Fixture.renameInterface("A Sound Card With The Longest Name That Anybody Ever Gave One (Analog Stereo)");
            mouseClick(view("refreshDevices"));
            waitForRendering(themed);
            const picker = view("outputPicker");
            for (const text of Array.from(picker.contentItem.children).filter(child => child instanceof Text))
                verify(text.mapToItem(picker, text.width, 0).x <= picker.width - picker.rightPadding + 0.5);
            verify(view("inputPicker").x >= picker.x + picker.width);
        }
        function test_everythingHasRoomAtEveryWidth_data() {
            return [820, 1040, 1220, 1800].map(width => ({
                        tag: "width " + width,
                        width: width
                    }));
        }
        function test_everythingHasRoomAtEveryWidth(data) {
            stage.width = data.width;
            waitForRendering(themed);
            for (const row of rows()) {
                const status = findChild(row, "status");
                verify(!status.truncated, status.text);
                compare(sliderOf(row).width, 220);
                const end = findChild(row, "volumeText");
                verify(end.x + end.width <= row.width + 0.5);
            }
        }
        function test_theKeyboardReachesARowBelowTheViewAndShowsIt() {
            stage.height = 420;
            Fixture.setApplications(20);
            Fixture.tick();
            waitForRendering(themed);
            const scroller = view("paneScroller");
            compare(scroller.contentY, 0);
            view("volume-" + test.first).forceActiveFocus(Qt.TabFocusReason);
            for (let row = 1; row < 20; ++row) {
                keyClick(Qt.Key_Tab);
                keyClick(Qt.Key_Tab);
                const slider = view("volume-daemon:application" + (row + 1));
                verify(slider.activeFocus, row);
                const top = slider.mapToItem(scroller, 0, 0).y;
                verify(top >= 0 && top + slider.height <= scroller.height, top);
            }
            for (let row = 19; row > 0; --row) {
                keyClick(Qt.Key_Tab, Qt.ShiftModifier);
                keyClick(Qt.Key_Tab, Qt.ShiftModifier);
            }
            verify(view("volume-" + test.first).activeFocus);
            verify(view("volume-" + test.first).mapToItem(scroller, 0, 0).y >= 0);
        }
        function test_ofManyApplicationsOnlyThoseInViewAreMade() {
            Fixture.setApplications(200);
            Fixture.tick();
            waitForRendering(themed);
            const streams = view("streams");
            compare(streams.implicitHeight, 200 * 44 - 4);
            verify(rows().length < 30, rows().length);
            compare(rows()[0].appID, test.first);
            const scroller = view("paneScroller");
            scroller.contentY = scroller.contentHeight - scroller.height;
            waitForRendering(themed);
            const last = rows()[rows().length - 1];
            compare(last.appName, "application200");
            compare(last.y, 199 * 44);
            verify(rows().length < 30, rows().length);
            verify(findChild(themed, "volume-" + test.first) === null);
        }
        function test_aSliderThatIsHeldStaysWhenItsRowMovesOutOfView() {
            Fixture.setApplications(200);
            Fixture.tick();
            waitForRendering(themed);
            const row = rows()[0];
            const slider = sliderOf(row);
            mousePress(slider, handleX(slider), slider.height / 2);
            Fixture.reverseGroups();
            Fixture.tick();
            waitForRendering(themed);
            verify(slider.pressed);
            compare(row.y, 199 * 44);
            mouseMove(slider, slider.width / 4 + 10, slider.height / 2);
            mouseMove(slider, slider.width / 4, slider.height / 2);
            mouseRelease(slider, slider.width / 4, slider.height / 2);
            compare(row.appID, test.first);
            verify(row.volume < 0.5, row.volume);
            view("masterSlider").forceActiveFocus();
            verify(rows().every(other => other.appID !== test.first));
        }
        function test_everyControlHasANameAndARole() {
            compare(view("refreshDevices").Accessible.name, "Refresh CoreAudio");
            compare(view("masterMute").Accessible.name, "Mute the Master Output");
            compare(view("masterSlider").Accessible.name, "Master Volume");
            compare(view("masterSlider").Accessible.role, Accessible.Slider);
            compare(view("mute-" + test.first).Accessible.name, "Mute application1");
            compare(view("mute-" + test.first).Accessible.role, Accessible.Button);
            compare(sliderOf(rows()[0]).Accessible.name, "Volume of application1");
            compare(view("outputPicker").Accessible.role, Accessible.ComboBox);
        }
        function test_withoutApplicationsThereIsNoRowAndNoText() {
            Fixture.setApplications(0);
            Fixture.tick();
            waitForRendering(themed);
            compare(rows().length, 0);
            const card = view("perAppVolumeMixerCard");
            verify(card.height < 60, card.height);
        }
    }
}
