#include "host/components/database_manager.h"

#include <gmock/gmock.h>

#include "frame/convert.h"
#include "tests/host/components/component_fixture.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

using qorcred::Call;
using qorcred::ErrorNumber;
using qorcred::InvokeKind;
using qorcred::Missing;
using qorcred::Null;
using qorcred::Value;
using testing::HasSubstr;

class DatabaseManagerTest : public ComponentFixture {
 protected:
  std::int32_t InsertCredential(int number) {
    return Insert(
        "INSERT INTO CREDENTIALBANK(UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,"
        "SequenceNumber,ButtonNumber,LASTMODIFIEDDATE)VALUES(1,_ROWID_,0," +
        std::to_string(number) + ",12,0,0,1,'_LMDATE_')");
  }
  std::int32_t Update(const std::string& sql, const Value& lastModified, const Value& rid,
                      std::string_view table = "CREDENTIALBANK") {
    return qorcred::AnsweredNumber(
        manager().ExecuteUpdate(Connection(), sql, table, error_, lastModified, rid));
  }
};

TEST_F(DatabaseManagerTest, NamesItsPlaceholders) {
  EXPECT_EQ(manager().RowIdText(), "_ROWID_");
  EXPECT_EQ(manager().LastModifiedText(), "_LMDATE_");
  EXPECT_EQ(Get(manager().object(), "PBGETROWIDSTRINGCONSTANT"), Value("_ROWID_"));
}

TEST_F(DatabaseManagerTest, AnInsertAnswersWithTheNewIdentity) {
  const std::int32_t first = InsertCredential(100);
  const std::int32_t second = InsertCredential(101);
  EXPECT_GT(first, 0);
  EXPECT_EQ(second, first + 1);
  EXPECT_EQ(Scalar("SELECT PINNo FROM CredentialBank WHERE RID=" + std::to_string(second)),
            Value(101));
}

TEST_F(DatabaseManagerTest, AnInsertThatAddsNoRowHasNoIdentity) {
  InsertCredential(100);
  Run("CREATE TRIGGER Ignore BEFORE INSERT ON CredentialBank BEGIN SELECT RAISE(IGNORE); END");
  EXPECT_EQ(InsertCredential(101), 0);
}

TEST_F(DatabaseManagerTest, TheLastModifiedTextBecomesTheTimeInAnInsert) {
  InsertCredential(100);
  EXPECT_EQ(Scalar("SELECT LASTMODIFIEDDATE FROM CredentialBank"), Value(now_));
  EXPECT_EQ(Text("SELECT LASTMODIFIEDDATE FROM CredentialBank"), "2026-01-31 14:05:09");
}

TEST_F(DatabaseManagerTest, TheLastModifiedTextBecomesTheTimeInAnUpdate) {
  const std::int32_t rid = InsertCredential(100);
  now_ = qorcred::FromCivil({2026, 2, 1, 8, 0, 0});
  EXPECT_EQ(Update("UPDATE CREDENTIALBANK SET DOORCODE = 3,LASTMODIFIEDDATE='_LMDATE_' WHERE "
                   "UnitKey=1 AND RID=1",
                   Missing{}, rid),
            1);
  EXPECT_EQ(Scalar("SELECT LASTMODIFIEDDATE FROM CredentialBank"), Value(now_));
}

TEST_F(DatabaseManagerTest, TheTimeStampFollowsTheClockFromSecondToSecond) {
  InsertCredential(1);
  now_ = qorcred::FromCivil({2026, 1, 31, 14, 5, 10});
  InsertCredential(2);
  EXPECT_EQ(Text("SELECT group_concat(LASTMODIFIEDDATE) FROM CredentialBank"),
            "2026-01-31 14:05:09,2026-01-31 14:05:10");
}

TEST_F(DatabaseManagerTest, BooleansAndDatesComeBackAsTheyWereWritten) {
  Insert(
      "INSERT INTO TENANTS(UNITKEY,LASTNAME,ACTIVESTARTTIME,ACTIVEENDTIME,RID,ACTIVETENANT)VALUES("
      "1,'No Name0100','1/31/2026 2:05:09 PM','12/31/2026',_ROWID_,True)");
  EXPECT_EQ(Scalar("SELECT ACTIVETENANT FROM Tenants"), Value(true));
  EXPECT_EQ(Scalar("SELECT ACTIVESTARTTIME FROM Tenants"), Value(now_));
  EXPECT_EQ(qorcred::ToText(Scalar("SELECT ACTIVEENDTIME FROM Tenants")), "12/31/2026");
  EXPECT_EQ(Text("SELECT typeof(ACTIVETENANT) || ACTIVETENANT FROM Tenants"), "integer-1");
  EXPECT_EQ(Text("SELECT ACTIVEENDTIME FROM Tenants"), "2026-12-31 00:00:00");
}

TEST_F(DatabaseManagerTest, TextsCompareWithoutRegardToCaseBeyondAscii) {
  Insert("INSERT INTO TENANTS(UNITKEY,LASTNAME,RID)VALUES(1,'ÖZTÜRK',_ROWID_)");
  for (const char* condition : {"= 'öztürk'", "LIKE 'özt%'", "IN ('Öztürk','x')"}) {
    EXPECT_EQ(Scalar(std::string("SELECT COUNT(*) FROM Tenants WHERE LastName ") + condition),
              Value(1))
        << condition;
  }
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM Tenants WHERE LastName <> 'öztürk'"), Value(0));
}

TEST_F(DatabaseManagerTest, AScalarIsTheFirstCellAndEmptyWithoutRows) {
  InsertCredential(7);
  InsertCredential(9);
  EXPECT_EQ(Scalar("SELECT PINNo, RID FROM CredentialBank ORDER BY PINNo DESC"), Value(9));
  EXPECT_EQ(Scalar("SELECT PINNo FROM CredentialBank WHERE PINNo=8"), Value());
  EXPECT_EQ(Scalar("SELECT DOORCODE FROM CredentialBank WHERE PINNo=7"), Value(Null{}));
}

TEST_F(DatabaseManagerTest, FlagAndTextAreClearedByTheNextCall) {
  EXPECT_TRUE(
      manager().ExecuteSelect(Connection(), "SELECT nonsense FROM Tenants", error_).HasNoRows());
  EXPECT_TRUE(error_.flag);
  EXPECT_NE(error_.text, "");
  EXPECT_TRUE(manager().ExecuteSelect(Connection(), "SELECT RID FROM Tenants", error_).HasNoRows());
  EXPECT_FALSE(error_.flag);
  EXPECT_EQ(error_.text, "");
}

TEST_F(DatabaseManagerTest, ADeleteAnswersWithTheRows) {
  const std::int32_t rid = InsertCredential(7);
  EXPECT_EQ(
      Call(manager().object(), "ExecuteDelete", Connection(), "credentialbank", rid, false, ""),
      Value(1));
  EXPECT_EQ(
      Call(manager().object(), "ExecuteDelete", Connection(), "CREDENTIALBANK", rid, false, ""),
      Value(0));
}

TEST_F(DatabaseManagerTest, ADeleteFromATableOutsideTheSchemaIsReported) {
  for (const char* table : {"sqlite_schema", "Nowhere", "", "Tenants; DROP TABLE Tenants"}) {
    manager().ExecuteDelete(Connection(), table, 1, error_);
    EXPECT_TRUE(error_.flag) << table;
    EXPECT_THAT(error_.text, HasSubstr("There is no table"));
  }
}

TEST_F(DatabaseManagerTest, ADeleteOfWhatIsNoIdentityIsReported) {
  std::array<Value, 5> arguments{Value(Connection()), Value("CREDENTIALBANK"), Value("twelve"),
                                 Value(false), Value("")};
  EXPECT_EQ(manager().object().Invoke("ExecuteDelete", InvokeKind::kCall, arguments), Value(0));
  EXPECT_EQ(arguments[3], Value(true));
}

TEST_F(DatabaseManagerTest, AQueryDeleteAnswersWithTheRows) {
  for (int number = 1; number <= 5; ++number) {
    InsertCredential(number);
  }
  EXPECT_EQ(
      manager().ExecuteQueryDelete(
          Connection(), "Delete From CredentialBank Where unitkey=1 And RID in (1,3,5)", error_),
      3);
  EXPECT_EQ(
      manager().ExecuteQueryDelete(
          Connection(), "Delete From CredentialBank Where unitkey=1 And RID in (1,3,5)", error_),
      0);
  EXPECT_FALSE(error_.flag);
}

TEST_F(DatabaseManagerTest, AnUpdateMayNameAnotherTableThanItChanges) {
  Insert("INSERT INTO TENANTS(UNITKEY,DIRECTORYCODE,RID)VALUES(1,5,_ROWID_)");
  const Value changed = manager().ExecuteUpdate(
      Connection(),
      "UPDATE TENANTS SET DIRECTORYCODE=NULL,LASTMODIFIEDDATE='_LMDATE_' WHERE UNITKEY=1 AND "
      "DIRECTORYCODE=5",
      "DIRECTORYCODE", error_);
  EXPECT_EQ(qorcred::AnsweredNumber(changed), 1);
}

constexpr const char* kRenumber =
    "UPDATE CREDENTIALBANK SET PINNo=8,LASTMODIFIEDDATE='_LMDATE_' WHERE UnitKey=1 AND RID=1";

TEST_F(DatabaseManagerTest, AnUpdateOfTheVersionThatWasReadGoesThrough) {
  struct Case {
    const char* name;
    Value lastModified;
  };
  for (const Case& one :
       {Case{"as shown", "1/31/2026 2:05:09 PM"}, Case{"canonical", "2026-01-31 14:05:09"},
        Case{"a date", now_}, Case{"with blanks", " 1/31/2026 2:05:09 PM "}}) {
    Run("DELETE FROM CredentialBank; DELETE FROM sqlite_sequence");
    const std::int32_t rid = InsertCredential(7);
    EXPECT_EQ(Update(kRenumber, one.lastModified, rid), 1) << one.name << ": " << error_.text;
  }
}

TEST_F(DatabaseManagerTest, AnUpdateOfARowThatSomeoneChangedMeanwhileChangesNothing) {
  const std::int32_t rid = InsertCredential(7);
  const Value read = Scalar("SELECT LASTMODIFIEDDATE FROM CredentialBank");
  now_ = qorcred::FromCivil({2026, 1, 31, 14, 5, 10});
  EXPECT_EQ(Update("UPDATE CREDENTIALBANK SET DOORCODE=1,LASTMODIFIEDDATE='_LMDATE_' WHERE RID=1",
                   Missing{}, rid),
            1);
  EXPECT_EQ(Update(kRenumber, qorcred::ToText(read), rid), 0);
  EXPECT_FALSE(error_.flag);
  EXPECT_EQ(Scalar("SELECT PINNo FROM CredentialBank"), Value(7));
}

TEST_F(DatabaseManagerTest, AnUpdateOfAMeanwhileDeletedRowChangesNothing) {
  InsertCredential(7);
  EXPECT_EQ(Update(kRenumber, "1/31/2026 2:05:09 PM", 99), 0);
  EXPECT_FALSE(error_.flag);
}

TEST_F(DatabaseManagerTest, ARowWithoutATimeStampIsAnotherVersion) {
  Run("INSERT INTO CredentialBank (UnitKey, PINNo) VALUES (1, 7)");
  EXPECT_EQ(Update(kRenumber, "1/31/2026 2:05:09 PM", 1), 0);
}

TEST_F(DatabaseManagerTest, WithoutBothVersionAndIdentityAnUpdateIsUnconditional) {
  struct Case {
    const char* name;
    Value lastModified;
    Value rid;
  };
  for (const Case& one : {Case{"omitted version", Missing{}, 1}, Case{"empty version", "", 1},
                          Case{"null version", Null{}, 1}, Case{"no version", Value(), 1},
                          Case{"omitted identity", "1/1/2000", Missing{}},
                          Case{"empty identity", "1/1/2000", Value()}}) {
    Run("DELETE FROM CredentialBank; DELETE FROM sqlite_sequence");
    InsertCredential(7);
    EXPECT_EQ(Update(kRenumber, one.lastModified, one.rid), 1) << one.name;
  }
}

TEST_F(DatabaseManagerTest, TheVersionIsThatOfTheTableNamedWithTheIdentity) {
  Run("INSERT INTO DirectoryCode (UNITKEY, LASTMODIFIEDDATE) VALUES (1, '2026-01-31 14:05:09'); "
      "INSERT INTO Tenants (UnitKey, DIRECTORYCODE, LASTMODIFIEDDATE) VALUES "
      "(1, 1, '2020-01-01 00:00:00')");
  EXPECT_EQ(Update("UPDATE TENANTS SET DIRECTORYCODE=NULL WHERE DIRECTORYCODE=1",
                   "1/31/2026 2:05:09 PM", 1, "DIRECTORYCODE"),
            1);
}

TEST_F(DatabaseManagerTest, AVersionedUpdateWorksInsideTheCallersTransaction) {
  const std::int32_t rid = InsertCredential(7);
  Call(*connection_, "BeginTrans");
  EXPECT_EQ(Update(kRenumber, "1/31/2026 2:05:09 PM", rid), 1);
  EXPECT_EQ(connection_->OpenTransactions(), 1);
  Call(*connection_, "RollbackTrans");
  EXPECT_EQ(Scalar("SELECT PINNo FROM CredentialBank"), Value(7));
}

TEST_F(DatabaseManagerTest, AVersionedUpdateThatFailsLeavesNoTransaction) {
  const std::int32_t rid = InsertCredential(7);
  EXPECT_EQ(Update("UPDATE CREDENTIALBANK SET PINNo=12ab WHERE RID=1", "1/31/2026 2:05:09 PM", rid),
            0);
  EXPECT_TRUE(error_.flag);
  EXPECT_EQ(connection_->OpenTransactions(), 0);
  EXPECT_FALSE(connection_->session().inTransaction());
}

TEST_F(DatabaseManagerTest, TransactionsCoverWhatTheManagerWrites) {
  Call(*connection_, "BeginTrans");
  InsertCredential(1);
  InsertCredential(2);
  Call(*connection_, "RollbackTrans");
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM CredentialBank"), Value(0));
}

TEST_F(DatabaseManagerTest, NothingIsKeptAfterTheEngineGaveTheTransactionUp) {
  Call(*connection_, "BeginTrans");
  InsertCredential(1);
  Run("ROLLBACK");
  manager().ExecuteInsert(Connection(), "INSERT INTO CREDENTIALBANK (UnitKey) VALUES (1)", "",
                          "CREDENTIALBANK", error_);
  EXPECT_TRUE(error_.flag);
  EXPECT_THAT(error_.text, HasSubstr("gave up"));
  Call(*connection_, "RollbackTrans");
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM CredentialBank"), Value(0));
}

// The engine gives the transaction up when the disk is full; here the file may not grow.
TEST_F(DatabaseManagerTest, AFullDiskIsReportedAndNothingOfTheTransactionIsKept) {
  Call(*connection_, "BeginTrans");
  Run("PRAGMA max_page_count=1");  // as many pages as it has
  bool failed = false;
  for (int number = 1; number <= 5000 && !failed; ++number) {
    manager().ExecuteInsert(
        Connection(),
        "INSERT INTO CREDENTIALBANK (UnitKey,PINNo) VALUES (1," + std::to_string(number) + ")", "",
        "CREDENTIALBANK", error_);
    failed = error_.flag;
  }
  EXPECT_TRUE(failed);
  EXPECT_THAT(error_.text, HasSubstr("make room"));
  Call(*connection_, "RollbackTrans");
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM CredentialBank"), Value(0));
}

TEST_F(DatabaseManagerTest, OnlyAnUnusableConnectionRaises) {
  struct Case {
    const char* name;
    Value connection;
    ErrorNumber number;
  };
  for (const Case& one :
       {Case{"no object", "building.db", ErrorNumber::kObjectRequired},
        Case{"nothing", qorcred::ObjectRef(), ErrorNumber::kObjectNotSet},
        Case{"another object", Create("qorDBI.clsDBManager"), ErrorNumber::kTypeMismatch}}) {
    EXPECT_EQ(FailureOf([&] {
                Call(manager().object(), "ExecuteSelect", one.connection, "SELECT 1", false, "");
              }).number(),
              one.number)
        << one.name;
  }
}

TEST_F(DatabaseManagerTest, AClosedConnectionRaises) {
  connection_->Close();
  EXPECT_THAT(FailureOf([&] { Scalar("SELECT RID FROM Tenants"); }).description(),
              HasSubstr("closed"));
}

TEST_F(DatabaseManagerTest, UnknownMembersAndWrongCountsHaveTheirNumbers) {
  EXPECT_EQ(FailureOf([&] { Call(manager().object(), "ExecuteNothing"); }).number(),
            ErrorNumber::kUnknownMember);
  EXPECT_EQ(FailureOf([&] { Call(manager().object(), ""); }).number(), ErrorNumber::kUnknownMember);
  EXPECT_EQ(FailureOf([&] { Call(manager().object(), "ExecuteSelect", Connection()); }).number(),
            ErrorNumber::kWrongArgumentCount);
  EXPECT_EQ(FailureOf([&] {
              Call(manager().object(), "ExecuteUpdate", Connection(), "", "", false, "", "", 1, 2);
            }).number(),
            ErrorNumber::kWrongArgumentCount);
}

TEST_F(DatabaseManagerTest, AStatementThatIsNoTextIsReported) {
  for (const Value& statement :
       {Value(Null{}), Value(12), Value(), Value(Missing{}), Value(Connection())}) {
    std::array<Value, 4> arguments{Value(Connection()), statement, Value(false), Value("")};
    manager().object().Invoke("ExecuteScalar", InvokeKind::kCall, arguments);
    EXPECT_EQ(arguments[2], Value(true));
    EXPECT_EQ(arguments[3], Value("The statement must be a text"));
  }
}

TEST_F(DatabaseManagerTest, AStoreOpenForReadingReadsAndReportsWrites) {
  const TemporaryFolder folder;
  const std::filesystem::path file = folder.File("readonly.db");
  { const std::unique_ptr<Store> created = OpenStore(file, OpenMode::kCreate); }
  const qorcred::ObjectRef readOnly = std::make_shared<StoreConnection>(
      OpenStore(file, OpenMode::kReadOnly), [this] { return now_; });
  EXPECT_TRUE(manager().ExecuteSelect(readOnly, "SELECT RID FROM Units", error_).HasNoRows());
  EXPECT_FALSE(error_.flag);
  EXPECT_EQ(manager().ExecuteInsert(readOnly, "INSERT INTO Units (UnitKey) VALUES (1)", "", "Units",
                                    error_),
            0);
  EXPECT_THAT(error_.text, HasSubstr("reading only"));
}

}  // namespace
}  // namespace qorhost::test
