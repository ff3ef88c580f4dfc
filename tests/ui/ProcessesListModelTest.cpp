#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <cstddef>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "ui/panes/ProcessesListModel.h"

namespace korvantis {
namespace {

ProcessesRow row(const std::string& id, const QString& cpu = QStringLiteral("0.0%")) {
  ProcessesRow row;
  row.identity = id;
  row.title = QString::fromStdString(id);
  row.cpuText = cpu;
  return row;
}

std::vector<ProcessesRow> rows(const std::vector<std::string>& ids) {
  std::vector<ProcessesRow> rows;
  rows.reserve(ids.size());
  for (const std::string& id : ids) rows.push_back(row(id));
  return rows;
}

std::vector<std::string> shown(const ProcessesListModel& model) {
  std::vector<std::string> ids;
  for (int index = 0; index < model.rowCount(); ++index)
    ids.push_back(model.rowAt(index)->identity);
  return ids;
}

class ProcessesListModelTest : public testing::Test {
 protected:
  ProcessesListModel model;
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

TEST_F(ProcessesListModelTest, AnIdleTickEmitsNothing) {
  model.setRows(rows({"a", "b", "c"}));
  forget();
  model.setRows(rows({"a", "b", "c"}));
  EXPECT_EQ(signalCount(), 0);
}

TEST_F(ProcessesListModelTest, AllRowsEnterInOneStep) {
  model.setRows(rows({"a", "b", "c"}));
  EXPECT_EQ(inserted.size(), 1);
  EXPECT_EQ(signalCount(), 1);
}

TEST_F(ProcessesListModelTest, EachRunOfChangedRowsIsNamedAndNoOtherRow) {
  model.setRows(rows({"a", "b", "c", "d", "e"}));
  forget();
  const QString busy = QStringLiteral("1.0%");
  model.setRows({row("a", busy), row("b", busy), row("c"), row("d"), row("e", busy)});
  ASSERT_EQ(signalCount(), 2);
  ASSERT_EQ(changed.size(), 2);
  EXPECT_EQ(changed[0][0].toModelIndex().row(), 0);
  EXPECT_EQ(changed[0][1].toModelIndex().row(), 1);
  EXPECT_EQ(changed[1][0].toModelIndex().row(), 4);
  EXPECT_EQ(changed[1][1].toModelIndex().row(), 4);
  EXPECT_EQ(model.index(4).data(ProcessesListModel::Row).value<ProcessesRow>().cpuText, busy);
}

TEST_F(ProcessesListModelTest, RowsThatOnlyChangePlacesMove) {
  model.setRows(rows({"a", "b", "c"}));
  forget();
  model.setRows(rows({"c", "a", "b"}));
  EXPECT_EQ(moved.size(), 1);
  EXPECT_EQ(signalCount(), 1);
  EXPECT_THAT(shown(model), testing::ElementsAre("c", "a", "b"));
}

TEST_F(ProcessesListModelTest, RowsThatAreGoneLeaveAndNewOnesEnter) {
  model.setRows(rows({"a", "b", "c"}));
  forget();
  model.setRows(rows({"a", "c", "d"}));
  EXPECT_EQ(removed.size(), 1);
  EXPECT_EQ(inserted.size(), 1);
  EXPECT_EQ(signalCount(), 2);
  EXPECT_THAT(shown(model), testing::ElementsAre("a", "c", "d"));
}

TEST_F(ProcessesListModelTest, BearsRepeatedIdentities) {
  model.setRows(rows({"a", "a", "b"}));
  forget();
  model.setRows(rows({"a", "b", "a", "a"}));
  EXPECT_EQ(reset.size(), 0);
  EXPECT_THAT(shown(model), testing::ElementsAre("a", "b", "a", "a"));
}

TEST_F(ProcessesListModelTest, RowsOutOfSightAreRewrittenWhereTheyStand) {
  model.setRows(rows({"a", "b", "c", "d", "e"}));
  forget();
  model.setShown(0, 1, -1);
  model.setRows(rows({"a", "b", "e", "c", "d"}));
  EXPECT_EQ(moved.size(), 0);
  ASSERT_EQ(signalCount(), 1);
  EXPECT_EQ(changed[0][0].toModelIndex().row(), 2);
  EXPECT_EQ(changed[0][1].toModelIndex().row(), 4);
  EXPECT_THAT(shown(model), testing::ElementsAre("a", "b", "e", "c", "d"));
}

TEST_F(ProcessesListModelTest, ShownRowsAndTheCurrentOneMoveWhereverTheyGo) {
  model.setRows(rows({"a", "b", "c", "d", "e"}));
  const QPersistentModelIndex first(model.index(0));
  const QPersistentModelIndex current(model.index(4));
  forget();
  model.setShown(0, 1, 4);
  model.setRows(rows({"e", "d", "c", "b", "a"}));
  EXPECT_EQ(first.row(), 4);
  EXPECT_EQ(current.row(), 0);
  EXPECT_THAT(shown(model), testing::ElementsAre("e", "d", "c", "b", "a"));
}

TEST_F(ProcessesListModelTest, AnyListBecomesAnyOtherWithTheRightValues) {
  std::mt19937 chance(11);
  for (int round = 0; round < 300; ++round) {
    std::vector<ProcessesRow> wanted;
    const auto count = chance() % 10;
    for (std::size_t index = 0; index < count; ++index) {
      wanted.push_back(row(std::string(1, static_cast<char>('a' + chance() % 8)),
                           QString::number(chance() % 3)));
    }
    // Whatever of it is shown.
    const int first = static_cast<int>(chance() % 10) - 1;
    model.setShown(first, first + static_cast<int>(chance() % 5), static_cast<int>(chance() % 8));
    model.setRows(wanted);
    ASSERT_EQ(model.rowCount(), static_cast<int>(wanted.size()));
    for (std::size_t index = 0; index < wanted.size(); ++index) {
      EXPECT_EQ(*model.rowAt(static_cast<int>(index)), wanted[index]);
    }
  }
  EXPECT_EQ(reset.size(), 0);
}

TEST_F(ProcessesListModelTest, ARowIsOneValueUnderItsRole) {
  model.setRows(rows({"a"}));
  EXPECT_EQ(model.roleNames(), (QHash<int, QByteArray>{{ProcessesListModel::Row, "row"}}));
  EXPECT_EQ(model.index(0).data(ProcessesListModel::Row).value<ProcessesRow>(), row("a"));
  EXPECT_EQ(model.index(0).data(Qt::DisplayRole), QStringLiteral("a"));
  EXPECT_FALSE(model.index(0).data(Qt::DecorationRole).isValid());
}

TEST_F(ProcessesListModelTest, ThereIsNoRowOutsideTheList) {
  model.setRows(rows({"a"}));
  EXPECT_EQ(model.rowAt(-1), nullptr);
  EXPECT_EQ(model.rowAt(1), nullptr);
  EXPECT_NE(model.rowAt(0), nullptr);
}

}  // namespace
}  // namespace korvantis
