// Nobody waits for one who reads a message.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/host/concurrency/meeting_place.h"
#include "tests/host/concurrency/seat_operations.h"
#include "tests/host/concurrency/small_building.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class MessageBoxes : public testing::Test {
 protected:
  void SetUp() override {
    place_ = NewMeetingPlace(kCodesInUse);
    anna_ = place_->NewSeat("anna", false);
    bert_ = place_->NewSeat("bert", false);
  }

  std::unique_ptr<MeetingPlace> place_;
  std::unique_ptr<Seat> anna_;
  std::unique_ptr<Seat> bert_;
};

TEST_F(MessageBoxes, ANoticeBehindTheFirstWriteIsShownWhenOthersMayWrite) {
  Told meanwhile;
  anna_->onBox = [&](std::string_view) { meanwhile = RunAt(EditPhone("102", "555-1"), *bert_); };
  // The unit is full: the controller says so when it has taken the card from its holder.
  const Told told = RunAt(AssignCard("101", "Berg Bea"), *anna_);
  EXPECT_EQ(told.ending, Ending::kRefused) << TextOf(told);
  EXPECT_THAT(anna_->shown, ElementsAre("You cannot enter more than 7 combined codes."));
  EXPECT_EQ(told.messages, anna_->shown);
  EXPECT_TRUE(meanwhile.done()) << TextOf(meanwhile);
  EXPECT_EQ(place_->Number("SELECT CREDENTIALID1 FROM Tenants WHERE RID=1"), 1);
  EXPECT_EQ(place_->Number("SELECT count(*) FROM ProgramSteps WHERE "
                           "Kind='program tenant'"),
            0);
}

TEST_F(MessageBoxes, AQuestionIsAskedWhenOthersMayWrite) {
  Told meanwhile;
  anna_->onBox = [&](std::string_view) { meanwhile = RunAt(EditPhone("102", "555-1"), *bert_); };
  const Told told = RunAt(DeleteCard("101"), *anna_);
  EXPECT_EQ(anna_->shown.size(), 1U);
  EXPECT_TRUE(meanwhile.done()) << TextOf(meanwhile);
  // What was asked about has not changed: the answer still holds.
  EXPECT_TRUE(told.done()) << TextOf(told);
  EXPECT_EQ(place_->Wrong(), std::vector<std::string>());
}

TEST_F(MessageBoxes, WhatWasAskedAboutMayChangeWhileTheQuestionIsOpen) {
  anna_->onBox = [&](std::string_view) {
    EXPECT_TRUE(RunAt(AssignCard("101", std::nullopt), *bert_).done());
  };
  const Told told = RunAt(DeleteCard("101"), *anna_);
  EXPECT_EQ(told.ending, Ending::kStale) << TextOf(told);
  EXPECT_EQ(anna_->shown.size(), 1U);
  EXPECT_THAT(told.changedBy, ElementsAre(HasSubstr("bert")));
  EXPECT_EQ(place_->Number("SELECT count(*) FROM CredentialBank"), 4);
}

TEST_F(MessageBoxes, AnswerNoChangesNothing) {
  anna_->yes = false;
  const std::vector<std::string> before = place_->Content();
  EXPECT_FALSE(RunAt(DeleteCard("101"), *anna_).done());
  EXPECT_FALSE(RunAt(DeleteCode("101"), *anna_).done());
  EXPECT_EQ(place_->Content(), before);
}

}  // namespace
}  // namespace qorhost::test
