// Statements that the manager must refuse with its flag and text, changing nothing.
#include <gmock/gmock.h>

#include "tests/host/components/component_fixture.h"

namespace qorhost::test {
namespace {

using qorcred::InvokeKind;
using qorcred::Value;

struct Row {
  const char* name;
  const char* operation;
  std::string sql;
  const char* text = "";  // part of the error text
};

void PrintTo(const Row& row, std::ostream* out) {
  *out << row.operation << ": " << row.sql;
}

class RefusedStatementTest : public ComponentFixture, public testing::WithParamInterface<Row> {
 protected:
  void SetUp() override {
    StoreFixture::SetUp();
    Run("INSERT INTO CredentialBank (UnitKey, CredentialType, PINNo) VALUES (1, 0, 7); "
        "INSERT INTO Tenants (UnitKey, LastName) VALUES (1, 'Abbott'); "
        "INSERT INTO DirectoryCode (UNITKEY, DIRECTORYCODE) VALUES (1, 101)");
  }

  struct Outcome {
    Value result;
    Value flag;
    std::string text;
  };

  Outcome Run1(const Row& row) {
    // The arguments of each operation, with the place of the error's flag.
    const std::string_view operation = row.operation;
    std::vector<Value> arguments{Value(Connection()), Value(row.sql)};
    if (operation == "ExecuteUpdate") {
      arguments.emplace_back("");
    } else if (operation == "ExecuteInsert") {
      arguments.emplace_back("");
      arguments.emplace_back("");
    }
    const std::size_t flag = arguments.size();
    arguments.emplace_back(false);
    arguments.emplace_back("left over");
    Value result = manager().object().Invoke(operation, InvokeKind::kCall, arguments);
    return {std::move(result), arguments[flag], *arguments[flag + 1].As<std::string>()};
  }

  [[nodiscard]] std::string Contents() {
    return Text(
        "SELECT (SELECT group_concat(RID || ':' || PINNo) FROM CredentialBank) || '/' || "
        "(SELECT group_concat(RID || LastName) FROM Tenants) || '/' || "
        "(SELECT group_concat(RID || ':' || DIRECTORYCODE) FROM DirectoryCode)");
  }
};

TEST_P(RefusedStatementTest, SetsFlagAndTextAndChangesNothing) {
  const std::string before = Contents();
  const Outcome outcome = Run1(GetParam());
  EXPECT_EQ(outcome.flag, Value(true));
  EXPECT_NE(outcome.text, "");
  EXPECT_NE(outcome.text, "left over");
  EXPECT_THAT(outcome.text, testing::HasSubstr(GetParam().text));
  EXPECT_EQ(Contents(), before);

  const std::string_view operation = GetParam().operation;
  if (operation == "ExecuteSelect") {
    const qorcred::TableView table(qorcred::RequireObject(outcome.result));
    EXPECT_EQ(table.UpperRow(), 0);
    EXPECT_EQ(table.UpperColumn(), 0);
    EXPECT_EQ(table.Cell(0, 0), Value(""));
  } else if (operation == "ExecuteScalar") {
    EXPECT_EQ(outcome.result, Value());
  } else {
    EXPECT_EQ(outcome.result, Value(0));
  }
}

std::string NameOfRow(const testing::TestParamInfo<Row>& info) {
  return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(
    Broken, RefusedStatementTest,
    testing::Values(
        Row{"NothingAfterEquals", "ExecuteSelect",
            "SELECT DIRECTORYCODE FROM DIRECTORYCODE WHERE DIRECTORYCODE= AND UNITKEY=1"},
        Row{"NothingAtTheEnd", "ExecuteScalar",
            "SELECT RID FROM DIRECTORYCODE WHERE DirectoryCode = "},
        Row{"DigitsThenLetters", "ExecuteSelect",
            "SELECT RID FROM DIRECTORYCODE WHERE DIRECTORYCODE= 12ab AND UNITKEY=1"},
        Row{"UnknownName", "ExecuteSelect",
            "SELECT RID FROM DIRECTORYCODE WHERE DIRECTORYCODE= abc AND UNITKEY=1", "abc"},
        Row{"NullWithADigit", "ExecuteUpdate",
            "UPDATE CREDENTIALBANK SET PINNo=Null2,LASTMODIFIEDDATE='_LMDATE_' WHERE UnitKey=1 AND "
            "RID=1",
            "Null2"},
        Row{"ValueMissingInSet", "ExecuteUpdate",
            "UPDATE DIRECTORYCODE SET TIMEDELAY=,DNDSCHEDULEID=1 WHERE UNITKEY=1"},
        Row{"QuoteInsideAText", "ExecuteUpdate",
            "UPDATE TENANTS SET LASTNAME='O'Brien' WHERE UNITKEY=1"},
        Row{"QuoteInsideAnInsert", "ExecuteInsert",
            "INSERT INTO TENANTS(UNITKEY,LASTNAME,RID)VALUES(1,'O'Brien',_ROWID_)"},
        Row{"EmptyStatement", "ExecuteSelect", ""}, Row{"Blanks", "ExecuteUpdate", "   "},
        Row{"NotSqlAtAll", "ExecuteSelect", "Hello, world"},
        Row{"UnclosedText", "ExecuteSelect", "SELECT RID FROM Tenants WHERE LastName='Abb"},
        Row{"UnclosedBracket", "ExecuteSelect", "SELECT RID FROM Tenants WHERE (RID=1"},
        Row{"UnknownColumn", "ExecuteInsert", "INSERT INTO TENANTS (Nonsense) VALUES (1)",
            "Nonsense"},
        Row{"FewerValuesThanColumns", "ExecuteInsert",
            "INSERT INTO TENANTS (UNITKEY,LASTNAME) VALUES (1)"},
        Row{"AWrittenTenantId", "ExecuteInsert",
            "INSERT INTO TENANTS (UNITKEY,TENANTID) VALUES (1,5)"},
        Row{"AnIdentityThatExists", "ExecuteInsert",
            "INSERT INTO TENANTS (UNITKEY,RID) VALUES (1,1)"},
        Row{"TextInANumberColumn", "ExecuteUpdate",
            "UPDATE CREDENTIALBANK SET PINNo='seven' WHERE RID=1"}),
    NameOfRow);

INSTANTIATE_TEST_SUITE_P(
    OfAnotherKind, RefusedStatementTest,
    testing::Values(
        Row{"SelectThroughUpdate", "ExecuteUpdate", "SELECT RID FROM Tenants", "SELECT"},
        Row{"InsertThroughUpdate", "ExecuteUpdate", "INSERT INTO TENANTS (UNITKEY) VALUES (1)",
            "INSERT"},
        Row{"DeleteThroughUpdate", "ExecuteUpdate", "DELETE FROM TENANTS", "DELETE"},
        Row{"UpdateThroughInsert", "ExecuteInsert", "UPDATE TENANTS SET LASTNAME='x'", "UPDATE"},
        Row{"SelectThroughInsert", "ExecuteInsert", "SELECT RID FROM Tenants", "SELECT"},
        Row{"UpdateThroughQueryDelete", "ExecuteQueryDelete", "UPDATE TENANTS SET LASTNAME='x'",
            "UPDATE"},
        Row{"InsertThroughSelect", "ExecuteSelect", "INSERT INTO TENANTS (UNITKEY) VALUES (1)",
            "INSERT"},
        Row{"DeleteThroughSelect", "ExecuteSelect", "DELETE FROM TENANTS", "DELETE"},
        Row{"UpdateThroughScalar", "ExecuteScalar", "UPDATE TENANTS SET LASTNAME='x'", "UPDATE"}),
    NameOfRow);

INSTANTIATE_TEST_SUITE_P(
    BeyondTheSchema, RefusedStatementTest,
    testing::Values(
        Row{"SecondStatement", "ExecuteUpdate",
            "UPDATE TENANTS SET LASTNAME='x'; DELETE FROM TENANTS"},
        Row{"SecondStatementAfterSelect", "ExecuteSelect",
            "SELECT RID FROM Tenants; DROP TABLE Tenants"},
        Row{"EngineTable", "ExecuteSelect", "SELECT sql FROM sqlite_schema", "sqlite_schema"},
        Row{"UnknownTable", "ExecuteUpdate", "UPDATE Nowhere SET A=1", "Nowhere"},
        Row{"Drop", "ExecuteUpdate", "DROP TABLE Tenants"},
        Row{"Pragma", "ExecuteSelect", "PRAGMA journal_mode=DELETE"},
        Row{"Attach", "ExecuteUpdate", "ATTACH 'x.db' AS x"},
        Row{"EngineFunction", "ExecuteScalar", "SELECT load_extension('x') FROM Tenants"},
        Row{"Transaction", "ExecuteUpdate", "COMMIT"}),
    NameOfRow);

TEST_F(RefusedStatementTest, AnEmptyInListFindsNothingWithoutAnError) {
  const qorcred::TableView table =
      manager().ExecuteSelect(Connection(),
                              "Select TenantID from Tenants where UnitKey=1 And (CredentialID1 IN "
                              "() OR CredentialID2 IN())",
                              error_);
  EXPECT_FALSE(error_.flag);
  EXPECT_EQ(error_.text, "");
  EXPECT_TRUE(table.HasNoRows());
  EXPECT_EQ(manager().ExecuteQueryDelete(
                Connection(), "Delete From CredentialBank Where unitkey=1 And RID in ()", error_),
            0);
  EXPECT_FALSE(error_.flag);
}

TEST_F(RefusedStatementTest, ARefusedStatementInATransactionLeavesTheOthers) {
  qorcred::Call(*connection_, "BeginTrans");
  Insert("INSERT INTO TENANTS(UNITKEY,LASTNAME,RID)VALUES(1,'Kept',_ROWID_)");
  manager().ExecuteInsert(Connection(), "INSERT INTO TENANTS (RID) VALUES (1)", "", "TENANTS",
                          error_);
  EXPECT_TRUE(error_.flag);
  qorcred::Call(*connection_, "CommitTrans");
  EXPECT_EQ(Number("SELECT count(*) FROM Tenants WHERE LastName='Kept'"), 1);
}

}  // namespace
}  // namespace qorhost::test
