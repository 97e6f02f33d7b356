// What becomes of odd settings of a unit.
#include <gmock/gmock.h>

#include <string>
#include <string_view>

#include "tests/host/desks/moving_in/made_tables.h"

namespace qorhost::test {
namespace {

struct SettingCase {
  const char* column;
  std::int64_t lowest;
  std::int64_t highest;
};

class MovedSettings : public testing::TestWithParam<SettingCase> {};

TEST_P(MovedSettings, BeyondTheirBoundsAreToldAndKept) {
  const auto plan = [](std::int64_t value, std::int64_t ends) {
    return MovingPlan(
        {{UnitTable({1}),
          TableOf("UnitSettings", {"RID", "UnitKey", "RECORDDEACTIVATION", GetParam().column},
                  {{N(1), N(1), N(ends), N(value)}})}},
        "some.mdb", std::nullopt);
  };
  const auto told = [&](std::int64_t value, std::int64_t ends) {
    const MovingPlan made = plan(value, ends);
    for (const SettledCell& cell : made.settled().named()) {
      if (cell.column == GetParam().column)
        return std::string(WordFor(cell.settlement)) + ' ' + cell.kind;
    }
    return std::string();
  };
  constexpr std::int64_t kAfterDays = 2;
  EXPECT_EQ(told(GetParam().lowest - 1, kAfterDays), "kept value-range");
  EXPECT_EQ(told(GetParam().lowest, kAfterDays), "");
  EXPECT_EQ(told(GetParam().highest, kAfterDays), "");
  EXPECT_EQ(told(GetParam().highest + 1, kAfterDays), "kept value-range");
  const bool isOfDays = std::string_view(GetParam().column) == "DEACTIVATIONDAYS";
  EXPECT_EQ(told(GetParam().highest + 1, 0), isOfDays ? "" : "kept value-range");
}
INSTANTIATE_TEST_SUITE_P(All, MovedSettings,
                         testing::Values(SettingCase{"MaxDigitsDirectoryCode", 1, 15},
                                         SettingCase{"MaxDigitsEntryCode", 1, 15},
                                         SettingCase{"DEACTIVATIONDAYS", 1, 36500},
                                         SettingCase{"CARDDEFAULTFACILITYCODE", 0, 255},
                                         SettingCase{"RFDEFAULTFACILITYCODE", 0, 255}),
                         [](const auto& one) { return std::string(one.param.column); });

}  // namespace
}  // namespace qorhost::test
