// --trace and --trace-file: what they write, where, and that it is enough to run the controllers
// again.
#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "tests/host/cli/run_fixture.h"
#include "tests/trace/trace_grammar.h"
#include "tests/trace/trace_replay.h"

namespace qorhost::test {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::StartsWith;

class Trace : public RunFixture {
 protected:
  [[nodiscard]] std::vector<std::string> LinesOf(const std::string& name) const {
    std::ifstream file(File(name));
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
  }
};

TEST_F(Trace, TellsAnOperationAtTheMarginAndItsCallsBelow) {
  InitDemo();
  ASSERT_EQ(Run({"--unit", "2", "--trace-file", File("calls.txt"), "credentials", "add", "--type",
                 "card26", "--start", "9001", "--facility", "7"})
                .status,
            0);
  const std::vector<std::string> lines = LinesOf("calls.txt");
  EXPECT_THAT(lines, Contains("new clsCredential@1"));
  EXPECT_THAT(lines,
              Contains("  CreateObject(progId: \"qorDBI.clsDBManager\") -> qorDBI.clsDBManager@2"));
  EXPECT_THAT(lines, Contains(StartsWith("clsCredential@1.pbSave(objConn: objConn@6, "
                                         "lngUnitKey: 2, blnIsTBL: False, blnEditCR: False, "
                                         "lngRID: 0)")));
  EXPECT_THAT(lines, Contains(testing::MatchesRegex("  objConn@6.BeginTrans\\(\\)")));
  EXPECT_THAT(lines, Contains(testing::MatchesRegex("-> True out lngRID: [0-9]+")));
  EXPECT_THAT(lines, Contains(testing::MatchesRegex("  rows@[0-9]+\\(row: 0, column: 0\\) -> .*")));
  EXPECT_THAT(lines, Contains(StartsWith("host \"SELECT UnitKey, UnitName FROM Units")));
  EXPECT_THAT(lines, Contains("Release clsCredential@1"));
  EXPECT_THAT(lines, Contains("  Release qorDBI.clsDBManager@2"));
}

TEST_F(Trace, OfTheTourIsTheSameWhenItIsReplayed) {
  ASSERT_EQ(Run({"--trace-file", File("tour.txt"), "tour"}).status, 0);
  const std::vector<std::string> trace = LinesOf("tour.txt");
  ASSERT_GT(trace.size(), 10000U);
  EXPECT_EQ(qortest::DifferenceInReplay(trace), "");
  EXPECT_EQ(qortest::FaultInTrace(trace), "");
}

TEST_F(Trace, ReplayedWithAnotherAnswerIsAnotherTrace) {
  ASSERT_EQ(Run({"--trace-file", File("tour.txt"), "tour"}).status, 0);
  std::vector<std::string> trace = LinesOf("tour.txt");
  const auto answer = std::find_if(trace.begin(), trace.end(), [](const std::string& line) {
    return line.find(".Text -> \"") != std::string::npos;
  });
  ASSERT_NE(answer, trace.end());
  *answer = answer->substr(0, answer->find(" -> ")) + " -> \"77\"";
  EXPECT_NE(qortest::Replayed(trace), trace);
}

TEST_F(Trace, FileOfACommandThatFailsIsWritten) {
  InitDemo();
  EXPECT_EQ(Run({"--unit", "2", "--trace-file", File("calls.txt"), "credentials", "add", "--type",
                 "card30", "--start", "20", "--facility", "64"})
                .status,
            1);
  EXPECT_THAT(LinesOf("calls.txt"),
              Contains(HasSubstr("MsgBox(text: \"Please enter a Facility Code between 0 and 63.\", "
                                 "style: 64, title: \"Pello RT\") -> 1")));
}

TEST_F(Trace, FileThatIsThereStaysUnlessForced) {
  InitDemo();
  std::ofstream(File("calls.txt")) << "mine\n";
  const Outcome refused = Run({"--trace-file", File("calls.txt"), "--unit", "2", "credentials",
                               "delete", "Transmitter-325", "--yes"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err, HasSubstr("exists already: name another trace file, or replace it"));
  EXPECT_EQ(LinesOf("calls.txt"), std::vector<std::string>{"mine"});
  EXPECT_EQ(Run({"--unit", "2", "credentials", "delete", "Transmitter-325", "--yes"}).status, 0)
      << "nothing was done before";

  EXPECT_EQ(Run({"--force", "--trace-file", File("calls.txt"), "credentials", "list"}).status, 0);
  EXPECT_THAT(LinesOf("calls.txt"), Contains("new clsCredential@1"));
}

TEST_F(Trace, ForceAloneIsAMistake) {
  InitDemo();
  const Outcome refused = Run({"--force", "init", "--demo"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_THAT(refused.err, HasSubstr("--trace-file"));
  EXPECT_EQ(Rows({"units"}).size(), 3U);
}

TEST_F(Trace, IsNeverWrittenOverTheStore) {
  InitDemo();
  const Outcome refused =
      Run({"--force", "--trace-file", File("building.db"), "credentials", "list"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err, HasSubstr("belongs to the store and is never replaced"));
  EXPECT_EQ(Rows({"units"}).size(), 3U);
}

TEST_F(Trace, FileThatCannotBeWrittenIsToldBeforeAnythingIsDone) {
  InitDemo();
  const Outcome refused = Run({"--trace-file", File("nowhere/calls.txt"), "--unit", "2",
                               "credentials", "delete", "Transmitter-325", "--yes"});
  EXPECT_EQ(refused.status, 3);
  EXPECT_EQ(Run({"--unit", "2", "credentials", "delete", "Transmitter-325", "--yes"}).status, 0);
}

}  // namespace
}  // namespace qorhost::test
