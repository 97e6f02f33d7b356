// Programs that race for one store, as people at several desks start them.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/host/concurrency/meeting_place.h"
#include "tests/host/concurrency/racing_processes.h"
#include "tests/host/concurrency/small_building.h"

namespace qorhost::test {
namespace {

using Arguments = std::vector<std::string>;

constexpr int kDone = 0;
constexpr int kRefused = 1;

class Races : public testing::Test {
 protected:
  void Begin(int capacity) { place_ = NewMeetingPlace(capacity); }
  [[nodiscard]] Arguments Command(Arguments words) const {
    words.insert(words.begin(), {"--db", place_->Name()});
    words.insert(words.end(), {"--unit", "1", "--yes"});
    return words;
  }
  /// Lets them race; gives how many were done. The others must be refused, and what is stored must
  /// be theirs who were done.
  std::int64_t DoneOf(const std::vector<Arguments>& runs) {
    const std::vector<Finished> all = Race(QORHOST_PROGRAM, runs);
    std::int64_t done = 0;
    std::int64_t entries = 0;
    for (const Finished& one : all) {
      EXPECT_TRUE(one.status == kDone || one.status == kRefused) << one.status << " " << one.said;
      EXPECT_FALSE(one.said.empty());
      done += one.status == kDone ? 1 : 0;
      // Who asks for what the store has already is done without a change.
      entries +=
          one.status == kDone && one.said.find("nothing was changed") == std::string::npos ? 1 : 0;
    }
    EXPECT_EQ(place_->Wrong(), std::vector<std::string>());
    EXPECT_EQ(place_->Entries(), entries);
    return done;
  }

  std::unique_ptr<MeetingPlace> place_;
};

TEST_F(Races, OneOfFourIssuesARange) {
  for (int round = 0; round < kUsualRaces; ++round) {
    Begin(kRoomy);
    const Arguments issue = Command({"credentials", "add", "--type", "card26", "--start", "201",
                                     "--end", "220", "--facility", "7"});
    EXPECT_EQ(DoneOf({issue, issue, issue, issue}), 1);
    EXPECT_EQ(place_->Number("SELECT count(*) FROM CredentialBank"), 24);
  }
}

TEST_F(Races, OneOfFourEntersADirectoryCode) {
  for (int round = 0; round < kUsualRaces; ++round) {
    Begin(kRoomy);
    const Arguments add = Command({"dircodes", "add", "301", "--phone", "555-1"});
    EXPECT_EQ(DoneOf({add, add, add, add}), 1);
    EXPECT_EQ(place_->Number("SELECT count(*) FROM DirectoryCode"), 4);
  }
}

TEST_F(Races, OneOfTwoRangesFindsRoom) {
  const auto issue = [this](const char* first, const char* last) {
    return Command({"credentials", "add", "--type", "card26", "--start", first, "--end", last,
                    "--facility", "7"});
  };
  for (int round = 0; round < kUsualRaces; ++round) {
    Begin(kCodesInUse + 25);
    EXPECT_EQ(DoneOf({issue("201", "220"), issue("301", "320")}), 1);
    EXPECT_EQ(place_->Number("SELECT count(*) FROM CredentialBank"), 24);
  }
}

TEST_F(Races, OneOfThreeTakesTheLastPlace) {
  for (int round = 0; round < kUsualRaces; ++round) {
    Begin(kCodesInUse + 1);
    EXPECT_EQ(DoneOf({Command({"credentials", "add", "--type", "card26", "--start", "201",
                               "--facility", "7"}),
                      Command({"credentials", "add", "--type", "card26", "--start", "301",
                               "--facility", "7"}),
                      Command({"dircodes", "add", "301", "--phone", "555-1"})}),
              1);
  }
}

TEST_F(Races, ACredentialThatFourAssignHasOneHolder) {
  const auto assign = [this](const char* tenant) {
    return Command({"credentials", "assign", "Standard 26-Bit Card-103", tenant});
  };
  for (int round = 0; round < kUsualRaces; ++round) {
    Begin(kRoomy);
    // One who comes late takes it from the holder before: any number of them may be done.
    EXPECT_GE(
        DoneOf({assign("Adam Ann"), assign("Berg Bea"), assign("Cole Cem"), assign("Berg Bea")}),
        1);
    EXPECT_EQ(
        place_->Number("SELECT count(*) FROM Tenants WHERE CREDENTIALID1=3 OR CREDENTIALID2=3"), 1);
  }
}

TEST_F(Races, OneOfTwoRenumberingsGetsTheNumber) {
  for (int round = 0; round < kUsualRaces; ++round) {
    Begin(kRoomy);
    EXPECT_EQ(DoneOf({Command({"credentials", "renumber", "Standard 26-Bit Card-103", "300"}),
                      Command({"credentials", "renumber", "Standard 26-Bit Card-104", "300"})}),
              1);
  }
}

TEST_F(Races, OneWhoIsKilledWhileItWaitsLeavesNothingAndLetsOthersGoOn) {
  Begin(kRoomy);
  const std::vector<std::string> before = place_->Content();
  std::shared_ptr<void> writer = place_->Hold();
  AtATerminal waiting(QORHOST_PROGRAM, Command({"dircodes", "add", "301", "--phone", "555-1"}));
  ASSERT_TRUE(waiting.WaitUntilItSays("another program is writing to the store"));
  waiting.Kill();
  writer.reset();
  EXPECT_EQ(place_->Content(), before);
  EXPECT_EQ(DoneOf({Command({"dircodes", "add", "301", "--phone", "555-1"})}), 1);
}

}  // namespace
}  // namespace qorhost::test
