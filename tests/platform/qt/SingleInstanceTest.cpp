#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include "platform/qt/SingleInstance.h"
#include "support/PrivateBus.h"

namespace korvantis {
namespace {

class SingleInstanceTest : public testing::Test {
 protected:
  ~SingleInstanceTest() override {
    QDBusConnection::disconnectFromBus(QStringLiteral("first"));
    QDBusConnection::disconnectFromBus(QStringLiteral("second"));
  }

  QDBusConnection connection(const char* name) const {
    return QDBusConnection::connectToBus(QString::fromStdString(bus.address()),
                                         QString::fromUtf8(name));
  }

  test::PrivateBus bus;
};

TEST_F(SingleInstanceTest, ASecondLaunchBringsTheFirstToTheFront) {
  SingleInstance first(connection("first"), QStringLiteral("/home/one/data"));
  SingleInstance second(connection("second"), QStringLiteral("/home/one/data"));
  QSignalSpy asked(&first, &SingleInstance::activationRequested);
  ASSERT_TRUE(first.claim());
  // Each copy is a program of its own; here a thread stands for the second one, since it waits.
  bool isFirst = true;
  QThread* const other = QThread::create([&] { isFirst = second.claim(); });
  other->start();
  EXPECT_TRUE(QTest::qWaitFor([&] { return other->isFinished(); }));
  delete other;
  EXPECT_FALSE(isFirst);
  EXPECT_TRUE(QTest::qWaitFor([&] { return asked.count() == 1; }));
}

TEST_F(SingleInstanceTest, ProgramsWithOtherDataDoNotKnowOfEachOther) {
  SingleInstance first(connection("first"), QStringLiteral("/home/one/data"));
  SingleInstance second(connection("second"), QStringLiteral("/home/two/data"));
  EXPECT_TRUE(first.claim());
  EXPECT_TRUE(second.claim());
}

TEST_F(SingleInstanceTest, TheNameIsFreeOnceTheFirstIsGone) {
  {
    SingleInstance first(connection("first"), QStringLiteral("/data"));
    ASSERT_TRUE(first.claim());
  }
  QDBusConnection::disconnectFromBus(QStringLiteral("first"));
  SingleInstance second(connection("second"), QStringLiteral("/data"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return second.claim(); }));
}

TEST(SingleInstanceWithoutABus, EveryCopyRuns) {
  SingleInstance first(QDBusConnection(QStringLiteral("nothing")), QStringLiteral("/data"));
  SingleInstance second(QDBusConnection(QStringLiteral("nothing")), QStringLiteral("/data"));
  EXPECT_TRUE(first.claim());
  EXPECT_TRUE(second.claim());
}

TEST(SingleInstanceName, IsAValidNameThatTellsFoldersApart) {
  const QString one = SingleInstance::serviceName(QStringLiteral("/home/one with blanks"));
  EXPECT_TRUE(one.startsWith(QStringLiteral("org.korvantis.Instance.d")));
  EXPECT_EQ(one, SingleInstance::serviceName(QStringLiteral("/home/one with blanks")));
  EXPECT_NE(one, SingleInstance::serviceName(QStringLiteral("/home/two")));
}

}  // namespace
}  // namespace korvantis
