#include <gmock/gmock.h>

#include <array>
#include <chrono>
#include <functional>

#include "frame/data_services.h"
#include "frame/runtime_error.h"
#include "host/store/store_connection.h"
#include "tests/host/store/store_fixture.h"

namespace qorhost::test {
namespace {

using qorcred::Call;
using qorcred::ErrorNumber;
using qorcred::RuntimeError;
using qorcred::Value;
using testing::HasSubstr;

constexpr const char* kInsert = "INSERT INTO TenantsBackup (UnitKey,TenantID) VALUES (1 , 7)";

class ConnectionTest : public StoreFixture {
 protected:
  [[nodiscard]] std::int64_t Backups() { return Number("SELECT count(*) FROM TenantsBackup"); }
};

RuntimeError FailureOf(const std::function<void()>& body) {
  try {
    body();
  } catch (const RuntimeError& failure) {
    return failure;
  }
  ADD_FAILURE() << "nothing was raised";
  return RuntimeError(ErrorNumber::kInternal);
}

TEST_F(ConnectionTest, CommitKeepsWhatATransactionWrote) {
  const qorcred::Connection connection(Connection());
  connection.BeginTrans();
  std::array<Value, 2> insertAndRows{Value(kInsert), Value(0)};
  connection.object().Invoke("Execute", qorcred::InvokeKind::kCall, insertAndRows);
  EXPECT_EQ(insertAndRows[1], Value(1));
  EXPECT_EQ(connection_->OpenTransactions(), 1);
  connection.CommitTrans();
  EXPECT_EQ(Backups(), 1);
}

TEST_F(ConnectionTest, RollbackUndoesWhatATransactionWrote) {
  const qorcred::Connection connection(Connection());
  connection.BeginTrans();
  connection.Execute(kInsert);
  connection.RollbackTrans();
  EXPECT_EQ(Backups(), 0);
}

TEST_F(ConnectionTest, ASecondTransactionInsideTheFirstIsRefused) {
  Call(*connection_, "BeginTrans");
  const RuntimeError failure = FailureOf([&] { Call(*connection_, "BeginTrans"); });
  EXPECT_EQ(failure.number(), ErrorNumber::kApplicationDefined);
  EXPECT_THAT(failure.description(), HasSubstr("already open"));
  Call(*connection_, "RollbackTrans");
}

TEST_F(ConnectionTest, EndingATransactionThatWasNotBegunIsRefused) {
  for (const char* member : {"CommitTrans", "RollbackTrans"}) {
    const RuntimeError failure = FailureOf([&] { Call(*connection_, member); });
    EXPECT_EQ(failure.number(), ErrorNumber::kApplicationDefined);
    EXPECT_THAT(failure.description(), HasSubstr("begin one first"));
  }
}

TEST_F(ConnectionTest, MembersAreFoundInAnyLetterCase) {
  Call(*connection_, "BEGINTRANS");
  Call(*connection_, "execute", kInsert);
  Call(*connection_, "committrans");
  EXPECT_EQ(Backups(), 1);
}

TEST_F(ConnectionTest, ExecuteHandsBackTheRowsItChanged) {
  Run("INSERT INTO TenantsBackup (UnitKey, TenantID) VALUES (1, 1), (1, 2), (2, 3)");
  std::array<qorcred::Value, 2> arguments{"DELETE FROM TenantsBackup WHERE UnitKey=1", 0};
  connection_->Invoke("Execute", qorcred::InvokeKind::kCall, arguments);
  EXPECT_EQ(arguments[1], qorcred::Value(2));
}

TEST_F(ConnectionTest, ExecuteRaisesWhatTheManagerWouldOnlyReport) {
  struct Case {
    const char* sql;
    const char* part;
  };
  for (const Case& one :
       {Case{"INSERT INTO TenantsBackup (UnitKey) VALUES (", "line 1"},
        Case{"SELECT TenantID FROM TenantsBackup", "SELECT"},
        Case{"INSERT INTO Nowhere (UnitKey) VALUES (1)", "Nowhere"}, Case{"", ""}}) {
    const RuntimeError failure = FailureOf([&] { Call(*connection_, "Execute", one.sql); });
    EXPECT_EQ(failure.number(), ErrorNumber::kApplicationDefined) << one.sql;
    EXPECT_THAT(failure.description(), HasSubstr(one.part));
  }
}

TEST_F(ConnectionTest, ExecuteOfANullStatementRaises) {
  const RuntimeError failure = FailureOf([&] { Call(*connection_, "Execute", qorcred::Null{}); });
  EXPECT_EQ(failure.number(), ErrorNumber::kInvalidUseOfNull);
}

TEST_F(ConnectionTest, AFailedStatementLeavesTheTransactionUsable) {
  Call(*connection_, "BeginTrans");
  Call(*connection_, "Execute", kInsert);
  FailureOf([&] { Call(*connection_, "Execute", "UPDATE Nowhere SET A=1"); });
  Call(*connection_, "Execute", kInsert);
  Call(*connection_, "CommitTrans");
  EXPECT_EQ(Backups(), 2);
}

TEST_F(ConnectionTest, UnknownMembersAndWrongCountsHaveTheirNumbers) {
  EXPECT_EQ(FailureOf([&] { Call(*connection_, "Open"); }).number(), ErrorNumber::kUnknownMember);
  EXPECT_EQ(FailureOf([&] { qorcred::Put(*connection_, "BeginTrans", 1); }).number(),
            ErrorNumber::kUnknownMember);
  EXPECT_EQ(FailureOf([&] { Call(*connection_, "BeginTrans", 1); }).number(),
            ErrorNumber::kWrongArgumentCount);
  EXPECT_EQ(FailureOf([&] { Call(*connection_, "Execute"); }).number(),
            ErrorNumber::kWrongArgumentCount);
}

TEST_F(ConnectionTest, AClosedConnectionSaysSo) {
  connection_->Close();
  for (const char* member : {"BeginTrans", "CommitTrans", "RollbackTrans"}) {
    EXPECT_THAT(FailureOf([&] { Call(*connection_, member); }).description(), HasSubstr("closed"));
  }
  EXPECT_THAT(FailureOf([&] { Call(*connection_, "Execute", kInsert); }).description(),
              HasSubstr("closed"));
}

TEST_F(ConnectionTest, ClosingUndoesAnOpenTransaction) {
  Call(*connection_, "BeginTrans");
  Call(*connection_, "Execute", kInsert);
  connection_->Close();
  EXPECT_EQ(connection_->OpenTransactions(), 0);
}

TEST_F(ConnectionTest, MeetsASecondWriterWhereTheTransactionBegins) {
  const std::unique_ptr<StorePlace> place = NewPlace();
  const Clock clock = [this] { return now_; };
  StoreConnection first(place->Open(OpenMode::kCreate), clock);
  StoreConnection second(place->Open(OpenMode::kReadWrite), clock);
  second.store().SetPatience({std::chrono::milliseconds(0), {}});
  Call(first, "BeginTrans");
  EXPECT_THAT(FailureOf([&] { Call(second, "BeginTrans"); }).description(),
              HasSubstr("another program is writing"));
  EXPECT_EQ(second.OpenTransactions(), 0);
  EXPECT_EQ(second.session().Scalar("SELECT COUNT(*) FROM TenantsBackup"), qorcred::Value(0));
  Call(first, "CommitTrans");
  Call(second, "BeginTrans");
  Call(second, "RollbackTrans");
}

TEST_F(ConnectionTest, HasPatienceForHalfAMinute) {
  EXPECT_EQ(Patience().limit, std::chrono::seconds(30));
}

TEST_F(ConnectionTest, MoreShapesThanTheCacheHoldsStillRun) {
  std::string condition = "TenantID=0";
  for (int number = 0; number < 260; ++number) {
    condition += " OR TenantID=1";
    const qorcred::Value answer =
        connection_->session().Scalar("SELECT count(*) FROM TenantsBackup WHERE " + condition);
    ASSERT_EQ(answer, qorcred::Value(0)) << number;
  }
}

}  // namespace
}  // namespace qorhost::test
