#include <QDir>
#include <QImage>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace korvantis {
namespace {

/// The tool that draws the screens over a made-up machine.
class PicturesTest : public testing::Test {
 protected:
  QTemporaryDir folder;
  QProcess tool;

  int draw(const QStringList& options) {
    QStringList words = options;
    words << QStringLiteral("--out") << folder.filePath(QStringLiteral("out"));
    tool.start(QStringLiteral(KORVANTIS_PICTURES), words);
    EXPECT_TRUE(tool.waitForFinished(-1));
    return tool.exitCode();
  }
  QImage picture(const QString& name) const {
    return QImage(folder.filePath(QStringLiteral("out/") + name));
  }
  QStringList files() const {
    return QDir(folder.filePath(QStringLiteral("out"))).entryList(QDir::Files, QDir::Name);
  }
};

TEST_F(PicturesTest, DrawsAPaneInTheSizeAndTheScaleAskedFor) {
  EXPECT_EQ(draw({QStringLiteral("--pane"), QStringLiteral("overview"), QStringLiteral("--size"),
                  QStringLiteral("1040x680"), QStringLiteral("--scale"), QStringLiteral("2")}),
            0);
  ASSERT_EQ(files(), QStringList{QStringLiteral("overview-dark-1040x680@2x.png")});
  const QImage drawn = picture(files().first());
  EXPECT_EQ(drawn.size(), QSize(2080, 1360));
  EXPECT_EQ(drawn.pixelColor(4, 1350), QColor(0x17, 0x17, 0x1B)) << "the status bar";
}

TEST_F(PicturesTest, DrawsThePanelInBothThemes) {
  EXPECT_EQ(draw({QStringLiteral("--popover"), QStringLiteral("--theme"), QStringLiteral("both")}),
            0);
  ASSERT_EQ(files(), (QStringList{QStringLiteral("panel-overview-dark.png"),
                                  QStringLiteral("panel-overview-light.png")}));
  EXPECT_EQ(picture(files().first()).size(), QSize(820, 560));
  EXPECT_EQ(picture(files().first()).pixelColor(4, 300), QColor(0x13, 0x13, 0x15));
  EXPECT_EQ(picture(files().last()).pixelColor(4, 300), QColor(0xF3, 0xF4, 0xF8));
}

TEST_F(PicturesTest, DrawsEveryPaneOfTheReadmeWithoutOptions) {
  EXPECT_EQ(draw({}), 0);
  for (const char* pane : {"overview", "processes", "insights", "history", "agents", "sound"}) {
    EXPECT_EQ(picture(QString::fromLatin1(pane) + QStringLiteral("-dark.png")).size(),
              QSize(1220, 790))
        << pane;
  }
}

TEST_F(PicturesTest, TurnsAwayWhatItDoesNotKnow) {
  const QList<QStringList> wrong{{QStringLiteral("--pane"), QStringLiteral("kitchen")},
                                 {QStringLiteral("--theme"), QStringLiteral("blue")},
                                 {QStringLiteral("--size"), QStringLiteral("large")},
                                 {QStringLiteral("--scale"), QStringLiteral("0")},
                                 {QStringLiteral("--what")},
                                 {QStringLiteral("word")}};
  for (const QStringList& options : wrong) {
    EXPECT_EQ(draw(options), 2) << options.first().toStdString();
    EXPECT_FALSE(tool.readAllStandardError().isEmpty());
  }
  EXPECT_TRUE(files().isEmpty());
}

}  // namespace
}  // namespace korvantis
