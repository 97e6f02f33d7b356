// The screens that show lists: programming steps, and the history with its way back.
#include <gmock/gmock.h>

#include <QHeaderView>
#include <QPushButton>
#include <QTableView>

#include "host/desktop/screens/fitted_table.h"
#include "host/desktop/screens/list_table_model.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

class ListScreens : public DesktopTest {
 protected:
  /// Two entries of the history, and a step.
  void Work() {
    OpenDemoAt(QStringLiteral("credentials"));
    GiveACard("9001");
  }
  void ClickCell(const char* table, int row) {
    auto& view = Find<QTableView>(table);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier,
                      view.visualRect(view.model()->index(row, 1)).center());
    Settle();
  }
  [[nodiscard]] int RowsOf(const char* table) {
    return Find<QTableView>(table).model()->rowCount();
  }
  [[nodiscard]] std::string CellOf(const char* table, int row, int column) {
    return Find<QTableView>(table).model()->index(row, column).data().toString().toStdString();
  }
};

TEST_F(ListScreens, TheStepOfAnAssignmentWaitsAndIsMarkedAsSent) {
  Work();
  window().ShowScreen(QStringLiteral("steps"));
  ASSERT_EQ(RowsOf("steps"), 1);
  EXPECT_EQ(CellOf("steps", 0, 3), "program tenant");
  EXPECT_THAT(CellOf("steps", 0, 5), HasSubstr("O'Brien"));
  answers_->Click(QMessageBox::No);
  Click("markButton");
  EXPECT_EQ(RowsOf("steps"), 1);
  ClickCell("steps", 0);
  answers_->Click(QMessageBox::Yes);
  Click("markButton");
  EXPECT_EQ(answers_->LastText(), "Mark the chosen steps as sent (1)?");
  EXPECT_EQ(RowsOf("steps"), 0);
  EXPECT_FALSE(Find<QPushButton>("markButton").isEnabled());
}

TEST_F(ListScreens, TheHistoryShowsTheLatestFirstAndUndoesIt) {
  Work();
  window().ShowScreen(QStringLiteral("history"));
  ASSERT_EQ(RowsOf("entries"), 3);  // the last is the store's making
  EXPECT_THAT(CellOf("entries", 0, 4), HasSubstr("edit credential"));
  EXPECT_THAT(CellOf("entries", 0, 2), HasSubstr("anna"));
  EXPECT_FALSE(Find<QPushButton>("undoButton").isEnabled());
  ClickCell("entries", 0);
  EXPECT_GT(RowsOf("rows"), 0);
  answers_->Click(QMessageBox::Yes);
  Click("undoButton");
  EXPECT_THAT(Told(), HasSubstr("Undone: entry"));
  EXPECT_EQ(RowsOf("entries"), 4);
  EXPECT_EQ(Cell("SELECT CREDENTIALID2 FROM Tenants WHERE UnitKey=2 AND FirstName='Paula' AND "
                 "LastName='O''Brien'"),
            "");
}

TEST_F(ListScreens, WhatOthersBuiltOnIsNotUndone) {
  Work();
  window().ShowScreen(QStringLiteral("history"));
  ClickCell("entries", 1);  // the card is held by now
  answers_->Click(QMessageBox::Yes);
  answers_->Click(QMessageBox::Ok);
  Click("undoButton");
  EXPECT_THAT(answers_->seen().front().text, HasSubstr("Undo entry "));
  EXPECT_THAT(answers_->seen().front().text, HasSubstr(", by anna, 2026-01-31 14:05:09"));
  EXPECT_EQ(answers_->seen().back().icon, QMessageBox::Critical);
  EXPECT_EQ(RowsOf("entries"), 3);
}

TEST_F(ListScreens, TypingNarrowsTheHistory) {
  Work();
  window().ShowScreen(QStringLiteral("history"));
  FindBy("findEntry", "ISSUE");
  EXPECT_EQ(RowsOf("entries"), 1);
  EXPECT_THAT(CellOf("entries", 0, 4), HasSubstr("issue"));
}

TEST(ListTables, SortDatesByTimeNumbersByValueAndEmptyCellsLast) {
  List list;
  list.fields = {{"Number", "number", FieldKind::kNumber}, {"Day", "day", FieldKind::kDate}};
  const auto day = [](int year, int month) {
    return qorcred::Value(qorcred::FromCivil({year, month, 1, 0, 0, 0}));
  };
  list.rows = {{std::int32_t{10}, day(2026, 2)},
               {std::int32_t{9}, qorcred::Null{}},
               {std::int32_t{100}, day(2025, 11)}};
  ListTableModel model;
  model.Show(list);
  const auto numbers = [&model] {
    std::vector<std::string> shown;
    for (int row = 0; row < model.rowCount(); ++row) {
      shown.push_back(model.index(row, 0).data().toString().toStdString());
    }
    return shown;
  };
  EXPECT_THAT(numbers(), testing::ElementsAre("10", "9", "100"));
  model.sort(0, Qt::AscendingOrder);
  EXPECT_THAT(numbers(), testing::ElementsAre("9", "10", "100"));
  model.sort(1, Qt::AscendingOrder);
  EXPECT_THAT(numbers(), testing::ElementsAre("100", "10", "9"));
  model.Narrow(QStringLiteral("2025"));
  EXPECT_THAT(numbers(), testing::ElementsAre("100"));
}

TEST(ListTables, ShowManyRowsInOneNotification) {
  constexpr int kMany = 65000;
  List list;
  list.fields = {{"Number", "number", FieldKind::kNumber}};
  for (std::int32_t number = 0; number < kMany; ++number) {
    list.rows.push_back({number});
  }
  ListTableModel model;
  QTableView view;
  qorhost::SetUp(view, model);  // the test has one, too
  view.show();
  int resets = 0;
  int others = 0;
  QObject::connect(&model, &QAbstractItemModel::modelReset, &view, [&resets] { ++resets; });
  QObject::connect(&model, &QAbstractItemModel::rowsInserted, &view, [&others] { ++others; });
  QObject::connect(&model, &QAbstractItemModel::layoutChanged, &view, [&others] { ++others; });
  QObject::connect(&model, &QAbstractItemModel::dataChanged, &view, [&others] { ++others; });
  model.Show(std::move(list));
  FitColumns(view);
  EXPECT_EQ(model.rowCount(), kMany);
  EXPECT_EQ(resets, 1);
  EXPECT_EQ(others, 0);
  EXPECT_EQ(view.rowHeight(kMany - 1), view.verticalHeader()->defaultSectionSize());
}

}  // namespace
}  // namespace qorhost::test
