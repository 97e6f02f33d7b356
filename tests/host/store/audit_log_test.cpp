// The audit's chain of hashes, and changes that are undone row by row.
#include "host/store/audit_log.h"

#include <gmock/gmock.h>

#include "host/store/unit_of_work.h"
#include "tests/host/store/store_fixture.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Kind = ChainFault::Kind;

class AuditLogTest : public StoreFixture {
 protected:
  void SetUp() override {
    StoreFixture::SetUp();
    Run("INSERT INTO Units (UnitKey, UnitName) VALUES (2, 'Gardens')");
  }

  [[nodiscard]] SqlSession& Sql() { return connection_->session(); }
  [[nodiscard]] AuditLog& Audit() { return Sql().audit(); }

  /// Runs a statement as one unit of work; returns the number of its entry.
  std::int64_t Work(std::vector<std::int32_t> units, const std::string& sql) {
    WorkGuard guard(Sql().work(), {std::move(units), "work", {}});
    (void)Sql().Change(sql, std::nullopt);
    EXPECT_TRUE(guard.Commit());
    return Number("SELECT max(RID) FROM AuditEntries");
  }
  std::int64_t AddDoor(std::int32_t unit, const std::string& name) {
    return Work({unit}, "INSERT INTO DOORS (UNITKEY, DOORNAME) VALUES (" + std::to_string(unit) +
                            ", '" + name + "')");
  }

  /// Undoes an entry, the last change first, as a unit of work of its own. The row that is not as
  /// it was left, or 0.
  std::int64_t UndoEntry(std::int64_t entry) {
    std::vector<RowChange> changes = Audit().RowsOf(entry);
    WorkGuard guard(Sql().work(), {{kUnit}, "undo", {}});
    for (auto change = changes.rbegin(); change != changes.rend(); ++change) {
      if (const auto other = Audit().PutBack(*change)) {
        return *other;
      }
    }
    guard.Commit();
    return 0;
  }
};

TEST_F(AuditLogTest, AChainIsWholeAsItIsWritten) {
  AddDoor(1, "Gate");
  AddDoor(2, "Yard");
  Work({}, "INSERT INTO UNITTYPES (DESCRIPTION, TOTAL) VALUES ('Large', 'NTAw')");
  AddDoor(2, "Garage");
  Work({}, "INSERT INTO UNITTYPES (DESCRIPTION, TOTAL) VALUES ('Small', 'NTAw')");
  AddDoor(1, "Lobby");
  EXPECT_THAT(Audit().Check(), IsEmpty());
}

TEST_F(AuditLogTest, HeadsAreTheLastEntriesOfTheUnits) {
  const std::int64_t gate = AddDoor(1, "Gate");
  const std::int64_t yard = AddDoor(2, "Yard");
  const std::vector<ChainHead> heads = Audit().Heads();
  ASSERT_EQ(heads.size(), 2U);
  EXPECT_EQ(heads[0].entry, gate);
  EXPECT_EQ(heads[1].entry, yard);
  EXPECT_EQ(heads[0].hash.size(), 64U);
  AddDoor(1, "Lobby");
  EXPECT_NE(Audit().Heads()[0], heads[0]);
  EXPECT_EQ(Audit().Heads()[1], heads[1]);
}

TEST_F(AuditLogTest, EqualWorkAfterDifferentEntriesHasDifferentHashes) {
  AddDoor(1, "Gate");
  const std::string first = Audit().Heads()[0].hash;
  AddDoor(1, "Gate");
  EXPECT_NE(Audit().Heads()[0].hash, first);
}

struct Forgery {
  const char* what;
  const char* sql;
};

class ForgedAudit : public AuditLogTest, public testing::WithParamInterface<Forgery> {};

TEST_P(ForgedAudit, IsNoticedAtItsEntryAlone) {
  AddDoor(1, "Gate");
  AddDoor(1, "Yard");
  AddDoor(1, "Lobby");
  ASSERT_THAT(Audit().Check(), IsEmpty());
  Run(GetParam().sql);
  EXPECT_THAT(Audit().Check(), ElementsAre(ChainFault{Kind::kAltered, 2, 1}));
}

INSTANTIATE_TEST_SUITE_P(
    Columns, ForgedAudit,
    testing::Values(
        Forgery{"When", "UPDATE AuditEntries SET At='2020-01-01 00:00:00' WHERE RID=2"},
        Forgery{"Who", "UPDATE AuditEntries SET Who='nobody' WHERE RID=2"},
        Forgery{"FromWhere", "UPDATE AuditEntries SET Origin='elsewhere' WHERE RID=2"},
        Forgery{"What", "UPDATE AuditEntries SET What='wor' WHERE RID=2"},
        Forgery{"Rows", "UPDATE AuditEntries SET Rows=replace(Rows, 'Yard', 'yard') WHERE RID=2"},
        Forgery{"FurtherRows", "INSERT INTO AuditRows (Entry, Piece, Rows) VALUES (2, 1, 'x')"}),
    [](const auto& each) { return each.param.what; });

TEST_F(AuditLogTest, ARemovedEntryIsMissed) {
  AddDoor(1, "Gate");
  AddDoor(1, "Yard");
  AddDoor(1, "Lobby");
  Run("DELETE FROM AuditEntries WHERE RID=2");
  EXPECT_THAT(Audit().Check(), ElementsAre(ChainFault{Kind::kMissing, 2, 1}));
}

TEST_F(AuditLogTest, ARemovedLastEntryIsMissed) {
  AddDoor(1, "Gate");
  AddDoor(1, "Yard");
  Run("DELETE FROM AuditEntries WHERE RID=2");
  EXPECT_THAT(Audit().Check(), ElementsAre(ChainFault{Kind::kMissing, 2, 1}));
}

TEST_F(AuditLogTest, AnEntryOfTheStoreIsBoundToTheUnitsBeforeIt) {
  AddDoor(1, "Gate");
  AddDoor(2, "Yard");
  Work({}, "INSERT INTO UNITTYPES (DESCRIPTION, TOTAL) VALUES ('Large', 'NTAw')");
  AddDoor(1, "Lobby");
  // Made to fit by itself, with the hash of what it says now.
  Run("UPDATE AuditEntries SET Hash=replace(Hash, substr(Hash, 1, 1), 'x') WHERE RID=2");
  EXPECT_THAT(Audit().Check(),
              ElementsAre(ChainFault{Kind::kAltered, 2, 2}, ChainFault{Kind::kAltered, 3, {}}));
}

TEST_F(AuditLogTest, RowsThatCannotBeReadAreTold) {
  AddDoor(1, "Gate");
  Run("UPDATE AuditEntries SET Rows='{' WHERE RID=1");
  EXPECT_THAT(Audit().Check(), ElementsAre(ChainFault{Kind::kAltered, 1, 1}));
}

TEST_F(AuditLogTest, NewRowsAreTakenAwayAgain) {
  const std::int64_t entry = AddDoor(1, "Gate");
  EXPECT_EQ(UndoEntry(entry), 0);
  EXPECT_EQ(Number("SELECT count(*) FROM DOORS"), 0);
}

TEST_F(AuditLogTest, NewRowsThatAreNoMoreAsTheyWereStay) {
  const std::int64_t entry = AddDoor(1, "Gate");
  Run("UPDATE DOORS SET DOORNAME='gate'");
  EXPECT_EQ(UndoEntry(entry), 1);
  EXPECT_EQ(Text("SELECT DOORNAME FROM DOORS"), "gate");
}

TEST_F(AuditLogTest, ARunOfNewRowsGoesAsAWhole) {
  {
    WorkGuard guard(Sql().work(), {{kUnit}, "four doors", {}});
    for (int door = 1; door <= 4; ++door) {
      (void)Sql().AddRow("DOORS", std::vector<Field>{{"UNITKEY", kUnit}, {"DOORID", door}});
    }
    guard.Commit();
  }
  Run("DELETE FROM DOORS WHERE RID=3");
  EXPECT_EQ(UndoEntry(1), 3);
  EXPECT_EQ(Number("SELECT count(*) FROM DOORS"), 3);
  Run("INSERT INTO DOORS (RID, UNITKEY, DOORID) VALUES (3, 1, 3)");
  EXPECT_EQ(UndoEntry(1), 0);
  EXPECT_EQ(Number("SELECT count(*) FROM DOORS"), 0);
}

TEST_F(AuditLogTest, AChangedRowGetsItsFormerCellsAndALaterDate) {
  Run("INSERT INTO Tenants (RID, UnitKey, LastName, CREDENTIALID1, LASTMODIFIEDDATE) "
      "VALUES (5, 1, 'Cole', 7, '2026-01-31 14:05:09')");
  const std::int64_t entry =
      Work({1}, "UPDATE Tenants SET LastName='Berg', CREDENTIALID1=NULL WHERE RID=5");
  EXPECT_EQ(UndoEntry(entry), 0);
  EXPECT_EQ(Text("SELECT LastName || CREDENTIALID1 || LASTMODIFIEDDATE FROM Tenants"),
            "Cole72026-01-31 14:05:10");
}

TEST_F(AuditLogTest, AChangedRowThatWasChangedAgainStays) {
  Run("INSERT INTO Tenants (RID, UnitKey, LastName) VALUES (5, 1, 'Cole')");
  const std::int64_t entry = Work({1}, "UPDATE Tenants SET LastName='Berg' WHERE RID=5");
  Work({1}, "UPDATE Tenants SET LastName='BERG' WHERE RID=5");
  EXPECT_EQ(UndoEntry(entry), 5);
  EXPECT_EQ(Text("SELECT LastName FROM Tenants"), "BERG");
}

TEST_F(AuditLogTest, ADeletedRowComesBackWhole) {
  Run("INSERT INTO Tenants (RID, UnitKey, LastName, ACTIVETENANT, ACTIVESTARTTIME, "
      "LASTMODIFIEDDATE) VALUES (5, 1, 'O''Brien', -1, '2026-01-01 00:00:00', "
      "'2026-02-01 00:00:00')");
  const std::int64_t entry = Work({1}, "DELETE FROM Tenants WHERE RID=5");
  EXPECT_EQ(UndoEntry(entry), 0);
  EXPECT_EQ(Text("SELECT RID || LastName || ACTIVETENANT || ACTIVESTARTTIME || TenantID || "
                 "LASTMODIFIEDDATE FROM Tenants"),
            "5O'Brien-12026-01-01 00:00:0052026-02-01 00:00:01");
}

TEST_F(AuditLogTest, ADeletedRowDoesNotComeBackOverAnother) {
  Run("INSERT INTO DOORS (RID, UNITKEY, DOORNAME) VALUES (5, 1, 'Gate')");
  const std::int64_t entry = Work({1}, "DELETE FROM DOORS WHERE RID=5");
  Run("INSERT INTO DOORS (RID, UNITKEY, DOORNAME) VALUES (5, 1, 'Yard')");
  EXPECT_EQ(UndoEntry(entry), 5);
}

TEST_F(AuditLogTest, AnUndoIsUndoneLikeAnythingElse) {
  Run("INSERT INTO Tenants (RID, UnitKey, LastName) VALUES (5, 1, 'Cole')");
  const std::int64_t entry = Work({1}, "UPDATE Tenants SET LastName='Berg' WHERE RID=5");
  ASSERT_EQ(UndoEntry(entry), 0);
  EXPECT_EQ(UndoEntry(entry + 1), 0);
  EXPECT_EQ(Text("SELECT LastName FROM Tenants"), "Berg");
}

}  // namespace
}  // namespace qorhost::test
