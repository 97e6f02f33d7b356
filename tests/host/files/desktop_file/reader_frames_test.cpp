// How many cells are taken from the frames of a reader.
#include "host/files/desktop_file/reader_frames.h"

#include <gmock/gmock.h>
#include <sys/resource.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "host/files/file_error.h"
#include "tests/host/files/desktop_file/frames_of_file.h"

namespace qorhost::test {
namespace {

using desktop_file::TablesIn;

using testing::AllOf;
using testing::HasSubstr;

std::string FramesOfEmptyRows(std::uint32_t columns, std::uint32_t rows) {
  FramesOfFile frames;
  frames.AddTable("Units", std::vector<DesktopColumn>(columns, {"Column", DesktopType::kLong}),
                  rows);
  const std::vector<std::optional<std::string>> empty(columns);
  for (std::uint32_t row = 0; row < rows; ++row) frames.AddRow(empty);
  return frames.End();
}

std::string RefusalOfFrames(const std::string& frames, const DesktopReading& reading) {
  try {
    (void)TablesIn(frames, "some.mdb", reading);
  } catch (const FileError& failure) {
    return failure.what();
  }
  return "read";
}

TEST(ReaderFrames, HaveAsManyCellsAsAreRead) {
  constexpr std::uint32_t kColumns = 7;
  constexpr std::uint32_t kRows = 5;
  const std::string frames = FramesOfEmptyRows(kColumns, kRows);
  DesktopReading reading;
  reading.mostCells = (kColumns + 1) * (kRows + 1);  // each row and the columns count as well
  EXPECT_EQ(RefusalOfFrames(frames, reading), "read");
  --reading.mostCells;
  EXPECT_THAT(RefusalOfFrames(frames, reading),
              AllOf(HasSubstr("'some.mdb' has more than the 47 cells"),
                    HasSubstr("'Units', which has 7 columns"), HasSubstr("in a copy, and name")));
}

TEST(ReaderFrames, TablesAndRowsWithoutColumnsCountToo) {
  DesktopReading reading;
  reading.mostCells = 3;
  FramesOfFile tables;
  for (int at = 0; at < 4; ++at) tables.AddTable("Units", {}, 0);
  EXPECT_THAT(RefusalOfFrames(tables.End(), reading), HasSubstr("more than the 3 cells"));
  EXPECT_EQ(RefusalOfFrames(FramesOfEmptyRows(0, 2), reading), "read");
  EXPECT_THAT(RefusalOfFrames(FramesOfEmptyRows(0, 3), reading), HasSubstr("than the 3 cells"));
}

std::size_t MostMegabytes() {
  constexpr std::size_t kKilobytes = 1024;
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<std::size_t>(usage.ru_maxrss) / kKilobytes;
}

/// As many rows of empty cells as 128 MB of frames hold: with a value for each they took 2 GB.
TEST(ReaderFrames, WideEmptyRowsTakeABoundedMemory) {
  constexpr std::uint32_t kColumns = 255;
  constexpr std::uint32_t kRows = 125'000;
  constexpr std::size_t kMegabytes = 500;
  const std::string frames = FramesOfEmptyRows(kColumns, kRows);
  ASSERT_LT(frames.size(), DesktopReading().mostBytes);
  // In a process of its own, whose most memory is not that of tests before.
  EXPECT_EXIT(
      {
        const std::size_t before = MostMegabytes();
        const bool isRefused = RefusalOfFrames(frames, {}).ends_with("and name that");
        const std::size_t taken = MostMegabytes() - before;
        std::fprintf(stderr, "%zu MB", taken);
        std::_Exit(isRefused && taken < kMegabytes ? EXIT_SUCCESS : EXIT_FAILURE);
      },
      testing::ExitedWithCode(EXIT_SUCCESS), "");
}

}  // namespace
}  // namespace qorhost::test
