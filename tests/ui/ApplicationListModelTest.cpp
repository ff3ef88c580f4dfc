#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <cstddef>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "ui/panes/ApplicationListModel.h"

namespace korvantis {
namespace {

ApplicationRow row(const std::string& id, const QString& cpu = QStringLiteral("0.0%")) {
  ApplicationRow row;
  row.groupID = id;
  row.name = QString::fromStdString(id);
  row.cpuText = cpu;
  return row;
}

std::vector<ApplicationRow> rows(const std::vector<std::string>& ids) {
  std::vector<ApplicationRow> rows;
  rows.reserve(ids.size());
  for (const std::string& id : ids) rows.push_back(row(id));
  return rows;
}

std::vector<std::string> shown(const ApplicationListModel& model) {
  std::vector<std::string> ids;
  for (int index = 0; index < model.rowCount(); ++index) ids.push_back(model.rowAt(index)->groupID);
  return ids;
}

class ApplicationListModelTest : public testing::Test {
 protected:
  ApplicationListModel model;
  // Aborts on any signal that contradicts the rows.
  QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
  QSignalSpy inserted{&model, &QAbstractItemModel::rowsInserted};
  QSignalSpy removed{&model, &QAbstractItemModel::rowsRemoved};
  QSignalSpy moved{&model, &QAbstractItemModel::rowsMoved};
  QSignalSpy changed{&model, &QAbstractItemModel::dataChanged};
  QSignalSpy reset{&model, &QAbstractItemModel::modelReset};

  void forget() {
    for (QSignalSpy* spy : {&inserted, &removed, &moved, &changed, &reset}) spy->clear();
  }
  qsizetype signalCount() const {
    return inserted.size() + removed.size() + moved.size() + changed.size() + reset.size();
  }
};

TEST_F(ApplicationListModelTest, AnIdleTickEmitsNothing) {
  model.setRows(rows({"a", "b", "c"}));
  forget();
  model.setRows(rows({"a", "b", "c"}));
  EXPECT_EQ(signalCount(), 0);
}

TEST_F(ApplicationListModelTest, AllRowsEnterInOneStep) {
  model.setRows(rows({"a", "b", "c"}));
  EXPECT_EQ(inserted.size(), 1);
  EXPECT_EQ(signalCount(), 1);
}

TEST_F(ApplicationListModelTest, ChangedTextsAreOneRangeWithTheirRolesOnly) {
  model.setRows(rows({"a", "b", "c", "d"}));
  forget();
  model.setRows(
      {row("a"), row("b", QStringLiteral("1.0%")), row("c"), row("d", QStringLiteral("2.0%"))});
  ASSERT_EQ(signalCount(), 1);
  ASSERT_EQ(changed.size(), 1);
  EXPECT_EQ(changed[0][0].toModelIndex().row(), 1);
  EXPECT_EQ(changed[0][1].toModelIndex().row(), 3);
  EXPECT_THAT(changed[0][2].value<QList<int>>(),
              testing::UnorderedElementsAre(ApplicationListModel::CpuText,
                                            ApplicationListModel::Description));
  EXPECT_EQ(model.index(3).data(ApplicationListModel::CpuText), QStringLiteral("2.0%"));
}

TEST_F(ApplicationListModelTest, RowsThatOnlyChangePlacesMove) {
  model.setRows(rows({"a", "b", "c"}));
  forget();
  model.setRows(rows({"c", "a", "b"}));
  EXPECT_EQ(moved.size(), 1);
  EXPECT_EQ(signalCount(), 1);
  EXPECT_THAT(shown(model), testing::ElementsAre("c", "a", "b"));
}

TEST_F(ApplicationListModelTest, RowsThatAreGoneLeaveAndNewOnesEnter) {
  model.setRows(rows({"a", "b", "c"}));
  forget();
  model.setRows(rows({"a", "c", "d"}));
  EXPECT_EQ(removed.size(), 1);
  EXPECT_EQ(inserted.size(), 1);
  EXPECT_EQ(signalCount(), 2);
  EXPECT_THAT(shown(model), testing::ElementsAre("a", "c", "d"));
}

TEST_F(ApplicationListModelTest, BearsRepeatedIdentities) {
  model.setRows(rows({"a", "a", "b"}));
  forget();
  model.setRows(rows({"a", "b", "a", "a"}));
  EXPECT_EQ(reset.size(), 0);
  EXPECT_THAT(shown(model), testing::ElementsAre("a", "b", "a", "a"));
}

TEST_F(ApplicationListModelTest, AnyListBecomesAnyOtherWithTheRightValues) {
  std::mt19937 chance(11);
  for (int round = 0; round < 300; ++round) {
    std::vector<ApplicationRow> wanted;
    const auto count = chance() % 10;
    for (std::size_t index = 0; index < count; ++index) {
      wanted.push_back(row(std::string(1, static_cast<char>('a' + chance() % 8)),
                           QString::number(chance() % 3)));
    }
    model.setRows(wanted);
    ASSERT_EQ(model.rowCount(), static_cast<int>(wanted.size()));
    for (std::size_t index = 0; index < wanted.size(); ++index) {
      EXPECT_EQ(*model.rowAt(static_cast<int>(index)), wanted[index]);
    }
  }
  EXPECT_EQ(reset.size(), 0);
}

TEST_F(ApplicationListModelTest, ARowIsSaidInOneSentence) {
  ApplicationRow group = row("Editor", QStringLiteral("1.5%"));
  group.countText = QStringLiteral("3 processes");
  group.memoryText = QStringLiteral("12 MB");
  group.diskText = QStringLiteral("0 B/s");
  model.setRows({group});
  EXPECT_EQ(model.index(0).data(ApplicationListModel::Description).toString(),
            QStringLiteral("Editor, 3 processes, CPU 1.5%, memory 12 MB, disk 0 B/s"));
}

TEST_F(ApplicationListModelTest, EveryRoleHasANameAndAValue) {
  model.setRows(rows({"a"}));
  const auto names = model.roleNames();
  EXPECT_EQ(names.size(), 16);
  for (auto role = names.keyBegin(); role != names.keyEnd(); ++role) {
    EXPECT_TRUE(model.index(0).data(*role).isValid()) << names[*role].toStdString();
  }
}

TEST_F(ApplicationListModelTest, ThereIsNoRowOutsideTheList) {
  model.setRows(rows({"a"}));
  EXPECT_EQ(model.rowAt(-1), nullptr);
  EXPECT_EQ(model.rowAt(1), nullptr);
  EXPECT_NE(model.rowAt(0), nullptr);
}

}  // namespace
}  // namespace korvantis
