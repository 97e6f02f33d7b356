#include "host/components/step_sender.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "host/store/step_queue.h"
#include "tests/host/components/component_fixture.h"

namespace qorhost::test {
namespace {

using qorcred::Value;

class StepSenderTest : public ComponentFixture {
 protected:
  void SetUp() override {
    StoreFixture::SetUp();
    Run("INSERT INTO DirectoryCode (RID, UNITKEY, DIRECTORYCODE, OLDDIRECTORYCODE) VALUES "
        "(5, 1, 102, 101), (6, 1, 200, NULL)");
  }

  void Send(std::string_view member, std::int32_t rid) {
    qorcred::Call(*sender_, member, Connection(), kUnit, rid);
  }
  [[nodiscard]] bool DeletionExists(const Value& code) {
    return *qorcred::Call(*sender_, "pbDeleteDirCodePrgStepExists", Connection(), kUnit, code)
                .As<bool>();
  }
  using Steps = std::vector<std::pair<std::string, std::string>>;  // kind and code
  [[nodiscard]] Steps Queue() {
    Steps steps;
    for (const ProgramStep& one : connection_->session().steps().List(kUnit)) {
      steps.emplace_back(one.kind, one.code);
    }
    return steps;
  }

  qorcred::ObjectRef sender_ = Create(qorcred::component::kStepSender);
};

TEST_F(StepSenderTest, QueuesProgrammingAndChangeInTheOrderOfTheCalls) {
  Send("pbGenDirCodePrgStep", 6);
  Send("pbGenChgDirCodePrgStep", 5);
  EXPECT_EQ(Queue(), (Steps{{"program directory code", ""}, {"change directory code", "101"}}));
}

TEST_F(StepSenderTest, ADeletionNamesTheCodeThatTheUnitHas) {
  Send("pbGenDelDirCodePrgStep", 5);
  Send("pbGenDelDirCodePrgStep", 6);
  EXPECT_EQ(Queue(), (Steps{{"delete directory code", "101"}, {"delete directory code", "200"}}));
}

TEST_F(StepSenderTest, ADeletionTakesBackWhatIsStillToBeSentForTheRow) {
  Send("pbGenDirCodePrgStep", 5);
  Send("pbGenDirCodePrgStep", 6);
  Send("pbGenDelDirCodePrgStep", 5);
  EXPECT_EQ(Queue(), (Steps{{"program directory code", ""}, {"delete directory code", "101"}}));
}

TEST_F(StepSenderTest, AStepWaitsOnceAndInTheLastPlace) {
  const struct {
    const char* member;
    const char* kind;
    const char* code;
  } rows[] = {{"pbGenDirCodePrgStep", "program directory code", ""},
              {"pbGenChgDirCodePrgStep", "change directory code", "101"},
              {"pbGenDelDirCodePrgStep", "delete directory code", "101"}};
  for (const auto& row : rows) {
    Run("DELETE FROM ProgramSteps");
    Send(row.member, 5);
    Send("pbGenDelDirCodePrgStep", 6);
    Send(row.member, 5);
    EXPECT_EQ(Queue(), (Steps{{"delete directory code", "200"}, {row.kind, row.code}}));
  }
}

TEST_F(StepSenderTest, AStepThatWasSentDoesNotStandForANewOne) {
  Send("pbGenChgDirCodePrgStep", 5);
  Run("UPDATE ProgramSteps SET Sent=-1");
  Send("pbGenChgDirCodePrgStep", 5);
  EXPECT_EQ(Queue().size(), 2U);
}

TEST_F(StepSenderTest, AnAddedCodeLeavesThePendingDeletionOfItsNumberInFrontOfIt) {
  Send("pbGenDelDirCodePrgStep", 6);
  Run("DELETE FROM DirectoryCode WHERE RID=6; "
      "INSERT INTO DirectoryCode (RID, UNITKEY, DIRECTORYCODE) VALUES (7, 1, 200)");
  Send("pbGenDirCodePrgStep", 7);
  EXPECT_EQ(Queue(), (Steps{{"delete directory code", "200"}, {"program directory code", ""}}));
  EXPECT_TRUE(DeletionExists(200));
}

TEST_F(StepSenderTest, StepsOfAnotherUnitAreLeftAlone) {
  Run("INSERT INTO Units (UnitKey, UnitName) VALUES (2, 'Annex')");
  Send("pbGenDelDirCodePrgStep", 6);
  qorcred::Call(*sender_, "pbGenDelDirCodePrgStep", Connection(), 2, 6);
  EXPECT_EQ(Number("SELECT count(*) FROM ProgramSteps"), 2);
  EXPECT_FALSE(
      *qorcred::Call(*sender_, "pbDeleteDirCodePrgStepExists", Connection(), 2, 200).As<bool>());
}

TEST_F(StepSenderTest, LeavesTheCallersArgumentsAlone) {
  for (const char* member :
       {"pbGenDirCodePrgStep", "pbGenChgDirCodePrgStep", "pbGenDelDirCodePrgStep",
        "pbDeleteDirCodePrgStep", "pbDeleteDirCodePrgStepExists"}) {
    std::vector<Value> arguments{Connection(), kUnit, 5};
    sender_->Invoke(member, qorcred::InvokeKind::kCall, arguments);
    EXPECT_EQ(arguments[1], Value(kUnit)) << member;
    EXPECT_EQ(arguments[2], Value(5)) << member;
  }
}

TEST_F(StepSenderTest, WithdrawingQueuesNothingAndKeepsWhatWasSent) {
  Send("pbGenDirCodePrgStep", 6);
  Run("UPDATE ProgramSteps SET Sent=-1");
  Send("pbGenDirCodePrgStep", 6);
  Send("pbDeleteDirCodePrgStep", 6);
  const std::vector<ProgramStep> steps = connection_->session().steps().List(kUnit);
  ASSERT_EQ(steps.size(), 1U);
  EXPECT_TRUE(steps[0].sent);
}

TEST_F(StepSenderTest, KnowsAPendingDeletionByItsCode) {
  Send("pbGenDelDirCodePrgStep", 6);
  EXPECT_TRUE(DeletionExists(200));
  EXPECT_TRUE(DeletionExists(200.0));
  EXPECT_TRUE(DeletionExists("200"));
  EXPECT_FALSE(DeletionExists(201));
  Run("UPDATE ProgramSteps SET Sent=-1");
  EXPECT_FALSE(DeletionExists(200));
}

TEST_F(StepSenderTest, KnowsCodesOfFifteenDigits) {
  Run("UPDATE DirectoryCode SET DIRECTORYCODE=123456789012345 WHERE RID=6");
  Send("pbGenDelDirCodePrgStep", 6);
  EXPECT_EQ(Queue(), (Steps{{"delete directory code", "123456789012345"}}));
  EXPECT_TRUE(DeletionExists(123456789012345.0));
}

TEST_F(StepSenderTest, RefusesUnknownMembersAndCounts) {
  EXPECT_EQ(FailureOf([&] { Send("pbGenNothing", 1); }).number(),
            qorcred::ErrorNumber::kUnknownMember);
  EXPECT_EQ(FailureOf([&] { qorcred::Call(*sender_, "pbGenDirCodePrgStep"); }).number(),
            qorcred::ErrorNumber::kWrongArgumentCount);
}

}  // namespace
}  // namespace qorhost::test
