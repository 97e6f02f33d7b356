// The credential screen, worked with mouse and keys.
#include <gmock/gmock.h>

#include <QLabel>
#include <algorithm>

#include "host/desks/credential_desk.h"
#include "host/desks/credential_entry.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class CredentialScreens : public DesktopTest {
 protected:
  CredentialScreens() { OpenDemoAt(QStringLiteral("credentials")); }

  void EnterCard(const char* number) {
    Choose("cboCredentialType", "Standard 26-Bit Card");
    Type("txtPINStart", number);
    Type("txtFacilityCode", "7");
  }
  /// The entry of the first tenant with that last name.
  [[nodiscard]] std::string Holder(const char* lastName) {
    const auto& holders = Find<QComboBox>("cboAssignedTo");
    return holders.itemText(holders.findText(QString::fromUtf8(lastName), Qt::MatchStartsWith))
        .toStdString();
  }
  [[nodiscard]] std::string Stored(const std::string& from, const std::string& to) {
    return Cell("SELECT Count(*) FROM CREDENTIALBANK WHERE UnitKey=2 AND PINNo Between " + from +
                " AND " + to);
  }
};

TEST_F(CredentialScreens, ACardIsIssuedAndShown) {
  EnterCard("9001");
  Click("saveButton");
  EXPECT_EQ(Stored("9001", "9001"), "1");
  EXPECT_EQ(Told(), "Saved Standard 26-Bit Card-9001.");
  EXPECT_EQ(Find<QLabel>("title").text(), QStringLiteral("Standard 26-Bit Card-9001"));
  EXPECT_FALSE(page().HasEntries());
}

TEST_F(CredentialScreens, ARangeIsIssued) {
  EnterCard("9001");
  Click("severalCredentials");
  Type("txtPINEND", "9040");
  Click("saveButton");
  EXPECT_EQ(Stored("9001", "9040"), "40");
  EXPECT_EQ(Told(), "Saved Standard 26-Bit Card-9001 to 9040.");
}

TEST_F(CredentialScreens, ARefusalIsShownAtTheWidgetInTheControllersWords) {
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  ASSERT_EQ(answers_->seen().size(), 1U);
  const SeenBox& box = answers_->seen().front();
  EXPECT_EQ(box.text, "You must enter a credential number.");
  EXPECT_EQ(box.title, "Pello RT");
  EXPECT_EQ(box.defaultButton, "OK");
  EXPECT_EQ(Marked(), "txtPINStart: You must enter a credential number.");
  EXPECT_EQ(window().focusWidget(), &Find<QLineEdit>("txtPINStart"));
  Type("txtPINStart", "9");
  EXPECT_EQ(Marked(), "");
}

TEST_F(CredentialScreens, WhatWasToldOfARefusalGoesWithTheEntry) {
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  EXPECT_EQ(Told(), "Nothing was changed.");
  const QAbstractItemModel& list = *Find<QListView>("cboCredentials").model();
  ClickEntry("cboCredentials", list.index(3, 0).data().toString().toUtf8().constData());
  EXPECT_EQ(Told(), "");
  EXPECT_EQ(Marked(), "");
}

TEST_F(CredentialScreens, WhatWouldBeRoundedIsToldAtTheWidgetWithoutABox) {
  EnterCard("9001.5");
  Click("saveButton");
  EXPECT_THAT(Marked(), StartsWith("txtPINStart: Number '9001.5'"));
  EXPECT_TRUE(answers_->seen().empty());
  EXPECT_EQ(Stored("9001", "9002"), "0");
}

TEST_F(CredentialScreens, EveryBoundIsRefusedInItsOwnWords) {
  struct Row {
    const char* box;
    const char* text;
    const char* words;
  };
  const Row rows[] = {
      {"txtPINStart", "65536", "Please enter a credential number smaller than 65535."},
      {"txtPINStart", "0", "Please enter a starting number between 1 and 65535."},
      {"txtFacilityCode", "256", "255"}};
  for (const Row& row : rows) {
    EnterCard("9001");
    Type(row.box, row.text);
    answers_->Click(QMessageBox::Ok);
    Click("saveButton");
    EXPECT_THAT(answers_->LastText(), HasSubstr(row.words));
    EXPECT_THAT(Marked(), StartsWith(row.box));
  }
  EXPECT_EQ(Stored("9001", "9001"), "0");
}

TEST_F(CredentialScreens, EveryBoundOfARangeIsRefusedInItsOwnWords) {
  struct Row {
    const char* first;
    const char* last;
    const char* box;
    const char* words;
  };
  const Row rows[] = {
      {"", "9003", "txtPINStart", "You must enter a starting number."},
      {"65536", "65536", "txtPINStart", "Please enter a Start Number smaller than 65535."},
      {"9001", "0", "txtPINEND", "Please enter an ending number between 1 and 65535."},
      {"9001", "65536", "txtPINEND", "Please enter a End Number smaller than 65535."},
      {"9003", "9001", "txtPINEND", "The ending number must be greater than the starting number."}};
  Click("severalCredentials");
  for (const Row& row : rows) {
    EnterCard(row.first);
    Type("txtPINEND", row.last);
    answers_->Click(QMessageBox::Ok);
    Click("saveButton");
    EXPECT_EQ(Marked(), std::string(row.box) + ": " + row.words);
  }
  EXPECT_EQ(Stored("9001", "9003"), "0");
}

TEST_F(CredentialScreens, EveryBoundOfATypeIsRefusedInItsOwnWords) {
  struct Row {
    const char* type;
    const char* box;
    const char* text;
    const char* words;
  };
  const Row rows[] = {
      {"Corvin 30-Bit Card", "txtFacilityCode", "64",
       "Please enter a Facility Code between 0 and 63."},
      {"Transmitter", "txtSequenceCode", "3", "Please enter a Sequence Code between 0 and 2."},
      {"Transmitter", "txtIDCode", "27", "Please enter an ID Code between 0 and 26."}};
  for (const Row& row : rows) {
    EnterCard("9001");
    Choose("cboCredentialType", row.type);
    if (std::string_view(row.type) == "Transmitter") {
      Type("txtIDCode", "1");
    }
    Type(row.box, row.text);
    answers_->Click(QMessageBox::Ok);
    Click("saveButton");
    EXPECT_EQ(Marked(), std::string(row.box) + ": " + row.words);
  }
  EXPECT_EQ(Stored("9001", "9001"), "0");
}

TEST_F(CredentialScreens, TheTypeShowsWhatATransmitterHas) {
  EXPECT_FALSE(Find<QLineEdit>("txtIDCode").isVisible());
  EXPECT_FALSE(Find<QLabel>("lblIDCode").isVisible());
  Choose("cboCredentialType", "Transmitter");
  EXPECT_TRUE(Find<QLineEdit>("txtIDCode").isVisible());
  EXPECT_TRUE(Find<QRadioButton>("optButton4").isVisible());
}

TEST_F(CredentialScreens, ACredentialIsAssignedAndTakenBack) {
  EnterCard("9001");
  Click("saveButton");
  Choose("cboAssignedTo", Holder("O'Brien Paula").c_str());
  Click("saveButton");
  EXPECT_EQ(Told(), "Saved Standard 26-Bit Card-9001.");
  const std::string held =
      "SELECT Count(*) FROM Tenants WHERE FirstName='Paula' AND "
      "CREDENTIALID2=" +
      Cell("SELECT RID FROM CREDENTIALBANK WHERE UnitKey=2 AND PINNo=9001");
  EXPECT_EQ(Cell(held), "1");
  Choose("cboAssignedTo", "<Unassigned>");
  Click("saveButton");
  EXPECT_EQ(Cell(held), "0");
}

TEST_F(CredentialScreens, WhoWouldLoseACredentialIsAskedForFirst) {
  EnterCard("9001");
  Click("saveButton");
  Choose("cboAssignedTo", Holder("Hollis").c_str());  // who has two
  answers_->Click(QMessageBox::No);
  Click("saveButton");
  EXPECT_THAT(answers_->LastText(), HasSubstr("Hollis"));
  EXPECT_THAT(answers_->LastText(), HasSubstr("Go on?"));
  EXPECT_TRUE(page().HasEntries());
  answers_->Click(QMessageBox::Yes);
  Click("saveButton");
  EXPECT_EQ(Told(), "Saved Standard 26-Bit Card-9001.");
}

TEST_F(CredentialScreens, DeletingAsksAndNoKeepsTheCredential) {
  EnterCard("9001");
  Click("saveButton");
  answers_->Click(QMessageBox::No);
  Click("deleteButton");
  EXPECT_EQ(answers_->LastText(), "Delete Standard 26-Bit Card-9001?");
  EXPECT_EQ(answers_->seen().back().defaultButton, "No");
  EXPECT_EQ(Stored("9001", "9001"), "1");
  answers_->Click(QMessageBox::Yes);
  Click("deleteButton");
  EXPECT_EQ(Stored("9001", "9001"), "0");
  EXPECT_EQ(Find<QLabel>("title").text(), QStringLiteral("New credentials"));
}

TEST_F(CredentialScreens, TheControllerAsksBeforeAHeldCredentialIsDeleted) {
  const std::string held = Cell(
      "SELECT Top 1 C.RID FROM CREDENTIALBANK C, Tenants T WHERE C.UnitKey=2 AND "
      "T.CREDENTIALID1=C.RID AND T.Resident=0 ORDER BY C.RID");
  auto& list = Find<QListView>("cboCredentials");
  const std::string number = Cell("SELECT PINNo FROM CREDENTIALBANK WHERE RID=" + held);
  for (int row = 0; row < list.model()->rowCount(); ++row) {
    const QString entry = list.model()->index(row, 0).data().toString();
    if (entry.endsWith(QString::fromStdString("-" + number))) {
      ClickEntry("cboCredentials", entry.toUtf8().constData());
      break;
    }
  }
  answers_->Click(QMessageBox::No);
  Click("deleteButton");
  EXPECT_THAT(answers_->LastText(), StartsWith("This credential is already assgined to a Tenant."));
  EXPECT_EQ(answers_->seen().back().icon, QMessageBox::Warning);
  EXPECT_EQ(answers_->seen().back().defaultButton, "Yes");
  EXPECT_EQ(Cell("SELECT Count(*) FROM CREDENTIALBANK WHERE RID=" + held), "1");
}

TEST_F(CredentialScreens, ACredentialIsRenumbered) {
  EnterCard("9001");
  Click("saveButton");
  answers_->Type(QStringLiteral("9002"));
  Click("renumberButton");
  EXPECT_EQ(Stored("9002", "9002"), "1");
  EXPECT_EQ(Find<QLabel>("title").text(), QStringLiteral("Standard 26-Bit Card-9002"));
}

TEST_F(CredentialScreens, TypingFindsACredential) {
  EnterCard("9001");
  Click("saveButton");
  Click("newButton");
  Type("findCredential", "-9001");
  QTest::keyClick(&Find<QLineEdit>("findCredential"), Qt::Key_Return);
  EXPECT_EQ(Find<QLabel>("title").text(), QStringLiteral("Standard 26-Bit Card-9001"));
}

TEST_F(CredentialScreens, LeavingAnEntryAsks) {
  EnterCard("9001");
  answers_->Click(QMessageBox::No);
  Click("newButton");
  EXPECT_EQ(TextIn("txtPINStart"), "9001");
  answers_->Click(QMessageBox::Yes);
  Click("newButton");
  EXPECT_EQ(TextIn("txtPINStart"), "");
}

TEST_F(CredentialScreens, AChangeByAnotherSeatIsToldAndTheEntryKept) {
  EnterCard("9001");
  Click("saveButton");
  DeskSession other(OpenStoreFile(File("building.db"), Access::kChange), Surroundings{});
  CredentialDesk desk(other, kUnit, DeskScreen::kCredentials);
  (void)desk.Select("9001");
  EnterChange(desk, {"1", {}, false});
  ASSERT_TRUE(desk.SaveEdited().done());
  Choose("cboActivate", Find<QComboBox>("cboActivate").itemText(2).toUtf8().constData());
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  EXPECT_THAT(answers_->LastText(), HasSubstr("Someone else has changed the credential meanwhile"));
  EXPECT_EQ(Find<QComboBox>("cboActivate").currentIndex(), 2);
  Click("saveButton");
  EXPECT_EQ(Cell("SELECT DOORCODE FROM CREDENTIALBANK WHERE UnitKey=2 AND PINNo=9001"), "2");
}

/// The lines of a save: what stands between the call and its return.
std::vector<std::string> SaveIn(const std::vector<std::string>& trace) {
  const auto begin = std::find_if(trace.begin(), trace.end(), [](const std::string& line) {
    return line.find("pbSave") != std::string::npos;
  });
  const auto end = std::find_if(begin, trace.end(), [](const std::string& line) {
    return line.find("pbRetrieve") != std::string::npos;
  });
  return {begin, end};
}

TEST_F(CredentialScreens, ASaveMakesTheCallsThatItMakesWithoutAWindow) {
  EnterCard("9001");
  trace_.clear();
  Click("saveButton");
  const std::vector<std::string> shown = SaveIn(trace_);
  ASSERT_GT(shown.size(), 10U);

  std::vector<std::string> headless;
  const auto session = WithoutAWindow(headless);
  CredentialDesk desk(*session, kUnit, DeskScreen::kCredentials);
  NewCredentials entry;
  entry.type = "card26";
  entry.first = "9001";
  entry.facility = "7";
  EnterCredentials(desk, entry);
  headless.clear();
  ASSERT_TRUE(desk.SaveNew().done());
  desk.RefreshCredentials();
  EXPECT_EQ(shown, SaveIn(headless));
}

}  // namespace
}  // namespace qorhost::test
