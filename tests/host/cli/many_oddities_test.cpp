// A desktop database file with more odd cells than memory holds: no more than a few of them are
// told at the terminal, and all in the report.
#include <fmt/format.h>
#include <gmock/gmock.h>

#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

#include "tests/host/cli/run_fixture.h"
#include "tests/host/files/desktop_file/frames_of_file.h"

namespace qorhost::test {
namespace {

namespace fs = std::filesystem;

using testing::AllOf;
using testing::HasSubstr;

class ManyOddities : public RunFixture {
 protected:
  /// A program that tells these frames of any file.
  void ReaderTells(const std::string& frames) {
    std::ofstream(File("frames"), std::ios::binary) << frames;
    std::ofstream(File("reader")) << fmt::format("#!/bin/sh\nexec /bin/cat '{}'\n", File("frames"));
    fs::permissions(File("reader"), fs::perms::owner_all);
    desktopReader_ = File("reader");
    std::ofstream(File("some.mdb")) << "what is read of it stands elsewhere";
  }
  [[nodiscard]] std::size_t LinesWith(const std::string& name, std::string_view part) const {
    std::ifstream in(File(name));
    std::size_t count = 0;
    for (std::string line; std::getline(in, line);) {
      if (line.find(part) != std::string::npos) ++count;
    }
    return count;
  }
  static void AddUnit(FramesOfFile& frames) {
    frames.AddTable("Units", {{"RID", DesktopType::kLong}, {"UnitKey", DesktopType::kLong}}, 1);
    frames.AddRow({FramesOfFile::Long(1), FramesOfFile::Long(1)});
  }
};

constexpr std::uint32_t kRows = 50'123;

TEST_F(ManyOddities, EveryRefusalIsCountedAndListed) {
  FramesOfFile frames;
  AddUnit(frames);
  frames.AddTable("UNITTYPES", {{"DESCRIPTION", DesktopType::kText}}, kRows);
  for (std::uint32_t row = 0; row < kRows; ++row) frames.AddRow({std::nullopt});
  ReaderTells(frames.End());
  const Outcome outcome = Run({"init", "--from", File("some.mdb"), "--report", File("odd.txt")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err,
              AllOf(HasSubstr("qorhost: ... and 50103 more refusals\n"),
                    HasSubstr("qorhost: 50123 rows of '" + File("some.mdb") +
                              "' cannot be brought in, so nothing was. '" + File("odd.txt") +
                              "' lists all; mend them there, or bring the others in with "
                              "--skip-bad-rows\n")));
  EXPECT_EQ(LinesWith("odd.txt", "[null-type]"), kRows);
}

TEST_F(ManyOddities, EveryAdjustedCellIsListedAlsoInATrial) {
  FramesOfFile frames;
  AddUnit(frames);
  frames.AddTable("TenantGroup",
                  {{"RID", DesktopType::kLong},
                   {"UnitKey", DesktopType::kText},
                   {"IsGroupZero", DesktopType::kText}},
                  kRows);
  for (std::uint32_t row = 1; row <= kRows; ++row) {
    frames.AddRow({FramesOfFile::Long(row), FramesOfFile::Text("01"), FramesOfFile::Text("no")});
  }
  ReaderTells(frames.End());
  const Outcome outcome =
      Run({"init", "--from", File("some.mdb"), "--dry-run", "--report", File("odd.csv")});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.out, AllOf(HasSubstr("100246 cells adjusted"),
                                 HasSubstr("\n  50246 more, which the report alone lists\n")));
  EXPECT_EQ(LinesWith("odd.csv", ",number-as-text,"), kRows);
  EXPECT_EQ(LinesWith("odd.csv", ",flag-as-text,"), kRows);
}

}  // namespace
}  // namespace qorhost::test
