#include <QCoreApplication>
#include <QLocale>
#include <QProcess>
#include <QRegularExpression>
#include <algorithm>
#include <gtest/gtest.h>

#include "support/CommaLocale.h"
#include "ui/ScreenTexts.h"
#include "ui/ScriptedStore.h"
#include "ui/panes/ProcessesPaneModel.h"
#include "ui/panes/SoundPaneModel.h"
#include "ui/theme/OstrelTheme.h"

namespace korvantis {
namespace {

bool isTokenCount(const QString& text) {
  return text.endsWith(QStringLiteral(" tok"));
}

/// The token counts of `texts`, without what stands before and behind them.
QStringList tokenCounts(const QStringList& texts) {
  QStringList counts;
  for (const QString& text : texts) {
    if (isTokenCount(text)) counts.append(text.section(u' ', -2, -2));
  }
  return counts;
}

QStringList withoutTokenCounts(QStringList texts) {
  texts.removeIf(isTokenCount);
  return texts;
}

QStringList textsIn(const QString& language) {
  QLocale::setDefault(QLocale(language));
  return screenTexts();
}

/// The texts of another program in the environment of that language.
QStringList textsOfProgramIn(const QString& language) {
  QProcess program;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("LC_ALL"), language + QStringLiteral(".UTF-8"));
  program.setProcessEnvironment(environment);
  program.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--screen-texts")});
  EXPECT_TRUE(program.waitForFinished(-1));
  EXPECT_EQ(program.exitCode(), 0);
  // A text may have several lines.
  return QString::fromUtf8(program.readAllStandardOutput()).split(QChar(u'\0'), Qt::SkipEmptyParts);
}

class LocaleTest : public testing::Test {
 protected:
  void TearDown() override { QLocale::setDefault(QLocale::system()); }

  const QStringList english = textsIn(QStringLiteral("en_US"));
  const QStringList germanCounts{QStringLiteral("184.200"), QStringLiteral("1.420.500"),
                                 QStringLiteral("96.400"), QStringLiteral("680.000")};
};

TEST_F(LocaleTest, TheTextsOfAllScreensAreLookedAt) {
  for (const char* who : {"RootContentModel.", "OverviewPaneModel.", "ProcessesPaneModel.rows.row.",
                          "InsightsPaneModel.insights.", "AgentsPaneModel.plans.",
                          "AgentsPaneModel.sessions.", "SoundPaneModel.streams.", "SettingsModel.",
                          "ProcessesPaneModel.", "title: ", "headline: ", "brief: "}) {
    const QString prefix = QString::fromUtf8(who);
    EXPECT_TRUE(std::any_of(english.begin(), english.end(), [&](const QString& text) {
      return text.startsWith(prefix);
    })) << who;
  }
  EXPECT_EQ(tokenCounts(english).size(), 4);
  EXPECT_TRUE(english.contains(QStringLiteral("AgentsPaneModel.sessions.cpuText: 1234.6% CPU")));
  EXPECT_TRUE(english.contains(QStringLiteral("OverviewPaneModel.cpu.subheadline: Load 1012.35")))
      << english.filter(QStringLiteral("Load")).join(u'\n').toStdString();
  EXPECT_TRUE(
      english.contains(QStringLiteral("OverviewPaneModel.thermal.fanText: Left Side: 2345 RPM")));
}

TEST_F(LocaleTest, FiguresCarryAPointAndNoGrouping) {
  static const QRegularExpression grouped(QStringLiteral("\\d[,.'’\\s]\\d{3}(?!\\d)"));
  static const QRegularExpression comma(QStringLiteral("\\d,\\d"));
  for (const char* language : {"en_US", "de_DE", "tr_TR"}) {
    for (const QString& text : withoutTokenCounts(textsIn(QString::fromUtf8(language)))) {
      EXPECT_FALSE(text.contains(grouped)) << language << " " << text.toStdString();
      EXPECT_FALSE(text.contains(comma)) << language << " " << text.toStdString();
    }
  }
}

TEST_F(LocaleTest, OnlyTheTokenCountsFollowTheUsersLanguage) {
  EXPECT_EQ(tokenCounts(english),
            QStringList({QStringLiteral("184,200"), QStringLiteral("1,420,500"),
                         QStringLiteral("96,400"), QStringLiteral("680,000")}));
  for (const char* language : {"de_DE", "tr_TR"}) {
    const QStringList texts = textsIn(QString::fromUtf8(language));
    EXPECT_EQ(tokenCounts(texts), germanCounts) << language;
    EXPECT_EQ(withoutTokenCounts(texts), withoutTokenCounts(english)) << language;
  }
}

class LocaleOfEnvironmentTest : public LocaleTest,
                                public testing::WithParamInterface<const char*> {};

TEST_P(LocaleOfEnvironmentTest, TheSameHoldsForAProgramThatIsStartedInItAndForTheCLibrary) {
  // The C library takes the language over if this machine has it or can compile it; Qt knows it
  // in any case.
  const test::CommaLocale comma(GetParam());
  const QStringList texts = textsOfProgramIn(QString::fromUtf8(GetParam()));
  EXPECT_EQ(tokenCounts(texts), germanCounts);
  EXPECT_EQ(withoutTokenCounts(texts), withoutTokenCounts(english));
  if (!comma.isSet()) GTEST_SKIP() << "this machine can't compile the locale " << GetParam();
  EXPECT_EQ(textsIn(QStringLiteral("en_US")), english);
}

INSTANTIATE_TEST_SUITE_P(Languages, LocaleOfEnvironmentTest, testing::Values("de_DE", "tr_TR"));

TEST_F(LocaleTest, FilteringIgnoresCaseByNoLanguagesRules) {
  for (const char* language : {"en_US", "tr_TR"}) {
    QLocale::setDefault(QLocale(QString::fromUtf8(language)));
    ScriptedStore scripted;
    scripted.next.appGroups = {makeGroup("Infinite Indexer")};
    ProcessesPaneModel pane;
    pane.setStore(&scripted.store());
    scripted.store().setProcessSearchText(QStringLiteral("INFINITE"));
    EXPECT_EQ(pane.rows()->rowCount(), 1) << language;
  }
}

TEST_F(LocaleTest, TheKeywordsOfTheMixerAreComparedInTheUsersLanguage) {
  const auto rows = [](const char* language) {
    QLocale::setDefault(QLocale(QString::fromUtf8(language)));
    ScriptedStore scripted;
    scripted.next.appGroups = {makeGroup("FIREFOX"), makeGroup("Spotify")};
    SoundPaneModel model;
    model.setStore(&scripted.store());
    return model.streams()->rowCount();
  };
  EXPECT_EQ(rows("en_US"), 2);
  EXPECT_EQ(rows("de_DE"), 2);
  EXPECT_EQ(rows("tr_TR"), 1) << "a Turkish capital I is no i";
}

}  // namespace
}  // namespace korvantis
