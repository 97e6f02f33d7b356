// Takes any bytes for what a reader of desktop databases tells, and settles the rows that are in
// it.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "host/desks/desk_error.h"
#include "host/desks/moving_in/moving_plan.h"
#include "host/files/desktop_file/reader_frames.h"
#include "host/files/desktop_file/reader_message.h"
#include "host/files/file_error.h"
#include "tests/fuzz/check.h"

namespace {

using namespace qorhost;
using namespace qorhost::desktop_file;
using qortest::Check;

/// The bytes with an end that is right for them, as far as they are frames.
std::string WithEnd(std::string_view bytes) {
  std::string frames;
  RunningSum sum;
  std::uint64_t count = 0;
  while (bytes.size() >= kFrameHeader) {
    PayloadReader header(bytes);
    if (header.Byte() == static_cast<std::uint8_t>(FrameKind::kEnd)) break;
    const std::size_t size = kFrameHeader + header.Number();
    if (size > bytes.size()) break;
    sum.Add(bytes.substr(0, size));
    frames.append(bytes.substr(0, size));
    bytes.remove_prefix(size);
    ++count;
  }
  Payload end;
  end.AddLarge(count);
  end.AddLarge(sum.sum());
  return frames + FrameHeaderOf(FrameKind::kEnd, end.bytes().size()) + end.bytes();
}

void CheckPlan(const DesktopFile& file) {
  try {
    const MovingPlan plan(file, "fuzzed.mdb", std::nullopt);
    for (const MovedTable& table : plan.numbers()) {
      Check(table.inFile == table.broughtIn + table.refused, "every row is somewhere");
    }
    for (const SettledCell& cell : plan.settled().named()) {
      Check(!cell.kind.empty() && !cell.reason.empty(), "what is settled has a reason");
      Check(cell.settlement != Settlement::kAdjusted || !cell.instead.empty(),
            "what is adjusted tells the new value");
    }
    Check(plan.CountOf(Settlement::kRefused) >= plan.refusedRows(), "a refused row is told");
  } catch (const RefusedError&) {
    // It holds no building.
  }
}

void Read(const std::string& frames) {
  try {
    CheckPlan(TablesIn(frames, "fuzzed.mdb", {}));
  } catch (const FileError&) {
    // The reader says why not.
  } catch (const BrokenFrames&) {
    // It says nothing that is whole.
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  Read(bytes);
  Read(WithEnd(bytes));
  return 0;
}
