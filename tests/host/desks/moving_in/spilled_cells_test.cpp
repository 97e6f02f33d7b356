// Settled cells that memory does not hold.
#include "host/desks/moving_in/spilled_cells.h"

#include <fcntl.h>
#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "host/files/desktop_file/nameless_file.h"
#include "host/files/file_error.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

using desktop_file::Descriptor;
using testing::HasSubstr;
using testing::ThrowsMessage;

SettledCell CellAt(std::string table, std::size_t row, std::string column) {
  return {Settlement::kAdjusted,
          std::move(table),
          row,
          "RID 7",
          std::move(column),
          "seconds",
          "\"a\nb\"",
          "a reason",
          "\"\""};
}

TEST(SpilledCells, ComeBackWholeAndInOrder) {
  SpilledCells cells;
  cells.Add(CellAt("Tenants", 2, "first"));
  cells.Add(CellAt("Tenants", 1, "second"));
  cells.Add(CellAt("Units", 9, "third"));
  cells.Add(CellAt("Tenants", 2, "fourth"));
  cells.Sort({"Units", "Tenants"});
  ASSERT_EQ(cells.size(), 4U);
  std::vector<std::string> columns;
  for (std::size_t at = 0; at < cells.size(); ++at) columns.push_back(cells.At(at).column);
  EXPECT_THAT(columns, testing::ElementsAre("third", "second", "first", "fourth"));
  const SettledCell cell = cells.At(0);
  const SettledCell expected = CellAt("Units", 9, "third");
  EXPECT_EQ(cell.settlement, expected.settlement);
  EXPECT_EQ(cells.SettlementAt(0), expected.settlement);
  EXPECT_EQ(cell.table, expected.table);
  EXPECT_EQ(cell.row, expected.row);
  EXPECT_EQ(cell.identity, expected.identity);
  EXPECT_EQ(cell.kind, expected.kind);
  EXPECT_EQ(cell.value, expected.value);
  EXPECT_EQ(cell.reason, expected.reason);
  EXPECT_EQ(cell.instead, expected.instead);
}

TEST(SpilledCells, WithoutRoomThatIsTold) {
  SpilledCells cells(Descriptor(open("/dev/full", O_RDWR | O_CLOEXEC)));
  EXPECT_THAT(
      [&] {
        for (std::size_t row = 1; row < 10'000; ++row) cells.Add(CellAt("Units", row, "UnitName"));
      },
      ThrowsMessage<FileError>(HasSubstr("cannot keep what is odd in the file")));
  EXPECT_THAT([&] { cells.Sort({"Units"}); }, ThrowsMessage<FileError>(HasSubstr("cannot keep")));
}

TEST(SpilledCells, WhatIsLostIsNotTakenForACell) {
  Descriptor file = desktop_file::NamelessFile("test");
  const Descriptor same(dup(file.number()));
  SpilledCells cells(std::move(file));
  cells.Add(CellAt("Units", 1, "UnitName"));
  cells.Sort({"Units"});
  ASSERT_EQ(ftruncate(same.number(), 20), 0);
  EXPECT_THAT([&] { (void)cells.At(0); },
              ThrowsMessage<FileError>(HasSubstr("cannot read back what is odd")));
}

}  // namespace
}  // namespace qorhost::test
