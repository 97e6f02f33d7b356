// The tenants' screen, worked with mouse and keys.
#include <gmock/gmock.h>

#include <QCheckBox>
#include <QDateEdit>
#include <QGroupBox>
#include <QLabel>
#include <QTableView>
#include <algorithm>

#include "host/desks/step_desk.h"
#include "host/desks/tenant_desk.h"
#include "host/desktop/binding/date_field.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class TenantScreens : public DesktopTest {
 protected:
  TenantScreens() { OpenDemoAt(QStringLiteral("tenants")); }

  [[nodiscard]] QTableView& List() { return Find<QTableView>("tenants"); }
  [[nodiscard]] int RowOf(const char* name) {
    const QAbstractItemModel& model = *List().model();
    for (int row = 0; row < model.rowCount(); ++row) {
      if (model.index(row, 1).data().toString() == QString::fromUtf8(name)) {
        return row;
      }
    }
    throw std::logic_error(std::string("there is no tenant ") + name);
  }
  void ClickTenant(const char* name, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    const QModelIndex index = List().model()->index(RowOf(name), 1);
    List().scrollTo(index);
    QTest::mouseClick(List().viewport(), Qt::LeftButton, keys, List().visualRect(index).center());
    Settle();
  }
  [[nodiscard]] std::string Title() { return Find<QLabel>("title").text().toStdString(); }
  /// A cell of the tenant with that first name; all first names that are asked for occur once.
  [[nodiscard]] std::string CellOf(const std::string& column, const std::string& firstName,
                                   const std::string& lastName) {
    return Cell("SELECT " + column + " FROM Tenants WHERE UnitKey=2 AND FirstName='" + firstName +
                "' AND LastName='" + lastName + "'");
  }
  [[nodiscard]] std::string Steps() {
    return std::to_string(WaitingStepList(window().place()->session(), kUnit).rows.size());
  }
};

TEST_F(TenantScreens, ATenantIsAddedWithWhatTheUnitGives) {
  EXPECT_EQ(Title(), "New tenant");
  Type("lastName", "Vogel");
  Type("firstName", "Ada");
  Choose("schedule2", "Late Shift");
  Type("code", "104");
  Click("saveButton");
  EXPECT_EQ(Told(), "Added tenant Vogel Ada.");
  EXPECT_EQ(Title(), "Vogel Ada");
  EXPECT_EQ(CellOf("NameAtUnit", "Ada", "Vogel"), "Ada Vogel");
  EXPECT_EQ(Find<QComboBox>("schedule1").currentText(), QStringLiteral("Full Access"));
  EXPECT_EQ(Find<QComboBox>("schedule2").currentText(), QStringLiteral("Late Shift"));
  EXPECT_EQ(TextIn("code"), "104");
  EXPECT_FALSE(page().HasEntries());
}

TEST_F(TenantScreens, AHintThatHasGoneLeavesNoRoomBehind) {
  const auto& lease = Find<QGroupBox>("groupLease");
  const int before = lease.height();
  ClickTenant("O'Brien Paula H");
  EXPECT_FALSE(Find<QLabel>("periodHint").isVisible());
  EXPECT_LT(lease.height(), before);
  EXPECT_EQ(lease.height(), lease.sizeHint().height());
}

TEST_F(TenantScreens, WhatCannotBeEnteredIsToldAtItsWidget) {
  struct Row {
    const char* line;
    const char* text;
    const char* told;
  };
  Click("saveButton");
  EXPECT_THAT(Marked(), StartsWith("lastName: "));
  Type("lastName", "Vogel");
  const Row rows[] = {{"code", "9999", "code: Directory code: this unit has no directory code"},
                      {"card1", "Transmitter-9999", "card1: unit 2 has no credential"},
                      {"card1", "Corvin 30-Bit Card-1002",
                       "card1: Card 'Corvin 30-Bit Card-1002' "
                       "is held by O'Brien Paula"}};
  for (const Row& row : rows) {
    Type(row.line, row.text);
    Click("saveButton");
    EXPECT_THAT(Marked(), StartsWith(row.told));
    EXPECT_EQ(window().focusWidget(), &Find<QLineEdit>(row.line));
    Type(row.line, "");
  }
  EXPECT_TRUE(answers_->seen().empty());
  EXPECT_EQ(Cell("SELECT Count(*) FROM Tenants WHERE LastName='Vogel'"), "0");
}

TEST_F(TenantScreens, OneIsChangedInWhatWasEnteredAlone) {
  ClickTenant("O'Brien Paula H");
  EXPECT_EQ(Title(), "O'Brien Paula H");
  EXPECT_EQ(TextIn("card1"), "Corvin 30-Bit Card-1002");
  Type("initial", "K");
  auto& end = Find<DateField>("end");
  QTest::mouseClick(&end.check(), Qt::LeftButton, Qt::NoModifier, {8, 8});
  Click("saveButton");
  EXPECT_EQ(Told(), "Changed O'Brien Paula H.");
  EXPECT_EQ(CellOf("MiddleInitial", "Paula", "O''Brien"), "K");
  EXPECT_EQ(CellOf("ACTIVEENDTIME", "Paula", "O''Brien"), "1/31/2026 11:59:59 PM");
  EXPECT_EQ(CellOf("ACTIVETENANT", "Paula", "O''Brien"), "True");
  EXPECT_EQ(Title(), "O'Brien Paula K");
  Type("initial", "K");
  Click("saveButton");
  EXPECT_EQ(Told(), "It is stored so already.");
}

TEST_F(TenantScreens, ACardIsTakenAwayAndGivenToAnother) {
  ClickTenant("O'Brien Paula H");
  Type("card1", "");
  Click("saveButton");
  EXPECT_EQ(Told(), "Changed O'Brien Paula H. Held by nobody now: Corvin 30-Bit Card-1002.");
  ClickTenant("Ashdown Liam");
  Type("card2", "Corvin 30-Bit Card-1002");
  Click("saveButton");
  EXPECT_EQ(Told(), "Changed Ashdown Liam.");
  EXPECT_EQ(TextIn("card2"), "Corvin 30-Bit Card-1002");
}

TEST_F(TenantScreens, WhatSeveralWouldBecomeIsShownFirst) {
  ClickTenant("Ashdown Liam");
  ClickTenant("Baptiste Hugo S", Qt::ControlModifier);
  EXPECT_EQ(Title(), "2 tenants");
  EXPECT_FALSE(Find<QLineEdit>("card1").isEnabled());
  EXPECT_EQ(Find<QComboBox>("schedule1").currentText(), QStringLiteral("Full Access"));
  EXPECT_EQ(Find<QComboBox>("schedule3").currentIndex(), -1);  // they differ
  Choose("schedule4", "Management");
  std::string shown;
  answers_->With([&shown](QDialog& dialog) {
    const auto* changes = dialog.findChild<QTableView*>(QStringLiteral("changes"));
    ASSERT_NE(changes, nullptr);
    for (int row = 0; row < changes->model()->rowCount(); ++row) {
      for (int column = 0; column < changes->model()->columnCount(); ++column) {
        shown += changes->model()->index(row, column).data().toString().toStdString() + "|";
      }
    }
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  Click("saveButton");
  EXPECT_EQ(shown,
            "Ashdown Liam|Schedule 4|No Access|Management|"
            "Baptiste Hugo S|Schedule 4|No Access|Management|");
  EXPECT_TRUE(page().HasEntries());
  const std::string before = Steps();
  answers_->Press("goButton");
  Click("saveButton");
  EXPECT_EQ(Told(), "Changed 2 tenants.");
  EXPECT_EQ(Title(), "2 tenants");
  EXPECT_EQ(Steps(), std::to_string(std::stoi(before) + 2));
  EXPECT_EQ(Find<QComboBox>("schedule4").currentText(), QStringLiteral("Management"));
}

TEST_F(TenantScreens, ALeaseEndsWithItsCardsFreeOrNot) {
  ClickTenant("Ashdown Liam");
  for (const bool frees : {false, true}) {
    answers_->With([frees](QDialog& dialog) {
      auto* day = dialog.findChild<QDateEdit*>(QStringLiteral("lastDay"));
      EXPECT_EQ(day->date(), QDate(2026, 1, 31));
      QTest::keyClick(day, Qt::Key_Up);  // the year, where the cursor stands
      if (frees) {
        QTest::mouseClick(dialog.findChild<QCheckBox*>(QStringLiteral("freesCards")),
                          Qt::LeftButton, Qt::NoModifier, {8, 8});
      }
      QTest::mouseClick(dialog.findChild<QAbstractButton*>(QStringLiteral("goButton")),
                        Qt::LeftButton);
    });
    answers_->Press("goButton");
    Click("endButton");
    EXPECT_EQ(CellOf("ACTIVEENDTIME", "Liam", "Ashdown"), "1/31/2027 11:59:59 PM");
    EXPECT_EQ(TextIn("card1"), frees ? "" : "Corvin 30-Bit Card-1024");
  }
  EXPECT_EQ(Told(), "Changed Ashdown Liam. Held by nobody now: Corvin 30-Bit Card-1024.");
}

TEST_F(TenantScreens, DeletingAsksAndNoKeepsThem) {
  ClickTenant("Ashdown Liam");
  ClickTenant("Baptiste Hugo S", Qt::ControlModifier);
  answers_->Click(QMessageBox::No);
  Click("deleteButton");
  EXPECT_THAT(answers_->LastText(), StartsWith("Delete 2 tenants: Ashdown Liam, Baptiste Hugo S?"));
  EXPECT_EQ(answers_->seen().back().defaultButton, "No");
  EXPECT_NE(CellOf("RID", "Liam", "Ashdown"), "");
  answers_->Click(QMessageBox::Yes);
  Click("deleteButton");
  EXPECT_EQ(Told(), "Deleted 2 tenants.");
  EXPECT_EQ(Title(), "New tenant");
  EXPECT_EQ(Cell("SELECT Count(*) FROM Tenants WHERE UnitKey=2 AND FirstName='Liam' AND "
                 "LastName='Ashdown'"),
            "0");
}

TEST_F(TenantScreens, TypingNarrowsTheListAndKeepsTheChoice) {
  ClickTenant("Ashdown Liam");
  const int all = List().model()->rowCount();
  FindBy("findTenant", "o'brien paula");
  EXPECT_EQ(List().model()->rowCount(), 1);
  EXPECT_EQ(Title(), "Ashdown Liam");
  FindBy("findTenant", "");
  EXPECT_EQ(List().model()->rowCount(), all);
  ASSERT_EQ(List().selectionModel()->selectedRows().size(), 1);
  EXPECT_EQ(List().selectionModel()->selectedRows().front().row(), RowOf("Ashdown Liam"));
}

TEST_F(TenantScreens, WordsAreFoundInAnyOrderWithoutAccentsAndApostrophes) {
  const std::string all = std::to_string(List().model()->rowCount()) + " tenants";
  EXPECT_EQ(Find<QLabel>("tenantCount").text().toStdString(), all);
  for (const char* typed : {"paula obrien", "OBRIEN pau", "Ö'BRIÉN PAULA"}) {
    FindBy("findTenant", typed);
    EXPECT_EQ(List().model()->rowCount(), 1) << typed;
    EXPECT_EQ(Find<QLabel>("tenantCount").text().toStdString(), "1 of " + all);
  }
  FindBy("findTenant", "nobody");
  EXPECT_EQ(Find<QLabel>("tenantCount").text().toStdString(), "0 of " + all);
}

TEST_F(TenantScreens, ATenantWhomAnotherSeatDeletedIsToldAndLeavesTheList) {
  ClickTenant("Ashdown Liam");
  Type("initial", "K");
  {
    DeskSession other(OpenStoreFile(File("building.db"), Access::kChange), Surroundings{});
    TenantDesk desk(other, kUnit);
    desk.Choose({"Ashdown Liam"});
    ASSERT_TRUE(desk.Delete(Trial::kNo).done());
  }
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  EXPECT_THAT(answers_->LastText(), HasSubstr("omeone else has deleted the tenants meanwhile."));
  EXPECT_THAT(answers_->LastText(), testing::Not(HasSubstr("is still there")));
  EXPECT_EQ(Title(), "New tenant");
  EXPECT_FALSE(page().HasEntries());
  FindBy("findTenant", "Ashdown Liam");
  EXPECT_EQ(List().model()->rowCount(), 0);
}

TEST_F(TenantScreens, LeavingAnEntryAsksAndNoKeepsTheChoice) {
  ClickTenant("Ashdown Liam");
  Type("initial", "K");
  answers_->Click(QMessageBox::No);
  ClickTenant("Baptiste Hugo S");
  EXPECT_EQ(Title(), "Ashdown Liam");
  EXPECT_EQ(TextIn("initial"), "K");
  EXPECT_EQ(List().selectionModel()->selectedRows().front().row(), RowOf("Ashdown Liam"));
  answers_->Click(QMessageBox::Yes);
  ClickTenant("Baptiste Hugo S");
  EXPECT_EQ(Title(), "Baptiste Hugo S");
  EXPECT_FALSE(page().HasEntries());
}

TEST_F(TenantScreens, AChangeByAnotherSeatIsToldAndTheEntryKept) {
  ClickTenant("Ashdown Liam");
  Type("initial", "K");
  DeskSession other(OpenStoreFile(File("building.db"), Access::kChange), Surroundings{});
  TenantDesk desk(other, kUnit);
  desk.Choose({"Ashdown Liam"});
  TenantEntry entry;
  entry.firstName = "William";
  ASSERT_TRUE(desk.Edit(entry, Trial::kNo).done());
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  EXPECT_THAT(answers_->LastText(), HasSubstr("Someone else has changed the tenants meanwhile"));
  EXPECT_EQ(TextIn("firstName"), "William");
  EXPECT_EQ(TextIn("initial"), "K");
  Click("saveButton");
  EXPECT_EQ(CellOf("MiddleInitial", "William", "Ashdown"), "K");
}

TEST_F(TenantScreens, ACardIsGivenByTheCallsThatGiveItWithoutAWindow) {
  ClickTenant("O'Brien Paula H");
  Type("card2", "Transmitter-325");
  trace_.clear();
  Click("saveButton");
  ASSERT_EQ(Told(), "Changed O'Brien Paula H.");
  const auto calls = [](const std::vector<std::string>& trace) {
    const auto begins = [](const char* with) {
      return [with](const std::string& line) { return line.starts_with(with); };
    };
    const auto begin = std::find_if(trace.begin(), trace.end(), begins("new clsCredential"));
    const auto save = std::find_if(begin, trace.end(), begins("clsCredential@1.pbSave("));
    return std::vector<std::string>(begin, std::find_if(save, trace.end(), begins("-> ")));
  };
  const std::vector<std::string> shown = calls(trace_);
  ASSERT_GT(shown.size(), 100U);

  std::vector<std::string> headless;
  const auto session = WithoutAWindow(headless);
  TenantDesk desk(*session, kUnit);
  desk.Choose({"O'Brien Paula"});
  TenantEntry entry;
  entry.cards = {"Corvin 30-Bit Card-1002", "Transmitter-325"};
  ASSERT_TRUE(desk.Edit(entry, Trial::kNo).done());
  EXPECT_EQ(shown, calls(headless));
}

}  // namespace
}  // namespace qorhost::test
