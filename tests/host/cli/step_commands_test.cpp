// The commands that hand programming steps over.
#include <gmock/gmock.h>

#include <filesystem>

#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

class StepCommands : public RunFixture {
 protected:
  void SetUp() override {
    InitDemo();
    EXPECT_EQ(Run({"--unit", "2", "dircodes", "edit", "101", "--phone", "555-0999"}).status, 0);
  }
  [[nodiscard]] std::string Step() { return Rows({"steps", "list"})[0]["step"].dump(); }
};

TEST_F(StepCommands, AreListedAsBeforeWithoutAWord) {
  const nlohmann::json rows = Rows({"steps"});
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(rows[0]["queued"].get<std::string>().substr(0, 19), "2026-01-31T14:05:09");
  EXPECT_EQ(rows[0]["sent"], false);
}

TEST_F(StepCommands, ListHasTimesWithOffset) {
  const nlohmann::json rows = Rows({"steps", "list", "--unit", "2"});
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(rows[0]["subject"], "101");
  EXPECT_THAT(rows[0]["queued"].get<std::string>(),
              testing::MatchesRegex("2026-01-31T14:05:09[+-][0-9]{2}:[0-9]{2}"));
}

TEST_F(StepCommands, AreExportedAndMarkedAsSent) {
  const std::string step = Step();
  const std::string file = File("steps.txt");
  const Outcome tried = Run({"steps", "export", file, "--unit", "2", "-n"});
  EXPECT_EQ(tried.status, 0) << tried.err;
  EXPECT_NE(tried.out.find("Would write"), std::string::npos) << tried.out;
  EXPECT_FALSE(std::filesystem::exists(file));
  const Outcome exported = Run({"steps", "export", file, "--unit", "2"});
  EXPECT_EQ(exported.status, 0) << exported.err;
  EXPECT_EQ(exported.out, "Wrote 1 step to " + file +
                              " (unit 2, Linden Park).\nWhen the unit has them: qorhost steps done "
                              "--unit 2 --upto " +
                              step + "\n");
  EXPECT_EQ(Run({"steps", "export", file, "--unit", "2"}).status, 1);
  EXPECT_EQ(Run({"steps", "export", file, "--unit", "2", "-n"}).status, 1);
  EXPECT_EQ(Run({"steps", "export", file, "--unit", "2", "--force"}).status, 0);

  EXPECT_EQ(Run({"steps", "done", "--unit", "2", "--upto", step, "-n"}).out,
            "1 step would be marked as sent in unit 2, Linden Park, 1 directory code as the unit "
            "has them. Nothing was changed.\n");
  const auto done =
      nlohmann::json::parse(Run({"steps", "done", "--unit", "2", "--upto", step, "--json"}).out);
  EXPECT_EQ(done["changed"].size(), 1U);
  EXPECT_EQ(done["changed"][0]["id"].dump(), step);
  EXPECT_EQ(done["directory_codes"], 1);
  EXPECT_EQ(done["stored"], true);
  EXPECT_TRUE(Rows({"steps", "list"}).empty());
}

TEST_F(StepCommands, GoToStandardOutputLineByLine) {
  const Outcome outcome = Run({"steps", "export", "-", "--unit", "2"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 3);
  EXPECT_THAT(outcome.out, HasSubstr("\"phone\":\"555-0999\""));
}

TEST_F(StepCommands, AStepThatDoesNotWaitIsAMistakeOfUsage) {
  const Outcome outcome = Run({"steps", "done", "--unit", "2", "--upto", "999"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("no step '999' waits for the unit"));
}

TEST_F(StepCommands, AnUnknownWordIsNoList) {
  EXPECT_EQ(Run({"steps", "bogus"}).status, 2);
}

}  // namespace
}  // namespace qorhost::test
