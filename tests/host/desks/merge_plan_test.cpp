// Which code of a unit belongs to which row, and what a merge would do about it.
#include "host/desks/merge_plan.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace qorhost {
namespace {

using qorcred::unit_place::Place;

UnitCode Code(const std::string& number, const std::string& phone = "1") {
  UnitCode code;
  code[Place::kCode] = number;
  code[Place::kPhone] = phone;
  MakeCanonical(code);
  return code;
}

StoredCode Stored(std::int32_t rid, const std::string& number,
                  std::optional<double> previous = std::nullopt) {
  StoredCode row;
  row.rid = rid;
  row.code = Code(number);
  row.number = static_cast<double>(NumberOf(row.code));
  row.previous = previous;
  return row;
}

/// "delete 3; update 1 to 7: code; insert 9"
std::string Told(const std::vector<UnitCode>& unit, const std::vector<StoredCode>& stored,
                 const MergeRules& rules = {}) {
  std::string told;
  for (const MergeStep& step : PlanMerge(unit, stored, rules).steps) {
    told += told.empty() ? "" : "; ";
    const auto rid = [&] { return std::to_string(stored[step.stored].rid); };
    const auto code = [&] { return unit[step.unitCode][Place::kCode]; };
    switch (step.action) {
      case MergeAction::kDelete:
        told += "delete " + rid() + (step.what.empty() ? "" : ": " + step.what);
        break;
      case MergeAction::kUpdate:
        told += "update " + rid() + " to " + code() + ": " + step.what;
        break;
      case MergeAction::kInsert:
        told += "insert " + code();
        break;
    }
  }
  return told;
}

TEST(MergePlan, EqualSidesNeedNothing) {
  EXPECT_EQ(Told({Code("1"), Code("2")}, {Stored(10, "2"), Stored(11, "1")}), "");
  EXPECT_EQ(PlanMerge({Code("1")}, {Stored(10, "1")}, {}).unchanged, 1U);
  EXPECT_EQ(Told({}, {}), "");
}

TEST(MergePlan, DeletionsComeFirstAndInsertsLast) {
  EXPECT_EQ(Told({Code("9"), Code("1", "5")}, {Stored(10, "1"), Stored(11, "2")}),
            "delete 11; update 10 to 1: phone; insert 9");
}

TEST(MergePlan, AStepIsAboutTheUnitsCodeAndTheStoresRow) {
  const std::vector<UnitCode> unit{Code("9"), Code("1", "5")};
  const std::vector<StoredCode> stored{Stored(10, "7", 1), Stored(11, "2")};
  std::string told;
  for (const MergeStep& step : PlanMerge(unit, stored, {}).steps) {
    const MergeSubject subject = SubjectOf(step, unit, stored);
    told += fmt::format("{}@{} ", subject.number, subject.rid.value_or(0));
  }
  EXPECT_EQ(told, "2@11 1@10 9@0 ");
}

TEST(MergePlan, APreviousNumberMatchesWhenNoRowHasTheNumberNow) {
  EXPECT_EQ(Told({Code("1")}, {Stored(10, "5", 1)}), "update 10 to 1: code");
  EXPECT_EQ(Told({Code("1")}, {Stored(10, "5", 1), Stored(11, "1")}), "delete 10");
}

TEST(MergePlan, ARowWhoseNumberTheUnitHasIsNotFoundByItsPreviousOne) {
  EXPECT_EQ(Told({Code("1"), Code("5")}, {Stored(10, "5", 1)}), "insert 1");
}

TEST(MergePlan, OfTwoRowsWithOneNumberTheFirstIsKept) {
  EXPECT_EQ(Told({Code("1")}, {Stored(10, "1"), Stored(11, "1")}), "delete 11");
}

TEST(MergePlan, TwoCodesSwappedInTheStoreAreUpdatedInPlace) {
  StoredCode first = Stored(10, "2", 1);
  first.code[Place::kPhone] = "7";
  EXPECT_EQ(Told({Code("1"), Code("2")}, {first, Stored(11, "1", 2)}), "update 10 to 2: phone");
}

TEST(MergePlan, ARowThatAUnitCannotHoldIsUpdatedWithTheReason) {
  StoredCode row = Stored(10, "1");
  row.obstacle = "its start date is odd";
  EXPECT_EQ(Told({Code("1")}, {row}), "update 10 to 1: the row: its start date is odd");
}

TEST(MergePlan, WithoutDisplayOptionsTheModeDoesNotCount) {
  UnitCode code = Code("1");
  code[Place::kDisplayMode] = "3";
  EXPECT_EQ(Told({code}, {Stored(10, "1")}), "update 10 to 1: display mode");
  EXPECT_EQ(Told({code}, {Stored(10, "1")}, {false, true}), "");
}

TEST(MergePlan, WithoutDeletionsTheRowsAreCounted) {
  const MergePlan plan = PlanMerge({}, {Stored(10, "1"), Stored(11, "2")}, {true, false});
  EXPECT_TRUE(plan.steps.empty());
  EXPECT_EQ(plan.kept, 2U);
}

TEST(MergePlan, ADeletionNamesWhatGoesWithIt) {
  StoredCode row = Stored(10, "1");
  row.state = 1;
  row.tenants = {"Abel Karin", "Doe Jane"};
  EXPECT_EQ(Told({}, {row}), "delete 10: never sent to the unit, taken from Abel Karin, Doe Jane");
  row.state = 2;
  row.tenants.clear();
  EXPECT_EQ(Told({}, {row}), "delete 10: its last change was not sent");
}

}  // namespace
}  // namespace qorhost
