// What a trace has for the calls of an operation, and that its values can be read back.
#include "trace/tracer.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <fstream>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "credentials/cls_credential.h"
#include "frame/date.h"
#include "frame/result_table.h"
#include "tests/trace/trace_grammar.h"
#include "tests/trace/trace_reader.h"
#include "tests/trace/trace_replay.h"
#include "trace/traced_controller.h"
#include "trace/traced_host.h"

namespace qortest {
namespace {

using qorcred::Arguments;
using qorcred::InvokeKind;
using qorcred::ObjectRef;
using qorcred::Value;
using testing::ElementsAre;

/// Answers with what the test sets, and writes into the arguments that it sets.
class Answering final : public qorcred::Object {
 public:
  Value Invoke(std::string_view, InvokeKind, Arguments arguments) override {
    if (during) during();
    for (std::size_t at = 0; at < outs.size(); ++at) arguments[at] = outs[at];
    seen.assign(arguments.begin(), arguments.end());
    return result;
  }

  Value result;
  std::vector<Value> outs;
  std::vector<Value> seen;
  std::function<void()> during;
};

class Tracing : public testing::Test {
 protected:
  std::shared_ptr<Answering> inner_ = std::make_shared<Answering>();
  std::vector<std::string> lines_;
  std::shared_ptr<qorcred::trace::Tracer> tracer_ = std::make_shared<qorcred::trace::Tracer>(
      [this](std::string_view line) { lines_.emplace_back(line); });
  ObjectRef traced_ = tracer_->Traced(inner_, "list");
};

TEST_F(Tracing, GivesEachKindOfAccessItsForm) {
  inner_->result = 7;
  (void)Get(*traced_, "ItemData", 2);
  Put(*traced_, "ItemData", 2, "7");
  Put(*traced_, "", 1.5);
  (void)Call(*traced_, "ListCount");
  inner_->result = {};
  (void)Call(*traced_, "AddItem", "a \"b\"\n", std::int16_t{3});
  (void)Call(*traced_, "Unheard", true);
  EXPECT_THAT(
      lines_,
      ElementsAre("list@1.ItemData(index: 2) -> 7", "list@1.ItemData(index: 2) = \"7\"",
                  "list@1 = 1.5#", "list@1.ListCount() -> 7",
                  "list@1.AddItem(text: \"a \"\"b\"\"\\n\", index: 3%)", "list@1.Unheard(True)"));
}

TEST_F(Tracing, TellsArgumentsThatComeBackOther) {
  inner_->result = -1;
  inner_->outs = {Value(), "UPDATE", true, "no such table"};
  std::vector<Value> arguments{Value(), "UPDATE", false, ""};
  traced_->Invoke("ExecuteSelect", InvokeKind::kCall, arguments);
  EXPECT_THAT(lines_, ElementsAre("list@1.ExecuteSelect(conn: Empty, sql: \"UPDATE\", errorFlag: "
                                  "False, errorText: \"\") -> -1 out errorFlag: True, errorText: "
                                  "\"no such table\""));
  EXPECT_EQ(arguments[3], Value("no such table"));
}

TEST_F(Tracing, MakesNoCallOfItsOwn) {
  int calls = 0;
  const auto part = std::make_shared<Answering>();
  inner_->during = part->during = [&calls] { ++calls; };
  inner_->result = ObjectRef(part);
  const Value got = Get(*traced_, "Part", 2);
  EXPECT_EQ(calls, 1);
  Put(*traced_, "Part", got);
  EXPECT_EQ(calls, 2);
  (void)Call(*traced_, "ExecuteSelect", got, "SELECT 1", false, "");
  EXPECT_EQ(calls, 3);
  EXPECT_THAT(lines_, ElementsAre("list@1.Part(2) -> Part[2]@2", "list@1.Part = Part[2]@2",
                                  "list@1.ExecuteSelect(conn: Part[2]@2, sql: \"SELECT 1\", "
                                  "errorFlag: False, errorText: \"\") -> Part[2]@2"));
}

TEST_F(Tracing, IndentsWhatHappensInACall) {
  const ObjectRef other = tracer_->Traced(std::make_shared<qorcred::ResultTable>(), "rows");
  inner_->during = [&] { (void)Get(*other, "", 0, 0); };
  inner_->result = true;
  (void)Call(*traced_, "SetFocus");
  EXPECT_THAT(lines_,
              ElementsAre("list@1.SetFocus()", "  rows@2(row: 0, column: 0) -> \"\"", "-> True"));
}

TEST_F(Tracing, TellsFailuresAndRaisesThem) {
  EXPECT_THROW(
      (void)Get(*tracer_->Traced(std::make_shared<qorcred::ResultTable>(), "rows"), "", 5, 0),
      qorcred::RuntimeError);
  EXPECT_THAT(lines_, ElementsAre("rows@2(row: 5, column: 0) ! 9 \"Subscript out of range\""));
}

TEST_F(Tracing, HandsObjectsOnUntracedAndBackTraced) {
  const auto part = std::make_shared<Answering>();
  inner_->result = ObjectRef(part);
  const Value got = Get(*traced_, "Part");
  EXPECT_NE(*got.As<ObjectRef>(), ObjectRef(part));
  EXPECT_EQ(qorcred::trace::Untraced(*got.As<ObjectRef>()), ObjectRef(part));
  (void)Call(*traced_, "Take", got);
  EXPECT_EQ(inner_->seen, std::vector<Value>{ObjectRef(part)});
  EXPECT_THAT(lines_, ElementsAre("list@1.Part -> Part@2", "list@1.Take(Part@2) -> Part@2"));
}

TEST_F(Tracing, GivesAnObjectAnotherNumberThanTheOneThatStoodThereBefore) {
  for (int round = 0; round < 3; ++round) {
    (void)Get(*tracer_->Traced(std::make_shared<qorcred::ResultTable>(), "rows"), "", 0, 0);
  }
  EXPECT_THAT(lines_,
              ElementsAre("rows@2(row: 0, column: 0) -> \"\"", "rows@3(row: 0, column: 0) -> \"\"",
                          "rows@4(row: 0, column: 0) -> \"\""));
}

TEST_F(Tracing, EndsWithASinkThatFails) {
  int tried = 0;
  const auto tracer = std::make_shared<qorcred::trace::Tracer>([&](std::string_view) {
    ++tried;
    throw std::runtime_error("disk full");
  });
  inner_->result = 7;
  const ObjectRef traced = tracer->Traced(inner_, "list");
  EXPECT_EQ(Get(*traced, "ListIndex"), Value(7));
  EXPECT_EQ(Get(*traced, "ListIndex"), Value(7));
  EXPECT_EQ(tried, 1);
}

TEST(TraceText, CanBeReadBack) {
  const auto table = std::make_shared<qorcred::ResultTable>();
  const std::vector<Value> values{{},
                                  qorcred::Null{},
                                  qorcred::Missing{},
                                  true,
                                  false,
                                  std::int16_t{-3},
                                  std::numeric_limits<std::int32_t>::min(),
                                  0.1,
                                  -1e300,
                                  std::numeric_limits<double>::infinity(),
                                  qorcred::FromCivil({2026, 1, 31, 14, 5, 9}),
                                  qorcred::FromCivil({2026, 1, 31}),
                                  qorcred::Date{46053.123456789},
                                  qorcred::Date{1e9},
                                  "",
                                  "\"quoted\", \\n is no end\n\x01\x7F a -> b ! c out d: (e)",
                                  "Größe {1}",
                                  qorcred::StringArray{},
                                  qorcred::StringArray{"a, b", "\"", ""},
                                  ObjectRef(),
                                  ObjectRef(table)};
  for (const Value& value : values) {
    const std::string text =
        qorcred::trace::SpelledValue(value, [](const ObjectRef&) { return "rows@1"; });
    EXPECT_EQ(ReadValue(text,
                        [&](std::string_view name) {
                          EXPECT_EQ(name, "rows@1");
                          return table;
                        }),
              value)
        << text;
    EXPECT_EQ(FaultInTraceLine("a@1 = " + text), "") << text;
    EXPECT_EQ(FaultInTraceLine("a@1.Do(x: " + text + ", " + text + ") -> " + text), "") << text;
  }
}

TEST(TraceGrammar, HasTheLinesOfItsPage) {
  std::ifstream page(QORCRED_DOCS_DIR "/trace.md");
  std::vector<std::string> lines;
  bool inSample = false;
  for (std::string line; std::getline(page, line) && (!inSample || line != "```");) {
    if (inSample && line != "  ...") lines.push_back(line);
    inSample = inSample || line == "```text";
  }
  EXPECT_GT(lines.size(), 10U);
  EXPECT_EQ(FaultInTrace(lines), "");
}

TEST(TraceGrammar, RefusesWhatIsNoLineOfATrace) {
  for (const std::string_view line :
       {"", "a@1.", "a.Do()", "a@1.Do(", "a@1.Do(x 1)", "a@1 -> ", "a@1 = \"open", "a@1 = \"\\q\"",
        "a@1 = 5&", "a@1 = #", "new a", "Release a", "host 5", "host \"\" -> many rows", "Beep()",
        "-> True False", "! text", "a@1.Get -> 5 out", "a@1 = {\"a\" \"b\"}"}) {
    EXPECT_NE(FaultInTraceLine(line), "") << line;
  }
  EXPECT_NE(FaultInTrace({"a@1.Do()", "    b@2.Get -> 5"}), "");
  EXPECT_NE(FaultInTrace({" a@1.Do()"}), "");
}

TEST(TraceReader, TakesACallApart) {
  const std::vector<TracedLine> read =
      ReadTrace({"a@1.Do(x: 1, \"-> no\")", "  b@2.Get -> 5 out y: True, 2: \"z\"",
                 "  c@3.Fail ! 9 \"s\"", "-> True out x: 2", "new b@4"});
  ASSERT_EQ(read.size(), 2U);
  EXPECT_EQ(read[0].head, "a@1.Do(x: 1, \"-> no\")");
  EXPECT_EQ(read[0].result, "True");
  EXPECT_EQ(read[0].outs, "x: 2");
  ASSERT_EQ(read[0].inner.size(), 2U);
  EXPECT_EQ(read[0].inner[0].result, "5");
  EXPECT_EQ(read[0].inner[0].outs, "y: True, 2: \"z\"");
  EXPECT_EQ(read[0].inner[1].failure, "9 \"s\"");
  EXPECT_THROW((void)ReadTrace({"  a@1.Do()"}), std::runtime_error);
}

/// Makes no component, and has the usual texts.
class BareHost final : public qorcred::Host {
 public:
  ObjectRef CreateComponent(std::string_view) override {
    throw qorcred::RuntimeError(qorcred::ErrorNumber::kCannotCreateComponent);
  }
  qorcred::MessageButton ShowMessage(std::string_view, qorcred::MessageStyle,
                                     std::string_view) override {
    return qorcred::MessageButton::kOk;
  }
  qorcred::Date Now() override { return {}; }
  void LetEventsRun() override {}
  void ReportFailure(std::string_view, const qorcred::RuntimeError&) noexcept override {}
};

TEST_F(Tracing, OfAControllerBeginsWithItsCreationAndEndsWithItsRelease) {
  BareHost bare;
  qorcred::trace::TracedHost host(bare, tracer_);
  {
    qorcred::trace::TracedController<qorcred::clsCredential> controller("clsCredential", host,
                                                                        tracer_);
    controller.Set("gmobjCredentialScreen", traced_);
    EXPECT_EQ((controller.Run<&qorcred::clsCredential::pbBase64Dec>("NTAw")), "500");
    EXPECT_THROW(controller.Run<&qorcred::clsCredential::pbBase64Dec>(""), qorcred::RuntimeError);
    std::int32_t rid = 5;
    EXPECT_FALSE(
        (controller.Run<&qorcred::clsCredential::pbSave>(ObjectRef(), 3, false, true, &rid)));
    EXPECT_EQ(rid, 5);
  }
  // Converted once for each controller.
  const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  const std::vector<std::string> expected{
      "new clsCredential@2",
      "  CreateObject(progId: \"qorDBI.clsDBManager\") ! 429 \"Component can't create object\"",
      "  Trapped(operation: \"Class_Initialize\") ! 429 \"Component can't create object\"",
      "clsCredential@2.gmobjCredentialScreen = list@1",
      "clsCredential@2.pbBase64Dec(Base64String: \"NTAw\")",
      "  TextToAnsi(text: \"" + alphabet + "\") -> " + qorcred::trace::SpelledBytes(alphabet),
      "  TextToAnsi(text: \"NTAw\") -> 0x4E544177",
      "  AnsiToText(bytes: 0x353030) -> \"500\"",
      "-> \"500\"",
      "clsCredential@2.pbBase64Dec(Base64String: \"\")",
      "  TextToAnsi(text: \"\") -> 0x",
      "! 9 \"Subscript out of range\"",
      std::string("clsCredential@2.pbSave(objConn: Nothing, lngUnitKey: 3, blnIsTBL: False, ") +
          "blnEditCR: True, lngRID: 5)",
      "  CreateObject(progId: \"qorAppln.clsApplication\") ! 429 \"Component can't create object\"",
      "  Trapped(operation: \"pbSave\") ! 429 \"Component can't create object\"",
      "-> False",
      "Release clsCredential@2"};
  EXPECT_EQ(lines_, expected);
}

TEST_F(Tracing, WithoutATracerIsTheControllerAlone) {
  BareHost bare;
  qorcred::trace::TracedController<qorcred::clsCredential> controller("clsCredential", bare,
                                                                      nullptr);
  EXPECT_EQ((controller.Run<&qorcred::clsCredential::pbBase64Dec>("NTAw")), "500");
  EXPECT_TRUE(lines_.empty());
}

}  // namespace
}  // namespace qortest
