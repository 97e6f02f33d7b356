// The units' screen: units are added, changed and deleted as the command line does it.
#include <gmock/gmock.h>

#include <QCheckBox>
#include <QTableView>

#include "host/desks/unit_deletion.h"
#include "host/desktop/shell/screens_table.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class UnitScreens : public DesktopTest {
 protected:
  UnitScreens() { OpenDemoAt(QStringLiteral("units")); }

  [[nodiscard]] QTableView& Units() { return Find<QTableView>("units"); }
  [[nodiscard]] std::string CellOf(int row, int column) {
    return Units().model()->index(row, column).data().toString().toStdString();
  }
  void ClickUnit(int row) {
    QTest::mouseClick(Units().viewport(), Qt::LeftButton, Qt::NoModifier,
                      Units().visualRect(Units().model()->index(row, 1)).center());
    Settle();
  }
  void TypeType(const char* type) {
    auto& line = *Find<QComboBox>("type").lineEdit();
    line.selectAll();
    QTest::keyClicks(&line, QString::fromUtf8(type));
  }
  [[nodiscard]] std::string Title() { return Find<QLabel>("title").text().toStdString(); }
  [[nodiscard]] QComboBox& Chooser() { return Find<QComboBox>("unitChooser"); }
  [[nodiscard]] std::string Setting(const std::string& column, int unit) {
    return Cell("SELECT " + column + " FROM UnitSettings WHERE UnitKey=" + std::to_string(unit));
  }
};

TEST_F(UnitScreens, ShowTheUnitThatIsWorkedOnWithItsSettings) {
  EXPECT_EQ(Units().model()->rowCount(), 3);
  EXPECT_EQ(Title(), "Unit 2, " + CellOf(1, 1));
  EXPECT_EQ(TextIn("name"), CellOf(1, 1));
  EXPECT_EQ(TextIn("capacity"), CellOf(1, 3));
  EXPECT_EQ(TextIn("codeDigits"), Setting("MaxDigitsDirectoryCode", kUnit));
  EXPECT_FALSE(Find<QLineEdit>("key").isVisible());
  ClickUnit(0);
  EXPECT_EQ(Title(), "Unit 1, " + CellOf(0, 1));
  EXPECT_EQ(TextIn("capacity"), CellOf(0, 3));
}

TEST_F(UnitScreens, ChangeWhatIsEnteredAndNothingElse) {
  const std::string digits = Setting("MaxDigitsEntryCode", kUnit);
  Type("name", "Linden Park East");
  Type("codeDigits", "6");
  Type("defaultEnd", "90d");
  Click("ignoresFacility");
  EXPECT_TRUE(page().HasEntries());
  Click("saveButton");
  EXPECT_EQ(Told(), "Saved: Unit 2, Linden Park East.");
  EXPECT_FALSE(page().HasEntries());
  EXPECT_EQ(Setting("MaxDigitsDirectoryCode", kUnit), "6");
  EXPECT_EQ(Setting("MaxDigitsEntryCode", kUnit), digits);
  EXPECT_EQ(Setting("DEACTIVATIONDAYS", kUnit), "90");
  EXPECT_EQ(TextIn("defaultEnd"), "90d");
  EXPECT_EQ(Chooser().currentText(), QStringLiteral("Linden Park East (2)"));
  EXPECT_EQ(window().place()->unitName(), QStringLiteral("Linden Park East"));
  Click("saveButton");
  EXPECT_EQ(Told(), "Unit 2, Linden Park East is stored so already.");
}

/// Another seat, which has the store open meanwhile.
class OtherSeats : public DesktopTest {
 protected:
  OtherSeats() { OpenDemoAt(QStringLiteral("credentials")); }

  void DeleteTheUnit() {
    DeskSession other(OpenStoreFile(File("building.db"), Access::kChange), Surroundings{});
    const std::vector<UnitName> units = other.Units();
    DeleteUnits(other, WithContents(other, {units.at(1)}), Trial::kNo);
  }
  [[nodiscard]] QComboBox& Chooser() { return Find<QComboBox>("unitChooser"); }
  void ExpectTheUnitIsLeft() {
    Settle();
    EXPECT_TRUE(ComesTrue([this] { return window().place()->unitKey() == 1; }));
    EXPECT_TRUE(ComesTrue([this] { return !answers_->seen().empty(); }));
    EXPECT_THAT(answers_->LastText(), HasSubstr("Linden Park (2) was deleted."));
    EXPECT_THAT(answers_->LastText(), HasSubstr("Somebody else has deleted it. "));
    EXPECT_EQ(answers_->seen().size(), 1U);
    EXPECT_EQ(Chooser().findData(kUnit), -1);
    EXPECT_NE(window().page(), nullptr);
  }
};

TEST_F(OtherSeats, MakeUnitsThatF5Offers) {
  window().place()->session().sql().AddRow(
      "Units", std::vector<Field>{{"UnitKey", 12}, {"UnitName", "Garden House"}});
  EXPECT_EQ(Chooser().findData(12), -1);
  QTest::keyClick(&window(), Qt::Key_F5);
  EXPECT_EQ(Chooser().currentData().toInt(), kUnit);
  ASSERT_GE(Chooser().findData(12), 0);
  EXPECT_EQ(Chooser().itemText(Chooser().findData(12)), QStringLiteral("Garden House (12)"));
}

TEST_F(OtherSeats, DeleteTheUnitWhichF5Tells) {
  DeleteTheUnit();
  answers_->Click(QMessageBox::Ok);
  QTest::keyClick(&window(), Qt::Key_F5);
  ExpectTheUnitIsLeft();
}

TEST_F(OtherSeats, DeleteTheUnitWhichASaveTells) {
  Choose("cboCredentialType", "Standard 26-Bit Card");
  Type("txtPINStart", "9001");
  Type("txtFacilityCode", "7");
  DeleteTheUnit();
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  ExpectTheUnitIsLeft();
}

TEST_F(OtherSeats, DeleteTheUnitWhichTheChangeOfATenantTells) {
  window().ShowScreen(QStringLiteral("tenants"));
  auto& tenants = Find<QTableView>("tenants");
  QTest::mouseClick(tenants.viewport(), Qt::LeftButton, Qt::NoModifier,
                    tenants.visualRect(tenants.model()->index(0, 1)).center());
  Type("initial", "K");
  DeleteTheUnit();
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  ExpectTheUnitIsLeft();
}

TEST_F(OtherSeats, DeleteTheUnitWhichTheNextScreenTells) {
  DeleteTheUnit();
  answers_->Click(QMessageBox::Ok);
  window().ShowScreen(QStringLiteral("dir_codes"));
  ExpectTheUnitIsLeft();
}

TEST_F(UnitScreens, TellAtTheWidgetWhatTheDeskDoesNotTake) {
  struct Row {
    const char* line;
    const char* text;
    const char* told;
  };
  for (const Row& row :
       {Row{"codeDigits", "16", "from 1 to 15"}, Row{"entryDigits", "", "from 1 to 15"},
        Row{"cardFacility", "x", "digits alone"}, Row{"defaultEnd", "soon", "is no date"},
        Row{"capacity", "0", "from 1 to 32767"}}) {
    const std::string before = TextIn(row.line);
    Type(row.line, row.text);
    Click("saveButton");
    EXPECT_THAT(Marked(), StartsWith(std::string(row.line) + ": "));
    EXPECT_THAT(Marked(), HasSubstr(row.told));
    Type(row.line, before.c_str());
    EXPECT_EQ(Marked(), "");
  }
  TypeType("Unheard of");
  Click("saveButton");
  EXPECT_THAT(Marked(), StartsWith("type: there is no type 'Unheard of'"));
}

TEST_F(UnitScreens, RefuseWhatDoesNotFitWhatIsStored) {
  answers_->Click(QMessageBox::Ok);
  Type("codeDigits", "1");
  Click("saveButton");
  EXPECT_THAT(answers_->LastText(), HasSubstr("is longer than 1 digit: nothing was changed"));
  EXPECT_EQ(TextIn("codeDigits"), "1");
  EXPECT_TRUE(page().HasEntries());
}

TEST_F(UnitScreens, AddAUnitAndAskBeforeACapacityOfOthersIsChanged) {
  Click("newButton");
  EXPECT_EQ(Title(), "New unit");
  EXPECT_TRUE(Find<QLineEdit>("key").isVisible());
  Click("saveButton");
  EXPECT_THAT(Marked(), StartsWith("name: a new unit needs Name"));
  Type("name", "Garden House");
  Type("key", "2");
  const std::string type = CellOf(0, 2);
  TypeType(type.c_str());
  EXPECT_EQ(TextIn("capacity"), CellOf(0, 3)) << "that of the type is shown";
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  EXPECT_THAT(answers_->LastText(), HasSubstr("there is a unit 2 already"));
  Type("key", "12");
  Type("capacity", "9000");
  answers_->Click(QMessageBox::No);
  Click("saveButton");
  EXPECT_THAT(answers_->LastText(),
              HasSubstr("The capacity of the type '" + type + "' is that of"));
  EXPECT_EQ(Units().model()->rowCount(), 3);
  answers_->Click(QMessageBox::Yes);
  Click("saveButton");
  EXPECT_EQ(Told(), "Saved: Unit 12, Garden House.");
  EXPECT_EQ(Units().model()->rowCount(), 4);
  EXPECT_EQ(CellOf(0, 3), "9000");
  EXPECT_EQ(Chooser().count(), 4);
  EXPECT_EQ(window().place()->unitKey(), kUnit) << "the unit that was worked on stays";
}

TEST_F(UnitScreens, DeleteAUnitWithAllThatIsInItAfterAQuestion) {
  window().ShowScreen(QStringLiteral("credentials"));
  window().ShowScreen(QStringLiteral("units"));
  answers_->Click(QMessageBox::No);
  Click("deleteButton");
  EXPECT_THAT(answers_->LastText(),
              HasSubstr("with all that is in it (tenants: 75, credentials: "));
  EXPECT_EQ(answers_->seen().back().defaultButton, "No");
  EXPECT_EQ(Units().model()->rowCount(), 3);
  answers_->Click(QMessageBox::Yes);
  Click("deleteButton");
  EXPECT_THAT(Told(), StartsWith("Deleted: Unit 2, "));
  EXPECT_EQ(Cell("SELECT Count(*) FROM Tenants WHERE UnitKey=2"), "0");
  EXPECT_EQ(Units().model()->rowCount(), 2);
  EXPECT_EQ(Chooser().count(), 2);
  EXPECT_EQ(window().place()->unitKey(), 1);
  // What showed the unit is gone with it.
  window().ShowScreen(QStringLiteral("credentials"));
  ASSERT_NE(window().page(), nullptr);
  EXPECT_EQ(Find<QListView>("cboCredentials").model()->rowCount() - 1,
            std::stoi(Cell("SELECT Count(*) FROM CREDENTIALBANK WHERE UnitKey=1")));
}

TEST_F(UnitScreens, AskBeforeAnEntryIsLeft) {
  Type("name", "Other");
  answers_->Click(QMessageBox::No);
  ClickUnit(0);
  EXPECT_EQ(TextIn("name"), "Other");
  EXPECT_THAT(Title(), StartsWith("Unit 2"));
  answers_->Click(QMessageBox::Yes);
  ClickUnit(0);
  EXPECT_THAT(Title(), StartsWith("Unit 1"));
}

}  // namespace
}  // namespace qorhost::test
