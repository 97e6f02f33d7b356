// Cancel behind a save: what was stored before is told to be stored, whatever was saved.
#include <gmock/gmock.h>

#include <QRadioButton>
#include <QTableView>
#include <fstream>
#include <ostream>

#include "host/desktop/screens/import_page.h"
#include "host/desktop/screens/merge_page.h"
#include "host/store/unit_of_work.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::AnyOf;
using testing::HasSubstr;
using testing::StartsWith;

/// Presses Escape at the first call behind the storing of something in the unit.
class CancelOnceStored {
 public:
  CancelOnceStored(MainWindow& window, std::int32_t unitKey)
      : attentive_(window), before_(StoredIn(window, unitKey)) {
    QObject::connect(&look_, &QTimer::timeout, &look_, [this, &window, unitKey] {
      if (done_ || !window.runner().busy()) {
        return;
      }
      const auto now = StoredIn(window, unitKey);
      if (now && now != before_) {
        done_ = true;
        QTest::keyClick(&window, Qt::Key_Escape);
      }
    });
    look_.start(0);
  }

  [[nodiscard]] bool done() const { return done_; }

 private:
  [[nodiscard]] static std::optional<UnitVersion> StoredIn(MainWindow& window,
                                                           std::int32_t unitKey) {
    return window.place()->session().sql().work().Committed(unitKey);
  }

  AttentiveWindow attentive_;
  std::optional<UnitVersion> before_;
  QTimer look_;
  bool done_ = false;
};

class SavesThatAreCancelledBehind;

/// Something that is saved: what leads to it, the saving, and what is stored then.
struct Saving {
  std::string name;
  QString screen;
  std::function<void(SavesThatAreCancelledBehind& test)> prepare;
  std::function<void(SavesThatAreCancelledBehind& test)> save;
  std::string stored;  // a SELECT
  std::string value;
};

void PrintTo(const Saving& saving, std::ostream* out) {
  *out << saving.name;
}

class SavesThatAreCancelledBehind : public DesktopTest, public testing::WithParamInterface<Saving> {
 public:
  using DesktopTest::Choose;
  using DesktopTest::Click;
  using DesktopTest::ClickEntry;
  using DesktopTest::File;
  using DesktopTest::Find;
  using DesktopTest::GiveACard;
  using DesktopTest::page;
  using DesktopTest::Type;
  using DesktopTest::window;
  using DesktopTest::WriteChangedUnit;

  [[nodiscard]] Answers& answers() { return *answers_; }
  void ClickRow(const char* table, int row, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    auto& view = Find<QTableView>(table);
    view.scrollTo(view.model()->index(row, 1));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, keys,
                      view.visualRect(view.model()->index(row, 1)).center());
    Settle();
  }
  void EnterCards(const char* first, const char* last) {
    Choose("cboCredentialType", "Standard 26-Bit Card");
    if (last != nullptr && page().findChild<QRadioButton*>(QStringLiteral("severalCredentials"))) {
      Click("severalCredentials");
    }
    Type("txtPINStart", first);
    if (last != nullptr) {
      Type("txtPINEND", last);
    }
    Type("txtFacilityCode", "7");
  }
};

TEST_P(SavesThatAreCancelledBehind, AreToldToBeStored) {
  OpenDemoAt(GetParam().screen);
  GetParam().prepare(*this);
  ASSERT_NE(Cell(GetParam().stored), GetParam().value);
  bool cancelled = false;
  {
    const CancelOnceStored cancel(window(), kUnit);
    GetParam().save(*this);
    cancelled = cancel.done();
  }
  EXPECT_EQ(Cell(GetParam().stored), GetParam().value);
  // Where nothing is read behind the storing there is nothing to cancel.
  EXPECT_EQ(Told() == "Cancelled behind the change, which is stored. F5 shows it.", cancelled)
      << Told();
  EXPECT_NE(Told(), "");
  QTest::keyClick(&window(), Qt::Key_F5);
  EXPECT_EQ(Cell(GetParam().stored), GetParam().value);
}

using Behind = SavesThatAreCancelledBehind;

/// Saved once more, without F5: what the window has stored itself is not somebody else's.
class SavesBehindACancelledReading : public SavesThatAreCancelledBehind {
 protected:
  /// So that it looks up for Cancel: doors, types of units, and tenants, whom the reading of
  /// schedules counts.
  void MakeReadingLong() {
    SqlSession& sql = window().place()->session().sql();
    WorkGuard whole(sql.work(), WorkOrder{{kUnit}, "fill", {}});
    constexpr std::int32_t kRows = 3000;
    for (std::int32_t row = 1; row <= kRows; ++row) {
      const std::string name = "More " + std::to_string(row);
      sql.AddRow("DOORS",
                 std::vector<Field>{{"UNITKEY", kUnit}, {"DOORID", row + 100}, {"DOORNAME", name}});
      for (const char* more : {"", "a", "b", "c"}) {
        sql.AddRow("UNITTYPES", std::vector<Field>{{"DESCRIPTION", name + more}});
      }
      sql.AddRow("Tenants", std::vector<Field>{{"UnitKey", kUnit}, {"LastName", name}});
    }
    whole.Commit();
  }
};

TEST_P(SavesBehindACancelledReading, AreDone) {
  OpenDemoAt(GetParam().screen);
  MakeReadingLong();
  {
    const CancelOnceStored cancel(window(), kUnit);
    GetParam().prepare(*this);
    ASSERT_TRUE(cancel.done());
  }
  ASSERT_EQ(Told(), "Cancelled behind the change, which is stored. F5 shows it.");
  EXPECT_FALSE(page().HasEntries());
  GetParam().save(*this);
  EXPECT_EQ(Cell(GetParam().stored), GetParam().value) << Told() << answers().LastText();
}

void ClickSave(Behind& test) {
  test.Click("saveButton");
}

std::string CardsFrom9001() {
  return "SELECT Count(*) FROM CREDENTIALBANK WHERE UnitKey=2 AND PINNo Between 9001 AND 9003";
}

std::string TenantsWith(const std::string& condition) {
  return "SELECT Count(*) FROM Tenants WHERE UnitKey=2 AND " + condition;
}

std::vector<Saving> AllSavings() {
  const auto chooseTwo = [](Behind& test) {
    test.ClickRow("tenants", 0);
    test.ClickRow("tenants", 1, Qt::ControlModifier);
  };
  const std::string codes = "SELECT Count(*) FROM DIRECTORYCODE WHERE UNITKEY=2 AND ";
  return {
      {"OneCredential", QStringLiteral("credentials"),
       [](Behind& test) { test.EnterCards("9001", nullptr); }, ClickSave, CardsFrom9001(), "1"},
      {"ARange", QStringLiteral("credentials"),
       [](Behind& test) { test.EnterCards("9001", "9003"); }, ClickSave, CardsFrom9001(), "3"},
      {"AHolder", QStringLiteral("credentials"),
       [](Behind& test) {
         test.EnterCards("9001", nullptr);
         test.Click("saveButton");
         const auto& holders = test.Find<QComboBox>("cboAssignedTo");
         test.Choose("cboAssignedTo", holders
                                          .itemText(holders.findText(
                                              QStringLiteral("O'Brien Paula"), Qt::MatchStartsWith))
                                          .toUtf8()
                                          .constData());
       },
       ClickSave,
       "SELECT Count(*) FROM Tenants, CREDENTIALBANK WHERE Tenants.UnitKey=2 AND "
       "Tenants.CREDENTIALID2=CREDENTIALBANK.RID AND CREDENTIALBANK.PINNo=9001",
       "1"},
      {"TheDeletionOfACredential", QStringLiteral("credentials"),
       [](Behind& test) {
         test.EnterCards("9001", nullptr);
         test.Click("saveButton");
         test.answers().Click(QMessageBox::Yes);
       },
       [](Behind& test) { test.Click("deleteButton"); }, CardsFrom9001(), "0"},
      {"TenantsOfARange", QStringLiteral("tenant_creating"),
       [](Behind& test) { test.EnterCards("9001", "9003"); }, ClickSave, CardsFrom9001(), "3"},
      {"ANewCode", QStringLiteral("dir_codes"),
       [](Behind& test) {
         test.Type("txtdirectorycode", "399");
         test.Type("txtDisplayName", "Lobby");
         test.Type("txtPhoneNo", "5550100");
       },
       ClickSave, codes + "DIRECTORYCODE=399", "1"},
      {"AChangedCode", QStringLiteral("dir_codes"),
       [](Behind& test) {
         test.ClickEntry("cbodirectorycode", "0102");
         test.Type("txtPhoneNo", "555-1111");
       },
       ClickSave, codes + "PHONENUMBER='555-1111'", "1"},
      {"ATenant", QStringLiteral("tenants"),
       [](Behind& test) {
         test.ClickRow("tenants", 0);
         test.Type("nameAtUnit", "Zoe");
       },
       ClickSave, TenantsWith("NameAtUnit='Zoe'"), "1"},
      {"ANewTenant", QStringLiteral("tenants"),
       [](Behind& test) { test.Type("lastName", "Vogel"); }, ClickSave,
       TenantsWith("LastName='Vogel'"), "1"},
      {"TwoTenants", QStringLiteral("tenants"),
       [chooseTwo](Behind& test) {
         chooseTwo(test);
         test.Type("initial", "Q");
         test.answers().Press("goButton");
       },
       ClickSave, TenantsWith("MiddleInitial='Q'"), "2"},
      {"TheEndOfLeases", QStringLiteral("tenants"),
       [chooseTwo](Behind& test) {
         chooseTwo(test);
         test.answers().Press("goButton");  // of the day
         test.answers().Press("goButton");  // of what would change
       },
       [](Behind& test) { test.Click("endButton"); },
       TenantsWith("ACTIVETENANT=True AND ACTIVEENDTIME Between #1/31/2026# And #2/1/2026#"), "2"},
      {"TheDeletionOfTenants", QStringLiteral("tenants"),
       [chooseTwo](Behind& test) {
         chooseTwo(test);
         test.answers().Click(QMessageBox::Yes);
       },
       [](Behind& test) { test.Click("deleteButton"); }, TenantsWith("RID>0"), "73"},
      {"AnUndo", QStringLiteral("dir_codes"),
       [](Behind& test) {
         test.ClickEntry("cbodirectorycode", "0102");
         test.Type("txtPhoneNo", "555-1111");
         test.Click("saveButton");
         test.window().ShowScreen(QStringLiteral("history"));
         test.ClickRow("entries", 0);
         test.answers().Click(QMessageBox::Yes);
       },
       [](Behind& test) { test.Click("undoButton"); }, codes + "PHONENUMBER='555-1111'", "0"},
      {"AnImport", QStringLiteral("import"),
       [](Behind& test) {
         std::ofstream(test.File("cards.csv"))
             << "Credential Type,Card Number,Facility Code\ncard26,9001,7\ncard26,9002,7\n";
         test.Choose("kind", "Credentials");
         dynamic_cast<ImportPage&>(test.page()).Open(test.File("cards.csv"));
         test.Click("checkButton");
       },
       [](Behind& test) { test.Click("importButton"); }, CardsFrom9001(), "2"},
      {"AMerge", QStringLiteral("merge"),
       [](Behind& test) {
         dynamic_cast<MergePage&>(test.page()).Open(test.WriteChangedUnit());
         test.Click("acceptAllButton");
         test.answers().Click(QMessageBox::Yes);  // of the code that is deleted
       },
       [](Behind& test) { test.Click("mergeButton"); }, codes + "DIRECTORYCODE=300", "1"},
      {"MarksOfSteps", QStringLiteral("credentials"),
       [](Behind& test) {
         test.GiveACard("9001");
         test.window().ShowScreen(QStringLiteral("steps"));
         test.answers().Click(QMessageBox::Yes);
       },
       [](Behind& test) { test.Click("markButton"); },
       "SELECT Count(*) FROM ProgramSteps WHERE UnitKey=2 AND Sent=False", "0"},
      {"ADoor", QStringLiteral("building"), [](Behind& test) { test.Type("doorName", "Yard"); },
       [](Behind& test) { test.Click("renameButton"); },
       "SELECT Count(*) FROM DOORS WHERE UNITKEY=2 AND DOORNAME='Yard'", "1"},
      {"ASchedule", QStringLiteral("building"),
       [](Behind& test) { test.Type("scheduleName", "Cleaners"); }, ClickSave,
       "SELECT Count(*) FROM Schedules WHERE UnitKey=2 AND ScheduleName='Cleaners'", "1"},
      {"AUnit", QStringLiteral("units"),
       [](Behind& test) { test.Type("name", "Linden Park East"); }, ClickSave,
       "SELECT UnitName FROM Units WHERE UnitKey=2", "Linden Park East"},
  };
}

std::vector<Saving> AllTwice() {
  const auto type = [](const char* widget, const char* text, const char* button) {
    return [=](Behind& test) {
      test.Type(widget, text);
      test.Click(button);
    };
  };
  const auto delete_ = [](Behind& test) {
    test.answers().Click(QMessageBox::Yes);
    test.Click("deleteButton");
  };
  const QString building = QStringLiteral("building");
  const QString units = QStringLiteral("units");
  const std::string doors = "SELECT Count(*) FROM DOORS WHERE UNITKEY=2 AND DOORNAME=";
  const std::string schedules = "SELECT Count(*) FROM Schedules WHERE UnitKey=2 AND ScheduleName=";
  return {
      {"ADoor", building, type("doorName", "Yard", "renameButton"),
       type("doorName", "Court", "renameButton"), doors + "'Court'", "1"},
      {"ANewSchedule", building, type("scheduleName", "Cleaners", "saveButton"),
       type("scheduleName", "Gardeners", "saveButton"), schedules + "'Gardeners'", "1"},
      {"TheDeletionOfANewSchedule", building, type("scheduleName", "Cleaners", "saveButton"),
       delete_, schedules + "'Cleaners'", "0"},
      {"AUnit", units, type("name", "Linden Park East", "saveButton"),
       type("name", "Linden Park West", "saveButton"), "SELECT UnitName FROM Units WHERE UnitKey=2",
       "Linden Park West"},
      {"TheCapacityOfAUnit", units, type("capacity", "3000", "saveButton"),
       type("name", "Linden Park West", "saveButton"), "SELECT UnitName FROM Units WHERE UnitKey=2",
       "Linden Park West"},
      {"ATenant", QStringLiteral("tenants"),
       [](Behind& test) {
         test.ClickRow("tenants", 0);
         test.Type("nameAtUnit", "Zoe");
         test.Click("saveButton");
       },
       type("nameAtUnit", "Zoey", "saveButton"), TenantsWith("NameAtUnit='Zoey'"), "1"},
  };
}

INSTANTIATE_TEST_SUITE_P(Of, SavesBehindACancelledReading, testing::ValuesIn(AllTwice()),
                         [](const testing::TestParamInfo<Saving>& one) { return one.param.name; });

INSTANTIATE_TEST_SUITE_P(Of, SavesThatAreCancelledBehind, testing::ValuesIn(AllSavings()),
                         [](const testing::TestParamInfo<Saving>& one) { return one.param.name; });

}  // namespace
}  // namespace qorhost::test
