// Every writing operation on a real store with every one of its calls failing: no transaction and
// no statement stays open, and a save that fails leaves no row behind.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>

#include "tests/host/end_to_end/building.h"

namespace qortest {
namespace {

struct Sweep {
  std::string_view name;
  ScreenKind kind;
  std::function<void(Building&)> arrange;
  std::function<bool(Building&)> act;
  /// Whether a result of False means that the store is as before.
  bool allOrNothing;
};

void StoreHeldCard(Building& building) {
  building.Run(
      "INSERT INTO CredentialBank (UnitKey, CredentialType, PINNo, FacilityCode) VALUES "
      "(1, 1, 10, 7)");
  building.Run("UPDATE Tenants SET CREDENTIALID1=1 WHERE RID=1");
  building.SelectCredential(1);
  building.SelectTenant(2);
  building.answer = qorcred::MessageButton::kYes;
}

const Sweep kSweeps[] = {
    {"Range", ScreenKind::kCredential,
     [](Building& building) { building.TypeNumbers("1", "3", "Range"); },
     [](Building& building) { return building.controller().pbSave(building.connection(), kUnit); },
     true},
    {"RangeWithTenants", ScreenKind::kTenantCreating,
     [](Building& building) { building.TypeNumbers("1", "2", "Range"); },
     [](Building& building) {
       return building.controller().pbSave(building.connection(), kUnit, true);
     },
     true},
    {"Assignment", ScreenKind::kCredential, StoreHeldCard,
     [](Building& building) {
       return building.controller().pbSave(building.connection(), kUnit, false, true);
     },
     false},
    {"Deletion", ScreenKind::kCredential, StoreHeldCard,
     [](Building& building) {
       return building.controller().pbDelete(building.connection(), kUnit, 1);
     },
     false},
    {"Renumbering", ScreenKind::kCredential, StoreHeldCard,
     [](Building& building) {
       return building.controller().pbUpdatePinNo(building.connection(), 11, kUnit);
     },
     false},
};

class StoreFaults : public testing::TestWithParam<Sweep> {};

TEST_P(StoreFaults, LeaveNothingOpen) {
  const Sweep& sweep = GetParam();
  for (std::size_t n = 1;; ++n) {
    SCOPED_TRACE("call " + std::to_string(n));
    Building building(sweep.kind);
    sweep.arrange(building);
    const std::string before = building.Snapshot();
    building.gate().FailAt(n);
    const bool result = sweep.act(building);
    const std::string failed = building.gate().failed();
    building.gate().Reset();

    EXPECT_EQ(building.store().BusyStatements(), 0);
    if (failed.empty()) {
      EXPECT_TRUE(result);
      EXPECT_GT(n, 10U);
      return;
    }
    SCOPED_TRACE(failed);
    EXPECT_FALSE(building.trapped.empty());
    // A rollback that does not reach the store is the one thing that nobody can make up for.
    EXPECT_EQ(building.store().OpenTransactions(), 0);
    if (sweep.allOrNothing) {
      EXPECT_EQ(building.Snapshot(), before);
      // The result of a save is True before its commit.
      EXPECT_EQ(result, failed == "CommitTrans");
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Operations, StoreFaults, testing::ValuesIn(kSweeps),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace qortest
