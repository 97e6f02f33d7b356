// The views of connection and database manager: arguments in their places, the error pair on its
// way through the calls.
#include "frame/data_services.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "frame/result_table.h"
#include "outcome.h"

namespace qorcred {
namespace {

using qortest::ForEachRow;
using qortest::Outcome;

/// Remembers what it was called with, writes an error pair into two arguments and answers.
class Service final : public Object {
 public:
  Value Invoke(std::string_view member, InvokeKind kind, Arguments arguments) override {
    EXPECT_EQ(kind, InvokeKind::kCall);
    called = member;
    received.assign(arguments.begin(), arguments.end());
    if (raises) throw RuntimeError(ErrorNumber::kApplicationDefined);
    if (writesAt > 0) {
      arguments[writesAt] = flag;
      if (writesAt + 1 < arguments.size()) arguments[writesAt + 1] = text;
    }
    return answer;
  }

  std::size_t writesAt = 0;  ///< where the flag goes, the text behind it; 0 writes nothing
  Value flag = true;
  Value text = "the disk is full";
  Value answer = 1;
  bool raises = false;

  std::string called;
  std::vector<Value> received;
};

class DataServicesTest : public testing::Test {
 protected:
  std::shared_ptr<Service> service_ = std::make_shared<Service>();
  DatabaseManager manager_{service_};
  ObjectRef connection_ = std::make_shared<Service>();
};

using ManagerCall =
    std::function<void(const DatabaseManager&, const ObjectRef& connection, DatabaseError&)>;

/// An operation of the manager with the arguments that it must bring, the flag among them.
struct OperationRow {
  const char* name;
  std::size_t flagAt;
  ManagerCall call;
  /// The arguments before and behind the error pair, without the connection.
  std::vector<Value> before;
  std::vector<Value> behind = {};
};

const std::vector<OperationRow>& Operations() {
  static const std::vector<OperationRow> rows = {
      {"ExecuteSelect",
       2,
       [](const auto& manager, const auto& connection, auto& error) {
         static_cast<void>(manager.ExecuteSelect(connection, "SELECT 1", error));
       },
       {"SELECT 1"}},
      {"ExecuteScalar",
       2,
       [](const auto& manager, const auto& connection, auto& error) {
         static_cast<void>(manager.ExecuteScalar(connection, "SELECT 1", error));
       },
       {"SELECT 1"}},
      {"ExecuteUpdate",
       3,
       [](const auto& manager, const auto& connection, auto& error) {
         manager.ExecuteUpdate(connection, "UPDATE", "TENANTS", error);
       },
       {"UPDATE", "TENANTS"}},
      {"ExecuteUpdate",
       3,
       [](const auto& manager, const auto& connection, auto& error) {
         manager.ExecuteUpdate(connection, "UPDATE", "TENANTS", error, Missing(), 17);
       },
       {"UPDATE", "TENANTS"},
       {Missing(), 17}},
      {"ExecuteInsert",
       4,
       [](const auto& manager, const auto& connection, auto& error) {
         manager.ExecuteInsert(connection, "INSERT", "", "TENANTS", error);
       },
       {"INSERT", "", "TENANTS"}},
      {"ExecuteDelete",
       3,
       [](const auto& manager, const auto& connection, auto& error) {
         manager.ExecuteDelete(connection, "TENANTS", 17, error);
       },
       {"TENANTS", 17}},
      {"ExecuteQueryDelete",
       2,
       [](const auto& manager, const auto& connection, auto& error) {
         manager.ExecuteQueryDelete(connection, "DELETE", error);
       },
       {"DELETE"}},
  };
  return rows;
}

TEST_F(DataServicesTest, TheErrorPairGoesFromCallToCall) {
  ForEachRow(Operations(), [this](const OperationRow& row) {
    const auto arguments = [&](Value flag, Value text) {
      std::vector<Value> all{Value(connection_)};
      all.insert(all.end(), row.before.begin(), row.before.end());
      all.push_back(std::move(flag));
      all.push_back(std::move(text));
      all.insert(all.end(), row.behind.begin(), row.behind.end());
      return all;
    };
    *service_ = Service();
    service_->answer = row.name == std::string("ExecuteSelect")
                           ? Value(ObjectRef(std::make_shared<ResultTable>()))
                           : Value(1);
    service_->writesAt = row.flagAt;
    DatabaseError error;

    row.call(manager_, connection_, error);
    EXPECT_EQ(service_->called, row.name);
    EXPECT_EQ(service_->received, arguments(false, ""));
    EXPECT_TRUE(error.flag);
    EXPECT_EQ(error.text, "the disk is full");

    service_->flag = false;
    service_->text = "";
    row.call(manager_, connection_, error);
    EXPECT_EQ(service_->received, arguments(true, "the disk is full"));
    EXPECT_FALSE(error.flag);
    EXPECT_EQ(error.text, "");
  });
}

TEST_F(DataServicesTest, AnErrorPairThatIsLeftAloneStays) {
  DatabaseError error{true, "the disk is full"};
  static_cast<void>(manager_.ExecuteScalar(connection_, "SELECT 1", error));
  EXPECT_TRUE(error.flag);
  EXPECT_EQ(error.text, "the disk is full");
}

TEST_F(DataServicesTest, AnErrorPairStaysWhenTheManagerRaises) {
  service_->raises = true;
  DatabaseError error{true, "the disk is full"};
  EXPECT_EQ(
      Outcome([&] { static_cast<void>(manager_.ExecuteScalar(connection_, "SELECT 1", error)); }),
      "error 1000");
  EXPECT_TRUE(error.flag);
  EXPECT_EQ(error.text, "the disk is full");
}

TEST_F(DataServicesTest, AFlagOfAnyTypeIsSetUnlessItIsEmptyOrZero) {
  const struct {
    const char* name;
    Value flag;
    bool set;
  } rows[] = {
      {"True", true, true},
      {"False", false, false},
      {"MinusOne", -1, true},
      {"Integer", std::int16_t{1}, true},
      {"Zero", 0, false},
      {"Fraction", 0.25, true},
      {"ZeroDouble", 0.0, false},
      {"Empty", Value(), false},
      {"Null", Null(), false},
      {"NoText", "", false},
      {"TextOfZero", "0", false},
      {"TextOfANumber", "-1", true},
      {"Text", "failed", true},
      {"Date", Date{46053.0}, true},
      {"Object", ObjectRef(std::make_shared<ResultTable>()), true},
      {"Missing", Missing(), true},
  };
  ForEachRow(rows, [this](const auto& row) {
    service_->writesAt = 2;
    service_->flag = row.flag;
    DatabaseError error{!row.set, ""};
    EXPECT_EQ(manager_.ExecuteScalar(connection_, "SELECT 1", error), Value(1));
    EXPECT_EQ(error.flag, row.set);
  });
}

TEST_F(DataServicesTest, AnErrorTextOfAnotherTypeIsNone) {
  for (const Value& text : {Value(), Value(Null()), Value(5), Value(ObjectRef())}) {
    service_->writesAt = 2;
    service_->text = text;
    DatabaseError error{false, "before"};
    static_cast<void>(manager_.ExecuteScalar(connection_, "SELECT 1", error));
    EXPECT_TRUE(error.flag);
    EXPECT_EQ(error.text, "");
  }
}

TEST_F(DataServicesTest, ASelectMustAnswerWithATable) {
  DatabaseError error;
  const struct {
    const char* name;
    Value answer;
    const char* expected;
  } rows[] = {
      {"Table", ObjectRef(std::make_shared<ResultTable>()), "done"},
      {"Nothing", ObjectRef(), "error 91"},
      {"Empty", Value(), "error 424"},
      {"Number", 0, "error 424"},
  };
  ForEachRow(rows, [&](const auto& row) {
    service_->answer = row.answer;
    EXPECT_EQ(
        Outcome([&] { static_cast<void>(manager_.ExecuteSelect(connection_, "SELECT 1", error)); }),
        row.expected);
  });
}

TEST_F(DataServicesTest, ExecuteOnTheConnectionIgnoresTheRows) {
  const Connection connection(service_);
  const struct {
    const char* name;
    Value rows;
  } rows[] = {
      {"None", 0},      {"Negative", -1},    {"Text", "many"},
      {"Null", Null()}, {"TooLarge", 1E300}, {"Nothing", ObjectRef()},
  };
  ForEachRow(rows, [&](const auto& row) {
    service_->writesAt = 1;
    service_->flag = row.rows;
    service_->answer = row.rows;
    EXPECT_EQ(Outcome([&] { connection.Execute("DELETE FROM TenantsBackup"); }), "done");
    EXPECT_EQ(service_->called, "Execute");
    EXPECT_EQ(service_->received, (std::vector<Value>{"DELETE FROM TenantsBackup", 0}));
  });
}

TEST(CountInTest, ReadsTheRowsOfAnyAnswer) {
  const struct {
    const char* name;
    Value answer;
    const char* expected;
  } rows[] = {
      {"Long", 3, "3"},
      {"Integer", std::int16_t{-1}, "-1"},
      {"Double", 2.5, "2"},
      {"HalfAboveAnOddNumber", 3.5, "4"},
      {"Text", "12", "12"},
      {"TextWithWords", "3 rows", "3"},
      {"Words", "none", "0"},
      {"Null", Null(), "0"},
      {"Empty", Value(), "0"},
      {"Largest", 2147483647.0, "2147483647"},
      {"TooLarge", 2147483648.0, "error 6"},
      {"Object", ObjectRef(), "error 13"},
      {"Missing", Missing(), "error 13"},
  };
  ForEachRow(rows, [](const auto& row) {
    EXPECT_EQ(Outcome([&] { return AnsweredNumber(row.answer); }), row.expected);
  });
}

}  // namespace
}  // namespace qorcred
