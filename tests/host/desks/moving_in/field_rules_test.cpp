// What becomes of odd fields of the directory-code report.
#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/host/desks/moving_in/made_tables.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;

TEST(FieldRules, WidthsBelowZeroBecomeTheUsualOnes) {
  const auto field = [](std::int64_t rid, const char* name, DesktopCell width) {
    return std::vector<DesktopCell>{N(rid), DesktopText{name, true}, std::move(width), N(1),
                                    N(rid)};
  };
  const MovingPlan plan(
      {{UnitTable({1}), TableOf("TenantSelectionFields",
                                {"RID", "FieldName", "DisplayWidth", "Display", "DisplaySeq"},
                                {field(51, "DirectoryCode.DirectoryCode", N(0)),
                                 field(52, "DirectoryCode.PhoneNumber", N(-1)),
                                 field(53, "DirectoryCode.Extension", N(2147483647)),
                                 field(54, "DirectoryCode.TimeDelay", DesktopNull{})})}},
      "some.mdb", std::nullopt);
  EXPECT_THAT(ToldOf(plan, "TenantSelectionFields"),
              ElementsAre("adjusted row 2 DisplayWidth -1 -> Null [value-range]"));
}

/// The fields of a report, in the order of their RIDs from 51 on.
struct ReportField {
  const char* column;
  std::int64_t display;
  DesktopCell sequence;
};

std::vector<std::string> ToldOfFields(const std::vector<ReportField>& fields) {
  std::vector<std::vector<DesktopCell>> rows;
  for (const ReportField& field : fields) {
    rows.push_back({N(51 + static_cast<std::int64_t>(rows.size())), DesktopText{field.column, true},
                    N(field.display), field.sequence});
  }
  return ToldOf(MovingPlan({{UnitTable({1}), TableOf("TenantSelectionFields",
                                                     {"RID", "FieldName", "Display", "DisplaySeq"},
                                                     std::move(rows))}},
                           "some.mdb", std::nullopt),
                "TenantSelectionFields");
}

TEST(FieldRules, FieldsThatAreNotDisplayedComeBehindThoseThatAre) {
  EXPECT_THAT(ToldOfFields({{"DirectoryCode.Extension", 0, N(2)},
                            {"DirectoryCode.DirectoryCode", 1, N(1)},
                            {"directorycode.PhoneNumber", 1, N(3)},
                            {"DirectoryCode.TimeDelay", 0, N(1)},
                            {"DirectoryCode.DisplayName", 0, N(4)},
                            {"Tenants.LastName", 0, N(1)}}),
              ElementsAre("adjusted row 1 DisplaySeq 2 -> 6 [field-order]",
                          "adjusted row 4 DisplaySeq 1 -> 5 [field-order]"));
  EXPECT_THAT(ToldOfFields({{"DirectoryCode.DirectoryCode", 1, N(1)},
                            {"DirectoryCode.PhoneNumber", 1, N(2)},
                            {"DirectoryCode.TimeDelay", 0, N(3)}}),
              testing::IsEmpty());
  EXPECT_THAT(ToldOfFields({{"DirectoryCode.TimeDelay", 0, N(3)},
                            {"DirectoryCode.PhoneNumber", 0, DesktopNull{}}}),
              testing::IsEmpty())
      << "no field is displayed";
}

TEST(FieldRules, FieldsThatAreNotDisplayedDoNotShareThePlaceOfTheLastThatIs) {
  EXPECT_THAT(ToldOfFields({{"DirectoryCode.Extension", 0, N(2)},
                            {"DirectoryCode.DirectoryCode", 1, N(1)},
                            {"DirectoryCode.PhoneNumber", 1, N(2)}}),
              ElementsAre("adjusted row 1 DisplaySeq 2 -> 3 [field-order]"));
}

/// A store has Null in front of every number.
TEST(FieldRules, FieldsWithoutAPlaceStandBeforeAllOthers) {
  EXPECT_THAT(ToldOfFields({{"DirectoryCode.Extension", 0, DesktopNull{}},
                            {"DirectoryCode.DirectoryCode", 1, N(-5)}}),
              ElementsAre("adjusted row 1 DisplaySeq Null -> 1 [field-order]"));
  EXPECT_THAT(ToldOfFields({{"DirectoryCode.Extension", 0, DesktopNull{}},
                            {"DirectoryCode.DirectoryCode", 1, DesktopNull{}},
                            {"DirectoryCode.TimeDelay", 0, N(-1)}}),
              ElementsAre("adjusted row 1 DisplaySeq Null -> 1 [field-order]"));
}

TEST(FieldRules, FieldsThatCannotComeBehindTheLastNumberAreTold) {
  constexpr std::int64_t kLast = 2147483647;
  EXPECT_THAT(ToldOfFields({{"DirectoryCode.Extension", 0, N(7)},
                            {"DirectoryCode.TimeDelay", 0, N(8)},
                            {"DirectoryCode.DirectoryCode", 1, N(kLast)}}),
              ElementsAre("kept row 1 DisplaySeq 7 [field-order]",
                          "kept row 2 DisplaySeq 8 [field-order]"));
  EXPECT_THAT(ToldOfFields({{"DirectoryCode.Extension", 0, N(7)},
                            {"DirectoryCode.TimeDelay", 0, N(kLast)},
                            {"DirectoryCode.DirectoryCode", 1, N(9)}}),
              ElementsAre("adjusted row 1 DisplaySeq 7 -> 2147483647 [field-order]"))
      << "which of two that are not displayed comes first does not matter";
}

}  // namespace
}  // namespace qorhost::test
