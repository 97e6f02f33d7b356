// The import screen: a file is looked at, checked, mended in its cells and stored as one unit of
// work.
#include "host/desktop/screens/import_page.h"

#include <gmock/gmock.h>

#include <QCheckBox>

#include "host/desks/credential_import.h"
#include "host/desks/history.h"
#include "tests/host/desktop/exchange_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* kCodes = "Directory codes";
constexpr const char* kThreeCodes = "Directory Code,Phone No.\n250,1\n101,1\n252,1\n";
constexpr int kFirstCell = ImportTableModel::kFirstCell;

class ImportScreens : public ExchangeTest {
 protected:
  ImportScreens() { OpenDemoAt(QStringLiteral("import")); }

  void ChooseCodes(const std::string& bytes) {
    Choose("kind", kCodes);
    ChooseFile("in.csv", bytes);
  }
  /// Edits a cell as a person does: the key, the text, Return.
  void Mend(int row, int place, const char* text) {
    ClickCell("preview", row, kFirstCell + place);
    QTableView& view = Grid("preview");
    QTest::keyClick(&view, Qt::Key_F2);
    auto* editor = view.viewport()->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    QTest::keyClicks(editor, QString::fromUtf8(text));
    QTest::keyClick(editor, Qt::Key_Return);
    Settle();
  }
  [[nodiscard]] bool IsMarked(int row, int column) {
    return Grid("preview").model()->index(row, column).data(Qt::BackgroundRole).isValid();
  }
  [[nodiscard]] std::size_t EntriesOfHistory() {
    HistoryQuery query;
    query.unitKey = kUnit;
    return HistoryList(window().place()->session(), query).rows.size();
  }
};

TEST_F(ImportScreens, AFileIsCheckedMendedInItsCellAndStoredAsOneUnitOfWork) {
  ChooseCodes(kThreeCodes);
  ASSERT_EQ(RowsOf("preview"), 3);
  const std::string before = CountOf("DIRECTORYCODE WHERE UNITKEY=2");
  const std::size_t entries = EntriesOfHistory();
  Click("checkButton");
  EXPECT_EQ(Told(), "Checked: 2 would be stored, 1 refused. Nothing was stored.");
  EXPECT_EQ(CountOf("DIRECTORYCODE WHERE UNITKEY=2"), before);
  EXPECT_EQ(EntriesOfHistory(), entries);
  EXPECT_TRUE(IsMarked(1, kFirstCell));
  EXPECT_FALSE(IsMarked(1, kFirstCell + 1));
  EXPECT_FALSE(IsMarked(0, kFirstCell));
  EXPECT_EQ(Grid("preview").currentIndex().row(), 1);
  EXPECT_THAT(LabelText("reason"), StartsWith("This Directory Code already exists."));
  Mend(1, 0, "251");
  EXPECT_FALSE(IsMarked(1, kFirstCell));
  EXPECT_EQ(LabelText("reason"), "");
  Click("importButton");
  EXPECT_EQ(Told(), "Imported: 3. Stored already: 0. Refused: 0.");
  EXPECT_EQ(RowsOf("preview"), 0);
  EXPECT_EQ(CountOf("DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE BETWEEN 250 AND 252"), "3");
  EXPECT_EQ(EntriesOfHistory(), entries + 1);
  EXPECT_FALSE(page().HasEntries());
}

TEST_F(ImportScreens, RefusedRowsStayAndTheOthersAreImportedAfterAsking) {
  ChooseCodes(kThreeCodes);
  answers_->Click(QMessageBox::No);
  Click("importButton");
  EXPECT_EQ(answers_->LastText(),
            "Rows that are refused: 1. They stay here to be mended. Import the others (2)?");
  EXPECT_EQ(answers_->seen().back().defaultButton, "No");
  EXPECT_EQ(CountOf("DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE IN (250,252)"), "0");
  answers_->Click(QMessageBox::Yes);
  Click("importButton");
  EXPECT_EQ(CountOf("DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE IN (250,252)"), "2");
  ASSERT_EQ(RowsOf("preview"), 1);
  EXPECT_EQ(CellOf("preview", 0, 0), "3");
  Click("importButton");
  EXPECT_EQ(Told(), "Nothing was stored: every row is refused.");
  EXPECT_TRUE(page().HasEntries());
}

TEST_F(ImportScreens, HeadingsAreSaidToStandForColumns) {
  ChooseCodes("Flat,Ring\n250,1\n");
  Click("checkButton");
  EXPECT_THAT(Marked(), StartsWith("standsFor: No column of the import is called “Flat”"));
  EXPECT_EQ(Find<QComboBox>("column").currentText(), QStringLiteral("Flat"));
  Choose("standsFor", "Directory Code");
  EXPECT_EQ(Marked(), "");
  Choose("column", "Ring");
  Choose("standsFor", "Phone No.");
  EXPECT_EQ(Grid("preview").model()->headerData(kFirstCell, Qt::Horizontal).toString(),
            QStringLiteral("Flat → Directory Code"));
  Click("checkButton");
  EXPECT_THAT(Told(), StartsWith("Checked: 1 would be stored, 0 refused."));
}

TEST_F(ImportScreens, WhatAColumnStandsForIsForgottenWhenTheFileHoldsSomethingElse) {
  ChooseFile("in.csv", "Name,Ring\nRae,1\n");
  Choose("column", "Ring");
  Choose("standsFor", "Phone No.");
  EXPECT_EQ(Grid("preview").model()->headerData(kFirstCell + 1, Qt::Horizontal).toString(),
            QStringLiteral("Ring → Phone No."));
  Choose("kind", kCodes);
  EXPECT_EQ(Grid("preview").model()->headerData(kFirstCell + 1, Qt::Horizontal).toString(),
            QStringLiteral("Ring → ?"));
  Click("checkButton");
  EXPECT_THAT(Marked(), HasSubstr("say what it stands for"));
  Choose("kind", "Tenants with their cards and codes");
  Choose("column", "Ring");
  EXPECT_EQ(Find<QComboBox>("standsFor").currentIndex(), -1);
}

TEST_F(ImportScreens, WithoutAFileNothingIsProposed) {
  EXPECT_FALSE(Find<QLabel>("proposal").isVisible());
  EXPECT_FALSE(Find<QPushButton>("takeProposals").isVisible());
  Find<QPushButton>("takeProposals").click();
  EXPECT_FALSE(Find<QPushButton>("takeProposals").isVisible());
}

TEST_F(ImportScreens, MeaningsThatHeadingsSeemToHaveAreTakenByAClick) {
  ChooseFile("people.csv", "Surname,Forename,Colour\nRae,Zoë,red\n");
  EXPECT_EQ(LabelText("proposal"),
            "Read headings as they seem to be meant: “Surname” as Last Name, “Forename” as First "
            "Name, “Colour” left out?");
  EXPECT_TRUE(Find<QPushButton>("takeProposals").isVisible());
  Click("takeProposals");
  EXPECT_EQ(Grid("preview").model()->headerData(kFirstCell, Qt::Horizontal).toString(),
            QStringLiteral("Surname → Last Name"));
  EXPECT_EQ(Grid("preview").model()->headerData(kFirstCell + 1, Qt::Horizontal).toString(),
            QStringLiteral("Forename → First Name"));
  EXPECT_FALSE(Find<QLabel>("proposal").isVisible());
  EXPECT_FALSE(Find<QPushButton>("takeProposals").isVisible());
  EXPECT_EQ(Grid("preview").model()->headerData(kFirstCell + 2, Qt::Horizontal).toString(),
            QStringLiteral("Colour (left out)"));
  Click("checkButton");
  EXPECT_THAT(Told(), StartsWith("Checked: 1 would be stored, 0 refused."));
}

// A first line in which nothing is known may be a title: nothing is left out unasked.
TEST_F(ImportScreens, HeadingsOfWhichNoneIsKnownAreLeftToBeSaid) {
  ChooseFile("people.csv", "Colour,Shape\nred,round\n");
  EXPECT_FALSE(Find<QLabel>("proposal").isVisible());
  EXPECT_FALSE(Find<QPushButton>("takeProposals").isVisible());
  Click("checkButton");
  EXPECT_THAT(Marked(), StartsWith("standsFor: No column of the import is called “Colour”"));
}

TEST_F(ImportScreens, TenantsComeWithTheirCardsByTheRulesOfTheScreen) {
  const std::string initial = Cell(
      "SELECT MiddleInitial FROM Tenants WHERE UnitKey=2 AND FirstName='Paula' AND "
      "LastName='O''Brien'");
  ChooseFile("people.csv",
             "Last Name,First Name,Initial,Card Number,Directory Code,Phone No.\n"
             "Rae,Zoë,,9001,250,555-1\nO'Brien,Paula," +
                 initial + ",,,\n");
  Click("checkButton");
  EXPECT_THAT(Told(), StartsWith("Checked: 0 would be stored, 2 refused."));
  EXPECT_TRUE(IsMarked(0, 1));
  EXPECT_THAT(LabelText("reason"), HasSubstr("a new one needs a type"));
  Choose("cardType", "Standard 26-Bit Card");
  Choose("storedTenants", "are passed over");
  Type("facility", "7");
  Click("importButton");
  EXPECT_EQ(Told(), "Imported: 1. Stored already: 1. Refused: 0.");
  EXPECT_EQ(CountOf("Tenants WHERE UnitKey=2 AND LastName='Rae' AND CREDENTIALID1>0"), "1");
  EXPECT_EQ(Cell("SELECT FacilityCode FROM CREDENTIALBANK WHERE UnitKey=2 AND PINNo=9001"), "7");
}

TEST_F(ImportScreens, OtherRulesMakeACheckVoid) {
  ChooseCodes("Directory Code,Phone No.,Display Name\n250,1,O'Brien\n");
  Click("checkButton");
  EXPECT_TRUE(IsMarked(0, kFirstCell + 2));
  Click("replaceQuotes");
  EXPECT_FALSE(IsMarked(0, kFirstCell + 2));
  EXPECT_THAT(LabelText("summary"), HasSubstr("to be checked"));
  Click("importButton");
  EXPECT_EQ(Cell("SELECT DISPLAYNAME FROM DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE=250"),
            "O’Brien");
}

TEST_F(ImportScreens, TheOrderOfDatesIsSaidForAllRowsAndNeverGuessed) {
  ChooseCodes(
      "Directory Code,Phone No.,Directory Status,Directory Start Date,Directory End Date\n"
      "250,1,Active,03.04.2026,04.04.2026\n");
  Click("checkButton");
  EXPECT_THAT(Told(), StartsWith("Checked: 0 would be stored, 1 refused."));
  EXPECT_TRUE(IsMarked(0, kFirstCell + 3));
  EXPECT_THAT(LabelText("reason"), HasSubstr("above the rows stands how such dates are read"));
  Choose("dates", "begin with the day");
  EXPECT_THAT(LabelText("summary"), HasSubstr("to be checked"));
  Click("importButton");
  EXPECT_THAT(Cell("SELECT STARTDATE FROM DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE=250"),
              StartsWith("4/3/2026"));
}

TEST_F(ImportScreens, AnotherEncodingAndDelimiterAreFoundAndCanBeSaid) {
  ChooseCodes("Directory Code;Phone No.;Display Name\n250;1;Zo\xEB\n");
  EXPECT_EQ(CellOf("preview", 0, kFirstCell + 2), "Zoë");
  EXPECT_EQ(Find<QComboBox>("encoding").currentText(), QStringLiteral("Windows (1252)"));
  Choose("delimiter", "comma");
  EXPECT_EQ(CellOf("preview", 0, kFirstCell), "250;1;Zoë");
}

TEST_F(ImportScreens, NextGoesFromOneWrongCellToTheOther) {
  ChooseCodes("Directory Code,Phone No.\n101,1\n250,1\n251,\n");
  Click("checkButton");
  EXPECT_EQ(Grid("preview").currentIndex().row(), 0);
  Activate();
  QTest::keyClick(&Grid("preview"), Qt::Key_F8);
  EXPECT_EQ(Grid("preview").currentIndex().row(), 2);
  EXPECT_EQ(Grid("preview").currentIndex().column(), kFirstCell + 1);
  Click("nextButton");
  EXPECT_EQ(Grid("preview").currentIndex().row(), 0);
  Click("wrongOnly");
  EXPECT_EQ(RowsOf("preview"), 2);
  FindBy("findRow", "251");
  EXPECT_EQ(RowsOf("preview"), 1);
}

TEST_F(ImportScreens, RowsAreLeftOutAfterAsking) {
  ChooseCodes(kThreeCodes);
  ClickCell("preview", 0, kFirstCell);
  ClickCell("preview", 1, kFirstCell, Qt::ControlModifier);
  answers_->Click(QMessageBox::No);
  Click("leaveOutButton");
  EXPECT_EQ(RowsOf("preview"), 3);
  answers_->Click(QMessageBox::Yes);
  Click("leaveOutButton");
  ASSERT_EQ(RowsOf("preview"), 1);
  EXPECT_EQ(CellOf("preview", 0, kFirstCell), "252");
}

TEST_F(ImportScreens, WhatIsNoSpreadsheetIsToldInABox) {
  answers_->Type(QString::fromStdString(File("in.csv").string()));
  answers_->Click(QMessageBox::Ok);
  std::ofstream(File("in.csv")) << "Directory Code,\"Phone\n250,1\n";
  Click("chooseButton");
  EXPECT_THAT(answers_->LastText(), HasSubstr("a quote that opens a cell is never closed"));
  EXPECT_EQ(RowsOf("preview"), 0);
}

TEST_F(ImportScreens, LeavingMendedRowsAsks) {
  ChooseCodes(kThreeCodes);
  Mend(0, 1, "2");
  answers_->Click(QMessageBox::No);
  EXPECT_FALSE(window().close());
}

/// The calls of the saves, from the first on.
std::vector<std::string> SavesIn(const std::vector<std::string>& trace) {
  const auto isSave = [](const std::string& line) {
    return line.find("pbSave") != std::string::npos;
  };
  const auto begin = std::find_if(trace.begin(), trace.end(), isSave);
  const auto end = std::find_if(trace.rbegin(), trace.rend(), isSave).base();
  return begin < end ? std::vector<std::string>(begin, end) : std::vector<std::string>();
}

TEST_F(ImportScreens, MakesTheCallsThatAnImportMakesWithoutAWindow) {
  const std::string file =
      "Credential Type,Card Number,Facility Code\ncard26,9001,7\ncard26,9001,7\n";
  Choose("kind", "Credentials");
  ChooseFile("cards.csv", file);
  Click("checkButton");
  answers_->Click(QMessageBox::Yes);
  trace_.clear();
  Click("importButton");
  const std::vector<std::string> shown = SavesIn(trace_);
  ASSERT_GT(shown.size(), 10U);

  std::vector<std::string> headless;
  const auto session = WithoutAWindow(headless);
  ImportFile in(file, CredentialImportColumns());
  (void)ImportCredentials(*session, kUnit, in, {.dryRun = true}, nullptr);
  headless.clear();
  ImportFile again(file, CredentialImportColumns());
  (void)ImportCredentials(*session, kUnit, again, {}, nullptr);
  EXPECT_EQ(shown, SavesIn(headless));
}

}  // namespace
}  // namespace qorhost::test
