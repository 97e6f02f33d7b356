// The history of a store and work that is taken back.
#include "host/desks/history.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "host/desks/history_undo.h"
#include "host/store/step_queue.h"
#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {
namespace {

using qorcred::TextOrEmpty;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class HistoryTest : public DeskFixture {
 protected:
  // An undo asks a component for its steps: for itself, not for a controller.
  HistoryTest() { replays_ = true; }

  void SetUp() override {
    DeskFixture::SetUp();
    session().sql().work().SignAs({"anna", "desk 1", [] {
                                     return qorcred::FromCivil({2026, 1, 31, 12, 0, 0});
                                   }});
    last_ = LastEntry();
    Run("DELETE FROM ProgramSteps");
  }

  [[nodiscard]] std::int64_t LastEntry() {
    const auto entries = session().sql().audit().After(0, std::nullopt);
    return entries.empty() ? 0 : entries.back().entry;
  }

  /// Runs statements as one unit of work of the unit; the number of its entry.
  std::string Work(const std::string& what, const std::vector<std::string>& statements) {
    WorkGuard guard(session().sql().work(), {{kUnit}, what, {}});
    for (const std::string& statement : statements) {
      (void)session().sql().Change(statement, std::nullopt);
    }
    EXPECT_TRUE(guard.Commit());
    return std::to_string(LastEntry());
  }
  std::string Rename(const std::string& name) {
    return Work("rename to " + name, {"UPDATE Tenants SET LastName='" + name + "' WHERE RID=62"});
  }

  [[nodiscard]] std::vector<std::string> Whats(HistoryQuery query) {
    std::vector<std::string> whats;
    for (const auto& row : HistoryList(session(), query).rows) {
      if (qorcred::NumericValue(row[0]) > static_cast<double>(last_)) {
        whats.push_back(TextOrEmpty(row[4]));
      }
    }
    return whats;
  }
  [[nodiscard]] std::vector<std::string> Steps() {
    std::vector<std::string> steps;
    for (const ProgramStep& step : session().sql().steps().List(kUnit)) {
      steps.push_back(step.kind + " " + std::to_string(step.subjectRid) + " " + step.code);
    }
    return steps;
  }
  /// Why an entry was not undone.
  [[nodiscard]] std::string Refusal(const std::string& entry) {
    const Undoing undone = UndoEntry(session(), entry, Trial::kNo);
    EXPECT_EQ(undone.ending, Ending::kRefused);
    EXPECT_THAT(undone.entries, IsEmpty());
    EXPECT_FALSE(undone.written);
    return undone.reason;
  }
  /// Undoes the entry; how many rows are as before.
  std::size_t Undo(const std::string& entry) {
    const Undoing undone = UndoEntry(session(), entry, Trial::kNo);
    EXPECT_TRUE(undone.done()) << undone.reason;
    return undone.done() ? undone.entries.front().rows : 0;
  }

  std::int64_t last_ = 0;  // the last entry of the demo building
};

TEST_F(HistoryTest, AnEntryOfWhatTheUnitHoldsAloneIsNotUndone) {
  Run("UPDATE DirectoryCode SET MODIFIED=1 WHERE RID=11");
  const std::string sent = Work("steps done", {"UPDATE DirectoryCode SET MODIFIED=0 WHERE RID=11"});
  EXPECT_THAT(Refusal(sent), HasSubstr("changed only what the unit holds"));
  EXPECT_EQ(std::to_string(LastEntry()), sent);
}

TEST_F(HistoryTest, ListsWhatWasDoneWithItsRows) {
  const std::string entry = Rename("Berg");
  const List table = HistoryList(session(), {});
  const std::vector<qorcred::Value>& row = table.rows.back();
  EXPECT_EQ(TextOrEmpty(row[0]), entry);
  EXPECT_EQ(row[1], qorcred::Value(qorcred::FromCivil({2026, 1, 31, 12, 0, 0})));
  EXPECT_EQ(TextOrEmpty(ForPeople(table).rows.back()[1]), "2026-01-31T12:00:00+00:00");
  EXPECT_EQ(TextOrEmpty(row[2]), "anna");
  EXPECT_EQ(TextOrEmpty(row[3]), "2");
  EXPECT_EQ(TextOrEmpty(row[4]), "rename to Berg");
  EXPECT_EQ(TextOrEmpty(row[5]), "Tenants: 1 changed");
  EXPECT_EQ(table.fields.at(6).key, "from");
  EXPECT_EQ(TextOrEmpty(row[6]), "desk 1");
}

TEST_F(HistoryTest, IsNarrowedByUnitTimeNameSubjectAndNumber) {
  Rename("Berg");
  Rename("Cole");
  EXPECT_THAT(Whats({}), ElementsAre("rename to Berg", "rename to Cole"));
  HistoryQuery query;
  query.unitKey = 1;
  EXPECT_THAT(Whats(query), IsEmpty());
  query = {};
  query.since = "2026-02-01";
  EXPECT_THAT(Whats(query), IsEmpty());
  query.since = "2026-01-31";
  EXPECT_THAT(Whats(query), testing::SizeIs(2));
  query.since = "1d";
  EXPECT_THAT(Whats(query), testing::SizeIs(2));
  query = {};
  query.who = "ANN";
  EXPECT_THAT(Whats(query), testing::SizeIs(2));
  query.who = "bob";
  EXPECT_THAT(Whats(query), IsEmpty());
  query = {};
  query.subject = "cole";
  EXPECT_THAT(Whats(query), ElementsAre("rename to Cole"));
  query = {};
  query.latest = 1;
  EXPECT_THAT(Whats(query), ElementsAre("rename to Cole"));
}

TEST_F(HistoryTest, ASubjectIsFoundHoweverItsAccentsAreEncoded) {
  Rename("O\u0308ztu\u0308rk");
  Rename("Ozturk");
  HistoryQuery query;
  query.subject = "öztürk";
  EXPECT_THAT(Whats(query), ElementsAre("rename to O\u0308ztu\u0308rk", "rename to Ozturk"))
      << "the second has the former name in its row";
  Rename("Berg");
  EXPECT_THAT(Whats(query), testing::SizeIs(2));
}

TEST_F(HistoryTest, WhatIsNeitherADateNorANumberOfDaysIsAFault) {
  HistoryQuery query;
  for (const char* since : {"yesterday", "d", "-1d", "1.5d", "100000d", "99999999999999999999d"}) {
    query.since = since;
    EXPECT_EQ(FieldAtFault([&] { (void)HistoryList(session(), query); }), history_input::kSince)
        << since;
  }
  query.since = "99999d";
  EXPECT_NO_THROW((void)HistoryList(session(), query));
}

TEST_F(HistoryTest, EveryUnitHasAHead) {
  const std::string entry = Rename("Berg");
  const Table heads = HeadTable(session());
  ASSERT_EQ(heads.rows.size(), 3U);
  EXPECT_EQ(heads.rows[1][0], qorcred::Value(kUnit));
  EXPECT_EQ(TextOrEmpty(heads.rows[1][1]), entry);
  EXPECT_THAT(FaultsOfHistory(session(), {ReadHead(TextOrEmpty(heads.rows[1][2]))}), IsEmpty());
}

TEST_F(HistoryTest, ShowsTheFieldsBeforeAndAfter) {
  const std::string name = Cell("SELECT LastName FROM Tenants WHERE RID=62");
  const std::string entry = Rename("Berg");
  const Table table = EntryTable(session(), EntryOf(session(), entry).entry);
  ASSERT_EQ(table.rows.size(), 1U);
  EXPECT_EQ(TextOrEmpty(table.rows[0][0]), "Tenants");
  EXPECT_EQ(TextOrEmpty(table.rows[0][1]), "62");
  EXPECT_EQ(TextOrEmpty(table.rows[0][3]), "changed");
  EXPECT_EQ(TextOrEmpty(table.rows[0][4]), "Last name");
  EXPECT_EQ(TextOrEmpty(EntryTable(session(), std::stoll(entry), NamedFor::kPrograms).rows[0][4]),
            "last_name");
  EXPECT_EQ(TextOrEmpty(table.rows[0][5]), name);
  EXPECT_EQ(TextOrEmpty(table.rows[0][6]), "Berg");
}

TEST_F(HistoryTest, TellsEachRowThatAnEntryTouchedOnce) {
  const std::string entry =
      Work("several", {"UPDATE Tenants SET LastName='Berg', FirstName='Ida' WHERE RID=62",
                       "DELETE FROM DirectoryCode WHERE RID=13",
                       "INSERT INTO TenantGroup (UnitKey, IsGroupZero) VALUES (2, False)"});
  std::vector<std::string> told;
  for (const TouchedRow& row : RowsTouched(session(), EntryOf(session(), entry).entry)) {
    const char* const kind = row.kind == RowChangeKind::kInserted  ? "new "
                             : row.kind == RowChangeKind::kDeleted ? "deleted "
                                                                   : "changed ";
    told.push_back(
        kind + row.table +
        (row.kind == RowChangeKind::kInserted ? std::string() : " " + std::to_string(row.rid)));
  }
  EXPECT_THAT(told,
              ElementsAre("changed Tenants 62", "deleted DirectoryCode 13", "new TenantGroup"));
}

TEST_F(HistoryTest, AnEntryThatIsNotThereIsAFault) {
  EXPECT_EQ(FieldAtFault([&] { (void)EntryOf(session(), "9999"); }), history_input::kEntry);
  EXPECT_EQ(FieldAtFault([&] { (void)EntryOf(session(), "twelve"); }), history_input::kEntry);
}

TEST_F(HistoryTest, AnUndoneEntryIsWrittenBackQueuedAndNoted) {
  const std::string name = Cell("SELECT LastName FROM Tenants WHERE RID=62");
  const std::string entry = Rename("Berg");
  EXPECT_EQ(Undo(entry), 1U);
  EXPECT_EQ(Cell("SELECT LastName FROM Tenants WHERE RID=62"), name);
  EXPECT_THAT(Steps(), ElementsAre("program tenant 62 "));
  EXPECT_THAT(Whats({}), ElementsAre("rename to Berg", "undo entry " + entry + ": rename to Berg"));
}

TEST_F(HistoryTest, ATrialChangesNothing) {
  const std::string entry = Rename("Berg");
  const Undoing tried = UndoEntry(session(), entry, Trial::kYes);
  ASSERT_TRUE(tried.done()) << tried.reason;
  EXPECT_FALSE(tried.written);
  EXPECT_EQ(tried.entries.front().rows, 1U);
  EXPECT_EQ(Cell("SELECT LastName FROM Tenants WHERE RID=62"), "Berg");
  EXPECT_THAT(Steps(), IsEmpty());
  EXPECT_THAT(Whats({}), ElementsAre("rename to Berg"));
}

TEST_F(HistoryTest, AnUndoIsUndone) {
  const std::string entry = Rename("Berg");
  Undo(entry);
  Undo(std::to_string(LastEntry()));
  EXPECT_EQ(Cell("SELECT LastName FROM Tenants WHERE RID=62"), "Berg");
}

TEST_F(HistoryTest, SeveralEntriesAreUndoneFromTheLast) {
  const std::string name = Cell("SELECT LastName FROM Tenants WHERE RID=62");
  const std::string first = Work("one", {"UPDATE Tenants SET LastName='Berg', "
                                         "LASTMODIFIEDDATE='_LMDATE_' WHERE RID=62"});
  const std::string second = Work("two", {"UPDATE Tenants SET LastName='Cole', "
                                          "LASTMODIFIEDDATE='_LMDATE_' WHERE RID=62"});
  Undo(second);
  Undo(first);
  EXPECT_EQ(Cell("SELECT LastName FROM Tenants WHERE RID=62"), name);
}

TEST_F(HistoryTest, RowsThatWereChangedSinceAreRefusedWithWhoAndWhat) {
  const std::string first = Rename("Berg");
  const std::string second = Rename("Cole");
  EXPECT_EQ(Refusal(first),
            "entry " + first +
                " (rename to Berg, by anna, 2026-01-31 12:00:00 UTC) cannot be "
                "undone: row 62 of Tenants is no more as it left it, since entry " +
                second +
                " (rename to Cole, by anna, 2026-01-31 12:00:00 UTC); nothing was changed");
  EXPECT_EQ(Cell("SELECT LastName FROM Tenants WHERE RID=62"), "Cole");
  EXPECT_THAT(Steps(), IsEmpty());
}

TEST_F(HistoryTest, OneRowThatWasChangedSinceRefusesAll) {
  const std::string both = Work("two", {"UPDATE Tenants SET LastName='Berg' WHERE RID=62",
                                        "UPDATE Tenants SET LastName='Berg' WHERE RID=63"});
  Rename("Cole");
  EXPECT_THAT(Refusal(both), HasSubstr("row 62 of Tenants"));
  EXPECT_EQ(Cell("SELECT LastName FROM Tenants WHERE RID=63"), "Berg");
}

TEST_F(HistoryTest, ARowInTheMiddleOfARunIsWatchedToo) {
  const std::string insert =
      "INSERT INTO CredentialBank (UnitKey, CredentialType, PINNo, FacilityCode) VALUES (2, 1, ";
  const std::string run =
      Work("three cards", {insert + "901, 7)", insert + "902, 7)", insert + "903, 7)"});
  const std::string rid = Cell("SELECT RID FROM CredentialBank WHERE PINNo=902 AND UnitKey=2");
  const std::string renumbered =
      Work("renumber", {"UPDATE CredentialBank SET PINNo=999 WHERE RID=" + rid});
  EXPECT_THAT(Refusal(run), HasSubstr("row " + rid +
                                      " of CredentialBank is no more as it left it, "
                                      "since entry " +
                                      renumbered));
  Undo(renumbered);
  EXPECT_EQ(Undo(run), 3U);
  EXPECT_EQ(CountOf("SELECT RID FROM CredentialBank WHERE PINNo IN (901, 902, 903)"), 0U);
}

TEST_F(HistoryTest, TheHolderOfACardThatComesBackIsProgrammed) {
  const std::string card = Cell("SELECT CREDENTIALID1 FROM Tenants WHERE RID=62");
  ASSERT_FALSE(card.empty());
  const std::string entry = Work("delete", {"UPDATE Tenants SET CREDENTIALID1=NULL WHERE RID=62",
                                            "DELETE FROM CredentialBank WHERE RID=" + card});
  EXPECT_EQ(Undo(entry), 2U);
  EXPECT_EQ(Cell("SELECT CREDENTIALID1 FROM Tenants WHERE RID=62"), card);
  EXPECT_EQ(CountOf("SELECT RID FROM CredentialBank WHERE RID=" + card), 1U);
  EXPECT_THAT(Steps(), ElementsAre("program tenant 62 "));
}

TEST_F(HistoryTest, ADeletedCodeIsProgrammedAgain) {
  Run("UPDATE DirectoryCode SET MODIFIED=0 WHERE RID=11");
  const std::string entry = Work("delete", {"DELETE FROM DirectoryCode WHERE RID=11"});
  Undo(entry);
  EXPECT_EQ(Cell("SELECT DIRECTORYCODE FROM DirectoryCode WHERE RID=11"), "101");
  EXPECT_EQ(Cell("SELECT MODIFIED FROM DirectoryCode WHERE RID=11"), "2");
  EXPECT_THAT(Steps(), ElementsAre("program directory code 11 "));
}

TEST_F(HistoryTest, ANewCodeThatTheUnitHasIsTakenFromIt) {
  const std::string entry = Work(
      "add", {"INSERT INTO DirectoryCode (UNITKEY, DIRECTORYCODE, MODIFIED) VALUES (2, 777, 1)"});
  Run("UPDATE DirectoryCode SET MODIFIED=0, OLDDIRECTORYCODE=777 WHERE DIRECTORYCODE=777");
  const std::string rid = Cell("SELECT RID FROM DirectoryCode WHERE DIRECTORYCODE=777");
  Undo(entry);
  EXPECT_THAT(Steps(), ElementsAre("delete directory code " + rid + " 777"));
}

TEST_F(HistoryTest, ANewCodeThatTheUnitNeverHadLeavesNoStep) {
  const std::string entry = Work(
      "add", {"INSERT INTO DirectoryCode (UNITKEY, DIRECTORYCODE, MODIFIED) VALUES (2, 777, 1)"});
  const std::string rid = Cell("SELECT RID FROM DirectoryCode WHERE DIRECTORYCODE=777");
  session().sql().steps().Queue(kUnit, step::kProgramDirectoryCode, std::stoi(rid));
  Undo(entry);
  EXPECT_EQ(CountOf("SELECT RID FROM DirectoryCode WHERE DIRECTORYCODE=777"), 0U);
  EXPECT_THAT(Steps(), IsEmpty());
}

TEST_F(HistoryTest, ARenumberedCodeIsChangedBackInTheUnit) {
  Run("UPDATE DirectoryCode SET MODIFIED=0, OLDDIRECTORYCODE=101 WHERE RID=11");
  const std::string entry =
      Work("renumber", {"UPDATE DirectoryCode SET DIRECTORYCODE=777, MODIFIED=2 WHERE RID=11"});
  // The unit was told meanwhile.
  Run("UPDATE DirectoryCode SET MODIFIED=0, OLDDIRECTORYCODE=777 WHERE RID=11");
  Undo(entry);
  EXPECT_EQ(Cell("SELECT DIRECTORYCODE FROM DirectoryCode WHERE RID=11"), "101");
  EXPECT_EQ(Cell("SELECT MODIFIED FROM DirectoryCode WHERE RID=11"), "2");
  EXPECT_EQ(Cell("SELECT OLDDIRECTORYCODE FROM DirectoryCode WHERE RID=11"), "777");
  EXPECT_THAT(Steps(), ElementsAre("change directory code 11 777"));
}

TEST_F(HistoryTest, ACardThatSomebodyHoldsByNowStays) {
  const std::string entry =
      Work("issue", {"INSERT INTO CredentialBank (UnitKey, CredentialType, PINNo, FacilityCode) "
                     "VALUES (2, 1, 901, 7)"});
  const std::string rid = Cell("SELECT RID FROM CredentialBank WHERE PINNo=901 AND UnitKey=2");
  Work("assign", {"UPDATE Tenants SET CREDENTIALID2=" + rid + " WHERE RID=62"});
  EXPECT_THAT(Refusal(entry), HasSubstr("holds the credential RID " + rid +
                                        ", which is not there then; nothing was changed"));
  EXPECT_EQ(CountOf("SELECT RID FROM CredentialBank WHERE RID=" + rid), 1U);
}

TEST_F(HistoryTest, ADeletedCodeDoesNotComeBackBesideItsSuccessor) {
  const std::string entry = Work("delete", {"DELETE FROM DirectoryCode WHERE RID=11"});
  Work("add", {"INSERT INTO DirectoryCode (UNITKEY, DIRECTORYCODE, MODIFIED) VALUES (2, 101, 1)"});
  EXPECT_THAT(Refusal(entry), HasSubstr("directory code 101 is there twice"));
}

TEST_F(HistoryTest, AnAlteredEntryIsFound) {
  EXPECT_THAT(FaultsOfHistory(session(), {}), IsEmpty());
  const std::string entry = Rename("Berg");
  const std::vector<ChainHead> heads = session().sql().audit().Heads();
  EXPECT_THAT(FaultsOfHistory(session(), heads), IsEmpty());
  Run("UPDATE AuditEntries SET Who='bob' WHERE RID=" + entry);
  EXPECT_THAT(
      FaultsOfHistory(session(), {}),
      ElementsAre("entry " + entry + " is not as it was written, or one that it follows is not"));
}

TEST_F(HistoryTest, EntriesThatWereRemovedFromTheEndAreFoundByANotedHead) {
  Rename("Berg");
  const std::vector<ChainHead> before = session().sql().audit().Heads();
  const std::string entry = Rename("Cole");
  std::vector<ChainHead> noted = session().sql().audit().Heads();
  std::erase_if(noted, [](const ChainHead& head) { return head.unitKey != kUnit; });
  Run("DELETE FROM AuditEntries WHERE RID=" + entry);
  for (const ChainHead& head : before) {
    for (const char* table : {"UnitVersions", "StoreSeal"}) {
      Run(fmt::format("UPDATE {} SET Entry={} WHERE UnitKey={}", table, head.entry, head.unitKey));
    }
  }
  EXPECT_THAT(FaultsOfHistory(session(), {}), IsEmpty());
  EXPECT_THAT(FaultsOfHistory(session(), noted),
              ElementsAre("entry " + entry + " of unit 2 is not the one that was noted"));
}

TEST(HistoryHeads, AreReadAsTheyAreWritten) {
  const ChainHead head{3, 57, std::string(64, 'a')};
  EXPECT_EQ(ReadHead(TextOf(head)), head);
  const std::string hash = ":" + std::string(64, 'a');
  for (const std::string& text :
       {std::string(), std::string(":"), std::string("3"), std::string("3:57"),
        std::string("3:57:abc"), std::string("x:57:"), std::string("3::"), "3:-57" + hash,
        "4294967299:57" + hash}) {
    EXPECT_EQ(FieldAtFault([&] { (void)ReadHead(text); }), history_input::kHead) << text;
  }
}

}  // namespace
}  // namespace qorhost::test
