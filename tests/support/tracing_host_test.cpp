#include "tests/support/tracing_host.h"

#include <gtest/gtest.h>

#include <functional>

#include "frame/data_services.h"
#include "frame/date.h"
#include "frame/result_table.h"
#include "tests/support/recorder.h"
#include "tests/support/tracing_services.h"

namespace qortest {
namespace {

using qorcred::Arguments;
using qorcred::Call;
using qorcred::ErrorNumber;
using qorcred::FromCivil;
using qorcred::InvokeKind;
using qorcred::MessageButton;
using qorcred::MessageStyle;
using qorcred::Missing;
using qorcred::ObjectRef;
using qorcred::RuntimeError;
using qorcred::Value;

/// Answers every call with what the test says.
class AnsweringObject final : public qorcred::Object {
 public:
  using Answer = std::function<Value(std::string_view member, Arguments arguments)>;

  explicit AnsweringObject(Answer answer) : answer_(std::move(answer)) {}

  Value Invoke(std::string_view member, InvokeKind /*kind*/, Arguments arguments) override {
    return answer_(member, arguments);
  }

 private:
  Answer answer_;
};

class PlainHost final : public qorcred::Host {
 public:
  ObjectRef CreateComponent(std::string_view /*programmaticId*/) override {
    if (component == nullptr) {
      throw RuntimeError(ErrorNumber::kCannotCreateComponent);
    }
    return component;
  }
  MessageButton ShowMessage(std::string_view /*text*/, MessageStyle /*style*/,
                            std::string_view /*title*/) override {
    return MessageButton::kNo;
  }
  qorcred::Date Now() override { return FromCivil({2026, 11, 21, 10, 0, 0}); }
  void LetEventsRun() override { ++eventRuns; }
  void ReportFailure(std::string_view /*operation*/,
                     const RuntimeError& /*failure*/) noexcept override {
    ++failures;
  }
  std::string DateText(qorcred::Date /*date*/) override { return "a date"; }

  ObjectRef component;
  int eventRuns = 0;
  int failures = 0;
};

class TracingHostTest : public ::testing::Test {
 protected:
  /// A traced component that answers so; the line that reports its making is taken away.
  ObjectRef Component(AnsweringObject::Answer answer) {
    plain_.component = std::make_shared<AnsweringObject>(std::move(answer));
    ObjectRef component = host_.CreateComponent("qorDBI.clsDBManager");
    (void)recorder_.Take();
    return component;
  }
  static AnsweringObject::Answer Giving(Value result) {
    return [result](std::string_view, Arguments) { return result; };
  }
  /// A manager that sets the error arguments at `flagAt`.
  static AnsweringObject::Answer Failing(std::size_t flagAt, Value result) {
    return [flagAt, result](std::string_view, Arguments arguments) {
      arguments[flagAt] = Value(true);
      arguments[flagAt + 1] = Value("no such table \"X\"");
      return result;
    };
  }

  PlainHost plain_;
  Recorder recorder_;
  TracingHost host_{plain_, recorder_.Sink()};
  ObjectRef connection_ = std::make_shared<AnsweringObject>(Giving({}));
};

TEST_F(TracingHostTest, WritesComponentsMadeAndReleased) {
  plain_.component = connection_;
  ObjectRef component = host_.CreateComponent("qorTent.clsTenant");
  ObjectRef second = component;
  component.reset();
  EXPECT_EQ(recorder_.Take(), Lines{"CreateObject \"qorTent.clsTenant\""});
  second.reset();
  EXPECT_EQ(recorder_.Take(), Lines{"Release \"qorTent.clsTenant\""});
}

TEST_F(TracingHostTest, WritesAComponentThatCannotBeMade) {
  EXPECT_THROW(host_.CreateComponent("qorX.clsY"), RuntimeError);
  EXPECT_EQ(recorder_.Take(),
            Lines{"CreateObject \"qorX.clsY\" ! 429 \"Component can't create object\""});
}

TEST_F(TracingHostTest, WritesMessagesClockEventsAndFailures) {
  EXPECT_EQ(host_.ShowMessage("You must enter a \"number\".", MessageStyle::kNotice, "Pello RT"),
            MessageButton::kNo);
  EXPECT_EQ(host_.Now(), FromCivil({2026, 11, 21, 10, 0, 0}));
  host_.LetEventsRun();
  host_.ReportFailure("pbSave", RuntimeError(ErrorNumber::kUnknownMember));
  EXPECT_EQ(recorder_.Take(),
            (Lines{"MsgBox 64 \"Pello RT\" \"You must enter a \"\"number\"\".\" -> 7",
                   "Now -> #11/21/2026 10:00:00 AM#", "DoEvents",
                   "Trapped pbSave 438 \"Object doesn't support this property or method\""}));
  EXPECT_EQ(plain_.eventRuns, 1);
  EXPECT_EQ(plain_.failures, 1);
}

TEST_F(TracingHostTest, HandsTextConversionsOnWithoutALine) {
  EXPECT_EQ(host_.DateText(FromCivil({2026, 1, 1, 0, 0, 0})), "a date");
  EXPECT_EQ(host_.AnsiToText(host_.TextToAnsi("€")), "€");
  EXPECT_EQ(recorder_.Take(), Lines{});
}

TEST_F(TracingHostTest, WritesASelectWithItsRowCount) {
  const auto table = std::make_shared<qorcred::ResultTable>(3, 2);
  table->At(0, 0) = "x";
  const ObjectRef manager = Component(Giving(Value(ObjectRef(table))));
  const Value result = Call(*manager, "ExecuteSelect", connection_, "SELECT 1", false, "");
  EXPECT_EQ(result, Value(ObjectRef(table))) << "a result table is handed on as it is";
  table->ReDim(0, 0, 0, 1);
  Call(*manager, "ExecuteSelect", connection_, "SELECT 2", false, "");
  EXPECT_EQ(recorder_.Take(),
            (Lines{"ExecuteSelect \"SELECT 1\" -> 3 rows", "ExecuteSelect \"SELECT 2\" -> 1 row"}));
}

TEST_F(TracingHostTest, WritesASelectWithoutRows) {
  const ObjectRef manager =
      Component(Giving(Value(ObjectRef(std::make_shared<qorcred::ResultTable>()))));
  Call(*manager, "ExecuteSelect", connection_, "SELECT 1", false, "");
  EXPECT_EQ(recorder_.Take(), Lines{"ExecuteSelect \"SELECT 1\" -> no rows"});
}

TEST_F(TracingHostTest, WritesStatementsWithoutConnectionAndErrorArguments) {
  const ObjectRef manager = Component(Giving(1));
  Call(*manager, "ExecuteScalar", connection_, "SELECT 1", false, "");
  Call(*manager, "ExecuteUpdate", connection_, "UPDATE t", "T", false, "");
  Call(*manager, "ExecuteUpdate", connection_, "UPDATE t", "T", false, "", Missing{}, 17);
  Call(*manager, "ExecuteUpdate", connection_, "UPDATE t", "T", false, "", Missing{}, Missing{});
  Call(*manager, "ExecuteUpdate", connection_, "UPDATE t", "T", false, "", "1/2/2026", 17);
  Call(*manager, "ExecuteInsert", connection_, "INSERT t", "", "T", false, "");
  Call(*manager, "ExecuteDelete", connection_, "T", 17, false, "");
  Call(*manager, "ExecuteQueryDelete", connection_, "DELETE t", false, "");
  Call(*manager, "pbGetRowIDStringConstant");
  EXPECT_EQ(
      recorder_.Take(),
      (Lines{"ExecuteScalar \"SELECT 1\" -> 1", "ExecuteUpdate \"UPDATE t\" \"T\" -> 1",
             "ExecuteUpdate \"UPDATE t\" \"T\" - 17 -> 1", "ExecuteUpdate \"UPDATE t\" \"T\" -> 1",
             "ExecuteUpdate \"UPDATE t\" \"T\" \"1/2/2026\" 17 -> 1",
             "ExecuteInsert \"INSERT t\" \"\" \"T\" -> 1", "ExecuteDelete \"T\" 17 -> 1",
             "ExecuteQueryDelete \"DELETE t\" -> 1", "pbGetRowIDStringConstant -> 1"}));
}

TEST_F(TracingHostTest, WritesTheErrorTextOfAFailedStatementBehindTheResult) {
  ObjectRef manager =
      Component(Failing(2, Value(ObjectRef(std::make_shared<qorcred::ResultTable>()))));
  Call(*manager, "ExecuteSelect", connection_, "SELECT X", false, "");
  EXPECT_EQ(recorder_.Take(),
            Lines{"ExecuteSelect \"SELECT X\" -> no rows ! \"no such table \"\"X\"\"\""});
  manager.reset();
  manager = Component(Failing(4, 0));
  Call(*manager, "ExecuteInsert", connection_, "INSERT X", "", "X", false, "");
  EXPECT_EQ(recorder_.Take().at(0),
            "ExecuteInsert \"INSERT X\" \"\" \"X\" -> 0 ! \"no such table \"\"X\"\"\"");
}

TEST_F(TracingHostTest, WritesOtherComponentsWithoutTheConnection) {
  const ObjectRef tenants = Component([](std::string_view member, Arguments) {
    return member == "pvCreateProgramSteps" ? Value() : Value(5);
  });
  Call(*tenants, "pbGetMaxGroupIDOrLinkID", 1, connection_, true);
  Call(*tenants, "pvCreateProgramSteps", connection_, 1, 201);
  EXPECT_EQ(recorder_.Take(),
            (Lines{"pbGetMaxGroupIDOrLinkID 1 True -> 5", "pvCreateProgramSteps 1 201"}));
}

TEST_F(TracingHostTest, WritesTheThreeCountsOfAUnit) {
  const ObjectRef application = Component([](std::string_view, Arguments arguments) {
    arguments[5] = Value("120");
    arguments[6] = Value("300");
    arguments[7] = Value("");
    return Value();
  });
  Call(*application, "pbGetUnitStatus", connection_, 1, std::int16_t{0}, "", "", "", "", "", "");
  EXPECT_EQ(recorder_.Take(), Lines{"pbGetUnitStatus 1 -> 120 300 \"\""});
}

TEST_F(TracingHostTest, WritesWhatAComponentRaises) {
  const ObjectRef manager = Component([](std::string_view, Arguments) -> Value {
    throw RuntimeError(ErrorNumber::kApplicationDefined, "closed");
  });
  EXPECT_THROW(Call(*manager, "ExecuteScalar", connection_, "SELECT 1", false, ""), RuntimeError);
  EXPECT_EQ(recorder_.Take(), Lines{"ExecuteScalar \"SELECT 1\" ! 1000 \"closed\""});
}

TEST_F(TracingHostTest, WritesTheConnectionsTransactionAndStatements) {
  const ObjectRef inner =
      std::make_shared<AnsweringObject>([](std::string_view member, Arguments arguments) {
        if (member == "Execute") {
          arguments[1] = Value(4);
        }
        return Value();
      });
  const ObjectRef traced = std::make_shared<TracingConnection>(inner, recorder_.Sink());
  const qorcred::Connection connection(traced);
  connection.BeginTrans();
  connection.Execute("INSERT t");
  connection.RollbackTrans();
  connection.CommitTrans();
  EXPECT_EQ(recorder_.Take(),
            (Lines{"BeginTrans", "Execute \"INSERT t\" -> 4", "RollbackTrans", "CommitTrans"}));
}

TEST_F(TracingHostTest, AComponentReceivesTheConnectionItself) {
  const ObjectRef traced = std::make_shared<TracingConnection>(connection_, recorder_.Sink());
  ObjectRef received;
  const ObjectRef manager = Component([&](std::string_view, Arguments arguments) {
    received = *arguments[0].As<ObjectRef>();
    return Value(1);
  });
  std::vector<Value> arguments{traced, "SELECT 1", false, ""};
  manager->Invoke("ExecuteScalar", InvokeKind::kCall, arguments);
  EXPECT_EQ(received, connection_);
  EXPECT_EQ(arguments[0], Value(traced)) << "the caller's argument is put back";
}

TEST_F(TracingHostTest, AReferenceThatAComponentWritesReachesTheCaller) {
  const ObjectRef traced = std::make_shared<TracingConnection>(connection_, recorder_.Sink());
  const ObjectRef other = std::make_shared<AnsweringObject>(Giving({}));
  const ObjectRef manager = Component([&](std::string_view, Arguments arguments) {
    arguments[0] = Value(other);
    return Value();
  });
  std::vector<Value> arguments{traced};
  manager->Invoke("Swap", InvokeKind::kCall, arguments);
  EXPECT_EQ(arguments[0], Value(other));
}

}  // namespace
}  // namespace qortest
