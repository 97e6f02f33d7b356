// Every writing operation on directory codes on a real store with every one of its calls failing:
// no statement stays open, and True is answered only when something was written.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>

#include "tests/host/end_to_end/dir_code_building.h"
#include "tests/host/unit/sample_code.h"

namespace qortest {
namespace {

struct Sweep {
  std::string_view name;
  std::function<void(DirCodeBuilding&)> arrange;
  std::function<bool(DirCodeBuilding&)> act;
};

// A code in row 1 that a tenant holds, open for editing.
void OpenHeldCode(DirCodeBuilding& building) {
  building.Open(building.Store("7"));
  building.Run("UPDATE Tenants SET DIRECTORYCODE=1 WHERE RID=2");
  building.answer = qorcred::MessageButton::kYes;
}

const Sweep kSweeps[] = {
    {"NewCode", [](DirCodeBuilding& building) { building.TypeNew("9"); },
     [](DirCodeBuilding& building) { return building.SaveNew(); }},
    {"EditedCode", OpenHeldCode, [](DirCodeBuilding& building) { return building.SaveEdited(); }},
    {"Deletion", OpenHeldCode, [](DirCodeBuilding& building) { return building.Delete(1, true); }},
    {"Renumbering", OpenHeldCode,
     [](DirCodeBuilding& building) {
       return building.controller().pbUpdateDirCode(building.connection(), kUnit, "12");
     }},
    {"MergedInsert", [](DirCodeBuilding&) {},
     [](DirCodeBuilding& building) { return building.Merge("Insert", SampleCode()); }},
    {"MergedUpdate", OpenHeldCode,
     [](DirCodeBuilding& building) { return building.Merge("Update", SampleCode(), 1); }},
    {"MergedDeletion", OpenHeldCode,
     [](DirCodeBuilding& building) { return building.Merge("Delete", {}, 1); }},
};

class DirCodeStoreFaults : public testing::TestWithParam<Sweep> {};

TEST_P(DirCodeStoreFaults, LeaveNothingOpen) {
  const Sweep& sweep = GetParam();
  for (std::size_t n = 1;; ++n) {
    SCOPED_TRACE("call " + std::to_string(n));
    DirCodeBuilding building;
    sweep.arrange(building);
    const std::string before = building.Snapshot();
    building.gate().FailAt(n);
    const bool result = sweep.act(building);
    const std::string failed = building.gate().failed();
    building.gate().Reset();

    EXPECT_EQ(building.store().BusyStatements(), 0);
    EXPECT_EQ(building.store().OpenTransactions(), 0);
    if (failed.empty()) {
      EXPECT_TRUE(result);
      EXPECT_NE(building.Snapshot(), before);
      EXPECT_GT(n, 1U);
      return;
    }
    SCOPED_TRACE(failed);
    EXPECT_FALSE(building.trapped.empty());
    EXPECT_TRUE(!result || building.Snapshot() != before);
  }
}

INSTANTIATE_TEST_SUITE_P(Operations, DirCodeStoreFaults, testing::ValuesIn(kSweeps),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace qortest
