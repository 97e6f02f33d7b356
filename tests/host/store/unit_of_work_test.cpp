// What an operator does is stored as a whole or not at all, through the contract.
#include "host/store/unit_of_work.h"

#include <gmock/gmock.h>

#include <chrono>
#include <map>
#include <memory>

#include "frame/convert.h"
#include "host/store/store_error.h"
#include "tests/host/store/store_fixture.h"

namespace qorhost::test {
namespace {

using qorcred::Value;
using testing::HasSubstr;

/// Two seats at one store.
class UnitOfWorkTest : public testing::Test {
 protected:
  struct Seat {
    Seat(const StorePlace& place, OpenMode mode)
        : connection(std::make_shared<StoreConnection>(place.Open(mode), Noon)) {
      connection->store().SetPatience({std::chrono::milliseconds(0), {}});
      work().SignAs({"anna", "desk 1", Noon});
    }
    SqlSession& sql() const { return connection->session(); }
    UnitOfWork& work() const { return sql().work(); }
    std::int64_t Doors() const {
      return qorcred::ToLong(sql().Scalar("SELECT COUNT(*) FROM DOORS"));
    }
    std::int32_t AddDoor(const std::string& name = "Gate") const {
      return sql().AddRow("DOORS", std::vector<Field>{{"UNITKEY", kUnit}, {"DOORNAME", name}});
    }
    void Change(const std::string& text) const { (void)sql().Change(text, std::nullopt); }

    std::shared_ptr<StoreConnection> connection;
  };

  static qorcred::Date Noon() { return qorcred::FromCivil({2026, 1, 31, 12, 0, 0}); }

  void SetUp() override {
    RunRaw(one_.connection->store(),
           "INSERT INTO Units (UnitKey, UnitName) VALUES (1, 'Court'), (2, 'Gardens')");
  }

  /// The entries of the unit and their rows, of the first to the last.
  std::vector<std::string> Audit(std::int32_t unitKey = kUnit) {
    std::vector<std::string> lines;
    for (const WorkEntry& entry : one_.sql().audit().After(0, unitKey)) {
      lines.push_back(entry.at + " " + entry.who + " " + entry.origin + ": " + entry.what);
      for (const RowChange& change : one_.sql().audit().RowsOf(entry.entry)) {
        lines.push_back(TextOfChange(change));
      }
    }
    return lines;
  }

  const WorkOrder order_{{kUnit}, "add a door", {}};
  std::unique_ptr<StorePlace> place_ = NewPlace();
  Seat one_{*place_, OpenMode::kCreate};
  Seat other_{*place_, OpenMode::kReadWrite};
};

TEST_F(UnitOfWorkTest, IsStoredWithItsAuditEntryAndRaisesTheVersion) {
  const UnitVersion before = one_.work().VersionOf(kUnit);
  const UnitVersion elsewhere = one_.work().VersionOf(2);
  one_.work().Begin(order_);
  one_.AddDoor();
  EXPECT_EQ(other_.Doors(), 0);
  EXPECT_TRUE(one_.work().Commit());
  EXPECT_EQ(other_.Doors(), 1);
  EXPECT_NE(other_.work().VersionOf(kUnit), before);
  EXPECT_EQ(other_.work().VersionOf(2), elsewhere);
  EXPECT_THAT(
      Audit(),
      testing::ElementsAre(
          "2026-01-31 12:00:00 anna " + OriginStored("desk 1") + ": add a door",
          R"({"table":"DOORS","inserted":[1,1],"row":{"RID":1,"UNITKEY":1,"DOORID":null,"DOORNAME":"Gate"}})"));
  EXPECT_TRUE(Audit(2).empty());
}

TEST_F(UnitOfWorkTest, OneThatIsOnlyTriedKeepsItsRowsAndStoresNothing) {
  const UnitVersion before = one_.work().VersionOf(kUnit);
  one_.work().OnlyTry();
  for (const char* name : {"Gate", "Yard"}) {
    one_.work().Begin(order_);
    one_.AddDoor(name);
    EXPECT_TRUE(one_.work().Commit());
    EXPECT_FALSE(one_.work().open());
  }
  EXPECT_EQ(other_.Doors(), 0);
  EXPECT_EQ(one_.Doors(), 0);
  EXPECT_EQ(one_.work().VersionOf(kUnit), before);
  EXPECT_THAT(Audit(), testing::IsEmpty());
  ASSERT_EQ(one_.work().tried().size(), 2U);
  EXPECT_EQ(one_.work().tried()[1].table, "DOORS");

  one_.work().Begin(order_);
  EXPECT_THROW(one_.Change("UPDATE Nowhere SET A=1"), std::exception);
  one_.work().Undo();
  EXPECT_EQ(one_.work().tried().size(), 2U);
}

TEST_F(UnitOfWorkTest, OneThatWritesNothingLeavesNoTrace) {
  const UnitVersion before = one_.work().VersionOf(kUnit);
  one_.work().Begin(order_);
  EXPECT_FALSE(one_.work().Commit());
  one_.work().Begin(order_);
  one_.work().Lock();
  one_.Change("DELETE FROM DOORS WHERE UNITKEY=1");
  EXPECT_FALSE(one_.work().Commit());
  EXPECT_EQ(one_.work().VersionOf(kUnit), before);
  EXPECT_TRUE(Audit().empty());
}

TEST_F(UnitOfWorkTest, TakesTheRightToWriteWithTheFirstWrite) {
  one_.work().Begin(order_);
  (void)one_.Doors();
  EXPECT_FALSE(one_.work().locked());
  other_.AddDoor();
  one_.AddDoor();
  EXPECT_TRUE(one_.work().locked());
  EXPECT_THROW(other_.AddDoor(), StoreError);
  one_.work().Undo();
  other_.AddDoor();
  EXPECT_EQ(one_.Doors(), 2);
}

TEST_F(UnitOfWorkTest, ABeginOfTheConnectionIsAWrite) {
  one_.work().Begin(order_);
  qorcred::Call(*one_.connection, "BeginTrans");
  EXPECT_TRUE(one_.work().locked());
  one_.AddDoor();
  qorcred::Call(*one_.connection, "CommitTrans");
  EXPECT_EQ(other_.Doors(), 0);
  one_.work().Commit();
  EXPECT_EQ(other_.Doors(), 1);
}

TEST_F(UnitOfWorkTest, WhatTheConnectionRollsBackIsNotInTheAudit) {
  one_.work().Begin(order_);
  one_.AddDoor("stays");
  qorcred::Call(*one_.connection, "BeginTrans");
  one_.AddDoor("goes");
  one_.Change("UPDATE DOORS SET DOORNAME='changed' WHERE RID=1");
  qorcred::Call(*one_.connection, "RollbackTrans");
  one_.AddDoor("stays, too");
  one_.work().Commit();
  // Whether the second row goes on the first one's run is the engine's: the identity of a row that
  // was undone may be given out again or not.
  std::int64_t added = 0;
  for (const RowChange& change : one_.sql().audit().RowsOf(1)) {
    EXPECT_EQ(static_cast<int>(change.kind), static_cast<int>(RowChangeKind::kInserted));
    added += change.lastRid - change.rid + 1;
  }
  EXPECT_EQ(added, 2);
  EXPECT_THAT(Audit(), testing::Each(testing::Not(HasSubstr("goes"))));
}

TEST_F(UnitOfWorkTest, IsStaleWhereTheUnitHasChangedSinceItWasShown) {
  const UnitVersion shown = one_.work().VersionOf(kUnit);
  other_.work().Begin({{kUnit}, "paint the gate", {}});
  other_.AddDoor();
  other_.work().Commit();

  one_.work().Begin({{kUnit}, "add a door", shown});
  EXPECT_THROW(one_.AddDoor(), StoreError);
  EXPECT_EQ(one_.work().voided(), VoidReason::kStale);
  other_.AddDoor();  // the right to write is free again
  EXPECT_THROW((void)one_.Doors(), StoreError);
  EXPECT_THROW(one_.work().Commit(), StoreError);
  EXPECT_EQ(one_.Doors(), 2);
  ASSERT_EQ(one_.sql().audit().After(shown.entry, kUnit).size(), 1U);
  EXPECT_EQ(one_.sql().audit().After(shown.entry, kUnit)[0].what, "paint the gate");
}

TEST_F(UnitOfWorkTest, AChangeOfAnotherUnitIsNone) {
  const UnitVersion shown = one_.work().VersionOf(kUnit);
  other_.work().Begin({{2}, "elsewhere", {}});
  other_.AddDoor();
  other_.work().Commit();
  one_.work().Begin({{kUnit}, "add a door", shown});
  one_.AddDoor();
  EXPECT_TRUE(one_.work().Commit());
}

TEST_F(UnitOfWorkTest, AChangeOfTheWholeStoreIsOneOfEachUnit) {
  const UnitVersion shown = one_.work().VersionOf(2);
  other_.work().Begin({{}, "everything", {}});
  other_.AddDoor();
  other_.work().Commit();
  EXPECT_NE(one_.work().VersionOf(2), shown);
  EXPECT_EQ(one_.sql().audit().After(shown.entry, 2).size(), 1U);
}

TEST_F(UnitOfWorkTest, EachUnitKeepsItsVersionWhileOthersAreChanged) {
  std::map<std::int32_t, UnitVersion> shown;
  std::int64_t entry = 0;
  // The same unit twice, then another one, the whole store, and back.
  for (const std::vector<std::int32_t>& units :
       std::vector<std::vector<std::int32_t>>{{1}, {1}, {2}, {1}, {}, {2}, {2}, {1}}) {
    one_.work().Begin({units, "add a door", {}});
    one_.AddDoor();
    EXPECT_TRUE(one_.work().Commit());
    ++entry;
    for (const std::int32_t unit : {1, 2}) {
      const UnitVersion now = other_.work().VersionOf(unit);
      const bool isChanged = units.empty() || units.front() == unit;
      EXPECT_EQ(now != shown[unit], isChanged) << "unit " << unit << ", entry " << entry;
      if (isChanged) {
        EXPECT_EQ(now.entry, entry);
        EXPECT_EQ(one_.work().Committed(unit), now);
      }
      shown[unit] = now;
    }
  }
  const std::vector<ChainHead> heads = one_.sql().audit().Heads();
  ASSERT_EQ(heads.size(), 2U);
  EXPECT_EQ(heads[0].entry, 8);
  EXPECT_EQ(heads[1].entry, 7);
  EXPECT_THAT(one_.sql().audit().Check(), testing::IsEmpty());
}

TEST_F(UnitOfWorkTest, AVersionNeverComesTwiceWhenAUnitIsMadeAgain) {
  one_.work().Begin({{2}, "add", {}});
  one_.AddDoor();
  one_.work().Commit();
  const UnitVersion shown = one_.work().VersionOf(2);
  one_.work().Begin({{}, "delete the unit", {}});
  one_.Change("DELETE FROM Units WHERE UnitKey=2");
  one_.work().Commit();
  const UnitVersion gone = one_.work().VersionOf(2);
  EXPECT_NE(gone, shown);
  one_.work().Begin({{}, "make it again", {}});
  one_.Change("INSERT INTO Units (UnitKey, UnitName) VALUES (2, 'Gardens')");
  one_.work().Commit();
  EXPECT_NE(one_.work().VersionOf(2), gone);
  EXPECT_NE(one_.work().VersionOf(2), shown);
}

TEST_F(UnitOfWorkTest, AfterAFailedWriteEveryStatementFailsAndNothingStays) {
  one_.work().Begin(order_);
  one_.AddDoor();
  EXPECT_THROW(one_.Change("UPDATE NoTable SET A=1"), std::exception);
  EXPECT_EQ(one_.work().voided(), VoidReason::kFailed);
  EXPECT_THROW((void)one_.Doors(), StoreError);
  EXPECT_THROW(one_.AddDoor(), StoreError);
  EXPECT_THROW(one_.work().Commit(), StoreError);
  EXPECT_FALSE(one_.work().open());
  EXPECT_EQ(one_.Doors(), 0);
}

TEST_F(UnitOfWorkTest, AFailedReadDoesNotVoidIt) {
  one_.work().Begin(order_);
  EXPECT_THROW((void)one_.sql().Select("SELECT * FROM NoTable"), std::exception);
  one_.AddDoor();
  EXPECT_TRUE(one_.work().Commit());
}

TEST_F(UnitOfWorkTest, AnUndoneSavepointForgivesWhatFailedInIt) {
  one_.work().Begin(order_);
  one_.work().Lock();
  {
    Undoable line(one_.sql().savepoint());
    one_.AddDoor("goes");
    EXPECT_THROW(one_.Change("UPDATE NoTable SET A=1"), std::exception);
  }
  {
    Undoable line(one_.sql().savepoint());
    one_.AddDoor("stays");
    line.Keep();
  }
  EXPECT_TRUE(one_.work().Commit());
  EXPECT_EQ(one_.Doors(), 1);
  EXPECT_THAT(Audit(), testing::ElementsAre(testing::_, HasSubstr("stays")));
}

TEST_F(UnitOfWorkTest, ARangeOfNewRowsIsOneLineOfTheAudit) {
  one_.work().Begin(order_);
  for (int door = 0; door < 100; ++door) {
    one_.AddDoor();
    one_.sql().steps().Queue(kUnit, step::kProgramTenant, door);
  }
  one_.work().Commit();
  EXPECT_THAT(Audit(), testing::ElementsAre(testing::_, HasSubstr(R"("inserted":[1,100])")));
}

TEST_F(UnitOfWorkTest, ChangedAndDeletedRowsAreInTheAuditAsTheyWere) {
  one_.AddDoor("Gate");
  one_.AddDoor("Yard");
  one_.work().Begin(order_);
  one_.Change("UPDATE DOORS SET DOORNAME='Arch', UNITKEY=1 WHERE RID=1");
  one_.Change("DELETE FROM DOORS");
  one_.work().Commit();
  EXPECT_THAT(
      Audit(),
      testing::ElementsAre(
          testing::_,
          R"({"table":"DOORS","updated":[1,1],"before":{"DOORNAME":"Gate"},"after":{"DOORNAME":"Arch"}})",
          R"({"table":"DOORS","deleted":[1,1],"row":{"RID":1,"UNITKEY":1,"DOORID":null,"DOORNAME":"Arch"}})",
          R"({"table":"DOORS","deleted":[2,2],"row":{"RID":2,"UNITKEY":1,"DOORID":null,"DOORNAME":"Yard"}})"));
}

TEST_F(UnitOfWorkTest, EntriesLongerThanOnePieceAreReadAsOne) {
  const std::string longName(300'000, 'x');
  for (int door = 0; door < 12; ++door) one_.AddDoor(longName);
  one_.work().Begin(order_);
  one_.Change("DELETE FROM DOORS");
  one_.work().Commit();
  const std::vector<WorkEntry> entries = one_.sql().audit().After(0, kUnit);
  ASSERT_EQ(entries.size(), 1U);
  const std::vector<RowChange> rows = one_.sql().audit().RowsOf(entries[0].entry);
  ASSERT_EQ(rows.size(), 12U);
  EXPECT_EQ(rows[11].before.back().value, Value(longName));
}

TEST_F(UnitOfWorkTest, EntriesOfAUnitFormOneChain) {
  for (int door = 0; door < 3; ++door) {
    one_.work().Begin({{door == 1 ? 2 : kUnit}, "add", {}});
    one_.AddDoor();
    one_.work().Commit();
  }
  for (const auto& [entry, previous] :
       std::map<std::string, std::string>{{"1", "0"}, {"2", "0"}, {"3", "1"}}) {
    EXPECT_EQ(TextOfRaw(one_.connection->store(),
                        "SELECT coalesce(Previous, 0) FROM AuditEntries WHERE RID=" + entry),
              previous);
  }
}

TEST_F(UnitOfWorkTest, WaitsForTheOtherAsLongAsItHasPatience) {
  int asked = 0;
  one_.connection->store().SetPatience({std::chrono::hours(1), [&](std::chrono::milliseconds) {
                                          if (++asked == 3) other_.work().Undo();
                                          return asked < 5;
                                        }});
  other_.work().Begin(order_);
  other_.work().Lock();
  one_.work().Begin(order_);
  one_.AddDoor();
  EXPECT_TRUE(one_.work().Commit());
  EXPECT_EQ(asked, 3);
}

TEST_F(UnitOfWorkTest, OneWhoGivesUpWaitingHasStoredNothing) {
  one_.connection->store().SetPatience(
      {std::chrono::hours(1), [](std::chrono::milliseconds) { return false; }});
  other_.work().Begin(order_);
  other_.work().Lock();
  one_.work().Begin(order_);
  try {
    one_.AddDoor();
    ADD_FAILURE() << "wrote beside another writer";
  } catch (const StoreError& failure) {
    EXPECT_EQ(failure.fault(), StoreFault::kBusy);
  }
  EXPECT_EQ(one_.work().voided(), VoidReason::kFailed);
  other_.work().Undo();
  EXPECT_THROW(one_.work().Commit(), StoreError);
  EXPECT_EQ(one_.Doors(), 0);
}

TEST_F(UnitOfWorkTest, AskingForALinkCodeDoesNotTakeTheRightToWrite) {
  one_.work().Begin(order_);
  EXPECT_EQ(one_.sql().tenants().NextLinkCode(kUnit), 1);
  EXPECT_FALSE(one_.work().locked());
  one_.sql().tenants().TakeLinkCodes(kUnit, 1);
  EXPECT_TRUE(one_.work().Commit());
  EXPECT_EQ(one_.sql().tenants().NextLinkCode(kUnit), 2);
}

TEST_F(UnitOfWorkTest, TwoInsideEachOtherAreRefused) {
  one_.work().Begin(order_);
  EXPECT_THROW(one_.work().Begin(order_), StoreError);
  one_.work().Undo();
  EXPECT_THROW(one_.work().Commit(), StoreError);
  qorcred::Call(*one_.connection, "BeginTrans");
  EXPECT_THROW(one_.work().Begin(order_), StoreError);
  qorcred::Call(*one_.connection, "RollbackTrans");
}

TEST_F(UnitOfWorkTest, ARowNeverCarriesTheSameDateTwice) {
  const auto date = [&] { return one_.sql().Scalar("SELECT LASTMODIFIEDDATE FROM DirectoryCode"); };
  one_.Change("INSERT INTO DirectoryCode (UNITKEY, LASTMODIFIEDDATE) VALUES (1, '_LMDATE_')");
  EXPECT_EQ(date(), Value(Noon()));
  one_.Change("UPDATE DirectoryCode SET LASTMODIFIEDDATE='_LMDATE_'");
  EXPECT_EQ(date(), Value(qorcred::FromCivil({2026, 1, 31, 12, 0, 1})));
  one_.Change("UPDATE DirectoryCode SET LASTMODIFIEDDATE='_LMDATE_'");
  EXPECT_EQ(date(), Value(qorcred::FromCivil({2026, 1, 31, 12, 0, 2})));
  one_.Change("UPDATE DirectoryCode SET LASTMODIFIEDDATE='12/31/2025'");
  one_.Change("UPDATE DirectoryCode SET LASTMODIFIEDDATE='_LMDATE_'");
  EXPECT_EQ(date(), Value(Noon()));
  one_.Change("UPDATE DirectoryCode SET LASTMODIFIEDDATE=NULL");
  one_.Change("UPDATE DirectoryCode SET LASTMODIFIEDDATE='_LMDATE_'");
  EXPECT_EQ(date(), Value(Noon()));
}

}  // namespace
}  // namespace qorhost::test
