// The commands for the history of a store.
#include <gmock/gmock.h>

#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

class HistoryCommands : public RunFixture {
 protected:
  void SetUp() override {
    InitDemo();
    const Outcome added = Run({"dircodes", "add", "250", "--unit", "2", "--phone", "555-0199"});
    ASSERT_EQ(added.status, 0) << added.err;
    const nlohmann::json latest = Rows({"history", "list", "--limit", "1"});
    entry_ = std::to_string(latest.at(0).at("entry").get<int>());
  }

  [[nodiscard]] std::size_t Codes() { return Rows({"dircodes", "list", "--unit", "2"}).size(); }

  std::string entry_;  // of the code that was added
};

TEST_F(HistoryCommands, ListNarrowsByTheUnitThatIsNamed) {
  EXPECT_EQ(Rows({"history", "list", "--subject", "250", "--unit", "2"}).size(), 1U);
  EXPECT_EQ(Rows({"history", "list", "--limit", "1", "--unit", "2"}).at(0).at("unit"), 2);
  const nlohmann::json latest = Rows({"history", "list", "--limit", "1", "--unit", "1"});
  EXPECT_EQ(latest.at(0).at("what"), "demo building");
}

TEST_F(HistoryCommands, ShowHasTheEntryAboveItsFields) {
  const Outcome shown = Run({"history", "show", entry_});
  EXPECT_EQ(shown.status, 0) << shown.err;
  EXPECT_THAT(shown.out, testing::StartsWith("entry " + entry_ + " ("));
  EXPECT_THAT(shown.out, HasSubstr("PHONENUMBER                555-0199\n"));
}

TEST_F(HistoryCommands, UndoTellsWhatItDid) {
  const std::size_t codes = Codes();
  const Outcome trial = Run({"history", "undo", entry_, "--dry-run"});
  EXPECT_EQ(trial.status, 0) << trial.err;
  EXPECT_THAT(trial.out, HasSubstr(" can be undone: 1 row; nothing was changed\n"));
  EXPECT_EQ(Codes(), codes);
  const Outcome undone = Run({"history", "undo", entry_});
  EXPECT_EQ(undone.status, 0) << undone.err;
  EXPECT_THAT(undone.out, HasSubstr(" undone: 1 row as before\n"));
  EXPECT_EQ(Codes(), codes - 1);
  const Outcome again = Run({"history", "undo", entry_});
  EXPECT_EQ(again.status, 1) << again.out;
}

TEST_F(HistoryCommands, CheckTakesTheHeadsThatItPrints) {
  const nlohmann::json heads = Rows({"history", "check"});
  ASSERT_EQ(heads.size(), 3U);
  const std::string head = heads.at(1).at("head");
  EXPECT_EQ(Run({"history", "check", "--head", head}).status, 0);
  const Outcome other = Run({"history", "check", "--head", "2:1:" + std::string(64, '0')});
  EXPECT_EQ(other.status, 1);
  EXPECT_EQ(other.err, "qorhost: entry 1 of unit 2 is not the one that was noted\n");
}

TEST_F(HistoryCommands, AWrongInputIsNamedAndWhereToLook) {
  const Outcome entry = Run({"history", "undo", "9999"});
  EXPECT_EQ(entry.status, 2);
  EXPECT_EQ(entry.err,
            "qorhost: there is no entry '9999' in the history: 'qorhost history list' has their "
            "numbers\n");
  const Outcome head = Run({"history", "check", "--head", "2:1"});
  EXPECT_EQ(head.status, 2);
  EXPECT_EQ(head.err,
            "qorhost: --head '2:1' is no head, which is UNIT:ENTRY:HASH: 'qorhost history check' "
            "prints them\n");
  const Outcome since = Run({"history", "list", "--since", "100000d"});
  EXPECT_EQ(since.status, 2);
  EXPECT_EQ(since.err, "qorhost: --since '100000d' is no number of days: write 0d to 99999d\n");
}

}  // namespace
}  // namespace qorhost::test
