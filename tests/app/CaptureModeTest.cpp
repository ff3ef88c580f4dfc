#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>
#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace korvantis {
namespace {

/// The program without a display, in a home of its own.
class CaptureModeTest : public testing::Test {
 protected:
  QTemporaryDir home;
  QProcess program;

  void start(const QString& captureFolder) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), home.path());
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"}) {
      environment.remove(QString::fromUtf8(variable));
    }
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), home.path());
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("KORVANTIS_CAPTURE_ASSETS_DIR"), captureFolder);
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(QStringLiteral(KORVANTIS_PROGRAM), {});
    ASSERT_TRUE(program.waitForStarted());
  }
  ~CaptureModeTest() override {
    if (program.state() == QProcess::NotRunning) return;
    program.kill();
    program.waitForFinished();
  }
  void expectCleanEnd() {
    ASSERT_TRUE(program.waitForFinished(-1));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_EQ(program.readAll().toStdString(), "") << "the program has no log";
  }
};

const QStringList fileNames{
    QStringLiteral("showcase_agents_audio.png"), QStringLiteral("showcase_imessage_whatsapp.png"),
    QStringLiteral("showcase_overview.png"), QStringLiteral("showcase_processes.png"),
    QStringLiteral("showcase_remote_alerts.png")};

TEST_F(CaptureModeTest, WritesFivePicturesOfTheWindowAndEnds) {
  const QTemporaryDir pictures;
  start(pictures.path());
  expectCleanEnd();
  EXPECT_EQ(QDir(pictures.path()).entryList(QDir::Files, QDir::Name), fileNames);
  for (const QString& name : fileNames) {
    const QImage picture(pictures.filePath(name));
    EXPECT_EQ(picture.size(), QSize(1220, 790)) << name.toStdString();
  }
}

TEST_F(CaptureModeTest, ThePicturesAreDarkAndDifferent) {
  const QTemporaryDir pictures;
  start(pictures.path());
  expectCleanEnd();
  QImage before;
  for (const QString& name : fileNames) {
    const QImage picture(pictures.filePath(name));
    ASSERT_FALSE(picture.isNull()) << name.toStdString();
    EXPECT_LT(picture.pixelColor(2, 395).lightness(), 30) << name.toStdString();
    EXPECT_NE(picture, before) << name.toStdString();
    before = picture;
  }
}

TEST_F(CaptureModeTest, TheDarkLookIsLeftBehindInTheSettings) {
  const QTemporaryDir pictures;
  start(pictures.path());
  expectCleanEnd();
  QFile settings(home.filePath(QStringLiteral(".config/Korvantis/Korvantis.conf")));
  ASSERT_TRUE(settings.open(QIODevice::ReadOnly));
  EXPECT_THAT(settings.readAll().toStdString(), testing::HasSubstr("Korvantis.themeMode=Dark"));
}

TEST_F(CaptureModeTest, FailedWritesAreIgnoredAndTheSequenceGoesOn) {
  start(QStringLiteral("/nowhere/at/all"));
  expectCleanEnd();
}

TEST_F(CaptureModeTest, AnEmptyVariableDoesNotStartCaptureMode) {
  start(QString());
  // Longer than the whole of a capture lasts.
  EXPECT_FALSE(program.waitForFinished(8000));
  EXPECT_EQ(program.state(), QProcess::Running);
  EXPECT_FALSE(QFile::exists(QStringLiteral("/showcase_overview.png")));
}

}  // namespace
}  // namespace korvantis
