#include <QQmlComponent>
#include <QQmlEngine>
#include <QVariant>
#include <gtest/gtest.h>
#include <memory>

#include "state/ScriptedMonitor.h"

namespace korvantis {
namespace {

using test::ScriptedMonitor;

/// Loads QML text and gives it the store under the required property `store`.
class QmlModule : public ::testing::Test {
 protected:
  QmlModule() { engine.addImportPath(QStringLiteral("qrc:/qt/qml")); }

  std::unique_ptr<QObject> load(const QByteArray& body) {
    QQmlComponent component(&engine);
    component.setData(
        "import QtQml\nimport Korvantis.State\nQtObject {\n"
        "required property MonitorStore store\n" +
            body + "\n}",
        QUrl());
    std::unique_ptr<QObject> object(component.createWithInitialProperties(
        {{QStringLiteral("store"), QVariant::fromValue(&monitor.store())}}));
    EXPECT_TRUE(object) << component.errorString().toStdString();
    return object;
  }

  ScriptedMonitor monitor;
  QQmlEngine engine;
};

TEST_F(QmlModule, KnowsTheStoresAndFollowsTheirFields) {
  const auto object = load(
      "property string pane: store.selectedPane\n"
      "property MenuBarSettingsStore menuBar: store.menuBarSettings\n"
      "property AppAlertsStore alerts: store.alerts\n"
      "property AudioMixerStore mixer: store.audioMixer\n"
      "property RemoteAlertStore remote: store.remoteAlerts\n"
      "property string theme: store.look.themeMode\n"
      "property int ringLength: store.cpuHistory.length");
  ASSERT_TRUE(object);
  EXPECT_EQ(object->property("pane"), "overview");
  EXPECT_EQ(object->property("ringLength"), 41);

  monitor.store().setSelectedPane(OstrelPane::history);
  monitor.store().look()->setThemeMode(AppThemeMode::dark);
  monitor.store().refreshTick();
  EXPECT_EQ(object->property("pane"), "history");
  EXPECT_EQ(object->property("theme"), "dark");
  EXPECT_EQ(object->property("ringLength"), 42);
  EXPECT_EQ(object->property("mixer").value<AudioMixerStore*>(), monitor.store().audioMixer());
}

TEST_F(QmlModule, CanWriteSelectionsByNameAndCallTheOperations) {
  const auto object = load(
      "property string temperature\n"
      "property string headline\n"
      "function act() {\n"
      "  store.selectedPane = \"processes\";\n"
      "  store.selectedHistoryRange = \"days7\";\n"
      "  store.look.temperatureUnit = \"fahrenheit\";\n"
      "  store.setRefreshInterval(5);\n"
      "  temperature = store.look.formatTemp(100);\n"
      "  headline = store.whatsWrongHeadline();\n"
      "  store.stopProcess(12, true);\n"
      "}");
  ASSERT_TRUE(object);
  ASSERT_TRUE(QMetaObject::invokeMethod(object.get(), "act"));

  EXPECT_EQ(monitor.store().selectedPane(), OstrelPane::processes);
  EXPECT_EQ(monitor.store().selectedHistoryRange(), HistoryRangeOption::days7);
  EXPECT_EQ(monitor.store().refreshIntervalSeconds(), 5);
  EXPECT_EQ(object->property("temperature"), "212°F");
  EXPECT_EQ(object->property("headline").toString(), monitor.store().whatsWrongHeadline());
  EXPECT_EQ(monitor.log.back(), "stopProcess 12 by force");
}

TEST_F(QmlModule, CannotMakeAStoreOfItsOwn) {
  QQmlComponent component(&engine);
  component.setData("import Korvantis.State\nMonitorStore {}", QUrl());

  EXPECT_TRUE(component.isError());
}

}  // namespace
}  // namespace korvantis
