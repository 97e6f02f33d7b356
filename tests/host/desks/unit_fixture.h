// Units with directory codes, and the store's codes as a unit has them.
#pragma once

#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

#include "host/desks/unit_export.h"
#include "host/desks/unit_merge.h"
#include "tests/host/desks/dir_code_fixture.h"

namespace qorhost::test {

class UnitFixture : public DirCodeDeskFixture {
 protected:
  static std::string TextOf(const UnitFile& unit) {
    std::ostringstream out;
    WriteUnitFile(out, unit);
    return out.str();
  }
  /// What a unit of the store would hold.
  [[nodiscard]] UnitFile Exported(std::int32_t unitKey = kUnit, const std::string& firmware = "") {
    return ExportUnit(session(), unitKey, firmware, Unholdable::kLeftOut).file;
  }
  /// Merges a unit that was read without a fault, whatever is deleted.
  [[nodiscard]] MergeReport Merge(UnitFile unit, std::int32_t unitKey = kUnit) {
    const UnitReading reading{std::move(unit), {}};
    return UnitMerge(session(), unitKey, reading, BadLines::kRefused, Deletions::kAll)
        .Apply(nullptr);
  }
  /// The unit's code with that number.
  static UnitCode& CodeIn(UnitFile& unit, std::int64_t number) {
    for (UnitCode& code : unit.codes) {
      if (NumberOf(code) == number) {
        return code;
      }
    }
    throw std::out_of_range("no such code");
  }
  static void Drop(UnitFile& unit, std::int64_t number) {
    std::erase_if(unit.codes, [&](const UnitCode& code) { return NumberOf(code) == number; });
  }
  /// Gives the unit a code like 101 under another number.
  static void AddCopy(UnitFile& unit, const std::string& number) {
    unit.codes.push_back(CodeIn(unit, 101));
    unit.codes.back()[qorcred::unit_place::kCode] = number;
  }
};

/// "1 inserted, 2 updated, 3 deleted, 4 unchanged"
[[nodiscard]] inline std::string CountsOf(const MergeReport& report) {
  return std::to_string(report.inserted) + " inserted, " + std::to_string(report.updated) +
         " updated, " + std::to_string(report.deleted) + " deleted, " +
         std::to_string(report.unchanged) + " unchanged";
}

}  // namespace qorhost::test
