// Messages on standard error, answers to questions, and how an operation's end is told.
#include "host/cli/operator.h"

#include <gtest/gtest.h>

#include <chrono>
#include <sstream>

#include "host/cli/command_session.h"

namespace qorhost::test {
namespace {

using qorcred::MessageButton;
using qorcred::MessageStyle;

class OperatorTest : public testing::Test {
 protected:
  MessageButton Ask(const std::string& typed, bool terminal, std::optional<bool> answer = {}) {
    in_.str(typed);
    environment_.inputIsTerminal = terminal;
    Operator person(console_, answer);
    return person.Show("Delete it?", MessageStyle::kQuestion, "Title");
  }

  std::istringstream in_;
  std::ostringstream out_;
  std::ostringstream err_;
  Environment environment_;
  Console console_{in_, out_, err_, environment_};
};

TEST_F(OperatorTest, ShowsTitleIconWordAndText) {
  Operator person(console_, std::nullopt);
  EXPECT_EQ(person.Show("Taken.", MessageStyle::kNotice, "Title"), MessageButton::kOk);
  EXPECT_EQ(person.Show("No\n\x1B!", MessageStyle::kRefusal, "Title"), MessageButton::kOk);
  EXPECT_EQ(err_.str(), "Title [information]: Taken.\nTitle [exclamation]: No\\n\\x1B!\n");
  EXPECT_EQ(out_.str(), "");
}

struct AnswerRow {
  const char* name;
  const char* typed;
  MessageButton button;
};

class TypedAnswer : public OperatorTest, public testing::WithParamInterface<AnswerRow> {};

TEST_P(TypedAnswer, IsUnderstood) {
  EXPECT_EQ(Ask(GetParam().typed, true), GetParam().button);
}

INSTANTIATE_TEST_SUITE_P(
    Answers, TypedAnswer,
    testing::Values(AnswerRow{"Letter", "y\n", MessageButton::kYes},
                    AnswerRow{"Word", "YES\n", MessageButton::kYes},
                    AnswerRow{"BlanksAndCarriageReturn", " yes \r\n", MessageButton::kYes},
                    AnswerRow{"No", "n\n", MessageButton::kNo},
                    AnswerRow{"AskedAgain", "what\n\ny\n", MessageButton::kYes},
                    AnswerRow{"NeverAnswered", "a\nb\nc\nd\ne\ny\n", MessageButton::kNo},
                    AnswerRow{"EndOfInput", "", MessageButton::kNo}),
    [](const auto& row) { return row.param.name; });

TEST_F(OperatorTest, OptionsAnswerBeforeAnybodyIsAsked) {
  EXPECT_EQ(Ask("n\n", true, true), MessageButton::kYes);
  EXPECT_EQ(Ask("y\n", true, false), MessageButton::kNo);
}

TEST_F(OperatorTest, WithoutATerminalTheAnswerIsNo) {
  EXPECT_EQ(Ask("y\n", false), MessageButton::kNo);
  EXPECT_NE(err_.str().find("--yes"), std::string::npos);
}

TEST_F(OperatorTest, IsToldWhoWasFaster) {
  qorhost::Outcome outcome;
  outcome.ending = Ending::kStale;
  outcome.changes.push_back({7, "2026-01-31 12:00:00", "anna\x1B", "desk", 1, "edit code 0101"});
  outcome.changes.push_back({8, "2026-01-31 12:00:05", "", "", {}, "sql: UPDATE"});
  EXPECT_EQ(Tell(outcome, "directory code", console_), ExitStatus::kRefused);
  EXPECT_EQ(err_.str(),
            "qorhost: nothing was changed: someone else has changed or deleted the directory code "
            "meanwhile. Try again.\n"
            "  2026-01-31 12:00:00 UTC, anna\\x1B: edit code 0101\n"
            "  2026-01-31 12:00:05 UTC, somebody: sql: UPDATE\n");
}

TEST_F(OperatorTest, IsToldWhatOthersHaveChanged) {
  const std::pair<StaleCause, std::string> reasons[] = {
      {StaleCause::kRowChanged, "someone else has changed the credential meanwhile"},
      {StaleCause::kRowDeleted, "someone else has deleted the credential meanwhile"},
      {StaleCause::kHolderChanged,
       "someone else has changed the holder of the credential meanwhile"},
      {StaleCause::kTakerChanged,
       "someone else has changed the tenant who was to get the credential meanwhile"},
      {StaleCause::kNewQuestion, "what someone else has done meanwhile calls for a question"},
      {StaleCause::kStoreReplaced,
       "the store was moved or replaced meanwhile and has to be opened again"}};
  for (const auto& [cause, reason] : reasons) {
    err_.str("");
    Outcome outcome;
    outcome.ending = Ending::kStale;
    outcome.cause = cause;
    EXPECT_EQ(Tell(outcome, "credential", console_), ExitStatus::kRefused);
    EXPECT_EQ(err_.str(), "qorhost: nothing was changed: " + reason + ". Try again.\n");
  }
}

TEST_F(OperatorTest, IsToldOnATerminalAfterTwoSecondsThatOthersAreWriting) {
  using std::chrono::milliseconds;
  GlobalOptions global;
  EXPECT_EQ(PatienceOf(global, console_).limit, std::chrono::seconds(30));
  global.wait = 45;
  EXPECT_FALSE(PatienceOf(global, console_).waiting) << "nobody watches";
  environment_.errorIsTerminal = true;
  const Patience patience = PatienceOf(global, console_);
  EXPECT_EQ(patience.limit, std::chrono::seconds(45));
  EXPECT_TRUE(patience.waiting(milliseconds(1999)));
  EXPECT_EQ(err_.str(), "");
  EXPECT_TRUE(patience.waiting(milliseconds(2000)));
  EXPECT_TRUE(patience.waiting(milliseconds(2050)));
  EXPECT_EQ(err_.str(),
            "qorhost: another program is writing to the store: waiting for up to 45 s.\n");
}

TEST_F(OperatorTest, IsToldEveryFailureHarmlessly) {
  qorhost::Outcome outcome;
  EXPECT_EQ(Tell(outcome, "credential", console_), ExitStatus::kDone);
  EXPECT_EQ(err_.str(), "");
  outcome.ending = Ending::kFailed;
  outcome.failures = {"disk\nfull", "and more"};
  EXPECT_EQ(Tell(outcome, "credential", console_), ExitStatus::kFailure);
  EXPECT_EQ(err_.str(), "qorhost: disk\\nfull\nqorhost: and more\n");
}

TEST(StatusOf, IsRefusedForWhateverChangedNothingWithoutAFailure) {
  EXPECT_EQ(StatusOf(Ending::kDone), ExitStatus::kDone);
  EXPECT_EQ(StatusOf(Ending::kRefused), ExitStatus::kRefused);
  EXPECT_EQ(StatusOf(Ending::kStale), ExitStatus::kRefused);
  EXPECT_EQ(StatusOf(Ending::kCancelled), ExitStatus::kRefused);
  EXPECT_EQ(StatusOf(Ending::kFailed), ExitStatus::kFailure);
}

}  // namespace
}  // namespace qorhost::test
