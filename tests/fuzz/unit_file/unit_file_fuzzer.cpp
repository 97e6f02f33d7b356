// Reads any bytes as a unit file: as they are and, so that most inputs get to the lines, behind a
// right beginning.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "host/unit/unit_file.h"
#include "tests/fuzz/check.h"

namespace {

using qorhost::UnitCode;
using qorhost::UnitReading;
using qortest::Check;

constexpr std::size_t kMostCuts = 200;

UnitReading Read(const std::string& text) {
  std::istringstream in(text);
  return qorhost::ReadUnitFile(in);
}

std::string Written(const qorhost::UnitFile& file) {
  std::ostringstream out;
  qorhost::WriteUnitFile(out, file);
  return out.str();
}

void CheckFaults(const UnitReading& reading, std::size_t lines) {
  std::size_t before = 0;
  for (const qorhost::LineFault& fault : reading.faults) {
    Check(fault.line > before && fault.line <= lines, "a fault stands at a line of the file");
    Check(!fault.reason.empty(), "a fault has a reason");
    before = fault.line;
  }
}

void CheckCodes(const std::vector<UnitCode>& codes) {
  for (const UnitCode& code : codes) {
    Check(qorhost::FaultIn(code).empty(), "a code that was taken over has no fault");
    UnitCode canonical = code;
    qorhost::MakeCanonical(canonical);
    Check(canonical == code, "a code that was taken over is canonical");
    Check(qorhost::DetailsOf(code).size() == qorhost::kUnitFieldCount, "24 texts for a merge");
  }
}

void CheckFile(const std::string& text) {
  const UnitReading reading = Read(text);
  const auto feeds = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
  // The two lines of the beginning, and one at the end, are looked for even where the file ends
  // before.
  CheckFaults(reading, feeds + 2);
  Check(reading.file.codes.size() + reading.faults.size() <= feeds + 2, "one line, one outcome");
  CheckCodes(reading.file.codes);

  const std::string once = Written(reading.file);
  const UnitReading again = Read(once);
  Check(again.faults.empty(), "what was written is read without fault");
  Check(again.isUnitFile && again.isCounted, "what was written is whole");
  for (std::size_t cut = 1; cut < once.size() && cut < kMostCuts; ++cut) {
    Check(!Read(once.substr(0, once.size() - 1 - cut)).faults.empty(),
          "a file that is cut is told");
  }
  Check(Written(again.file) == once, "writing what was read is byte-identical");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(data, data + size);
  CheckFile(text);
  CheckFile("qorCred unit file 1\nfirmware FC02.010\n" + text);
  CheckFile("qorCred unit file 2\nfirmware FC02.010\n" + text);
  return 0;
}
