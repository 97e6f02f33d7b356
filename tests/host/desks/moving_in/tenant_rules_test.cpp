// What becomes of odd identities and links of tenants.
#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/host/desks/moving_in/made_tables.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;

TEST(TenantRules, GiveRowsWithoutAnIdentityFreeOnes) {
  const MovingPlan plan(
      {{TableOf("Units", {"RID", "UnitKey"},
                {{N(5), N(1)}, {N(2147483647), N(2)}, {DesktopNull{}, N(3)}, {N(5), N(4)}})}},
      "some.mdb", std::nullopt);
  const StagedTable& units = plan.tables().front();
  std::vector<std::int32_t> rids;
  for (const StagedRow& row : units.rows()) rids.push_back(*LongIn(row.cells[units.At("RID")]));
  EXPECT_THAT(rids, ElementsAre(5, 2147483647, 1, 2));
}

TEST(TenantRules, TenantIdsFollowTheRidAndBackupRowsFollowThem) {
  const MovingPlan plan({{UnitTable({1}),
                          TableOf("Tenants", {"RID", "TenantID", "UnitKey", "LastName"},
                                  {{N(1), N(1), N(1), DesktopText{"Same", true}},
                                   {N(2), N(7), N(1), DesktopText{"Other", true}},
                                   {N(3), DesktopNull{}, N(1), DesktopText{"None", true}}}),
                          TableOf("TenantsBackup", {"RID", "UnitKey", "TenantID"},
                                  {{N(1), N(1), N(1)}, {N(2), N(1), N(7)}, {N(3), N(1), N(3)}})}},
                        "some.mdb", std::nullopt);
  EXPECT_THAT(ToldOf(plan, "Tenants"),
              ElementsAre("adjusted row 2 TenantID 7 -> 2 [other-tenant-id]",
                          "adjusted row 3 TenantID Null -> 3 [other-tenant-id]"));
  EXPECT_THAT(ToldOf(plan, "TenantsBackup"),
              ElementsAre("adjusted row 2 TenantID 7 -> 2 [other-tenant-id]"));
}

TEST(TenantRules, BackupRowsStayWithTheTenantWhoseRidTheyName) {
  for (const bool isBehind : {true, false}) {
    std::vector<std::vector<DesktopCell>> tenants{{N(5), N(13), N(1), DesktopText{"Other", true}},
                                                  {N(13), N(13), N(1), DesktopText{"Same", true}}};
    if (!isBehind) std::swap(tenants.front(), tenants.back());
    const MovingPlan plan(
        {{UnitTable({1}),
          TableOf("Tenants", {"RID", "TenantID", "UnitKey", "LastName"}, std::move(tenants)),
          TableOf("TenantsBackup", {"RID", "UnitKey", "TenantID"}, {{N(1), N(1), N(13)}})}},
        "some.mdb", std::nullopt);
    EXPECT_THAT(ToldOf(plan, "TenantsBackup"), testing::IsEmpty());
  }
}

TEST(TenantRules, ARefusedCredentialIsTakenFromItsHolder) {
  const MovingPlan plan(
      {{TableOf("Units", {"UnitKey"}, {{N(1)}}),
        TableOf("CredentialBank", {"RID", "UnitKey", "CredentialType", "PINNo"},
                {{N(1), N(1), N(1), N(0)}, {N(2), N(1), N(1), N(7)}}),
        TableOf("Tenants", {"RID", "UnitKey", "LastName", "CREDENTIALID1", "CREDENTIALID2"},
                {{N(1), N(1), DesktopText{"Good", true}, N(1), N(2)}})}},
      "some.mdb", std::nullopt);
  const StagedTable& tenants = plan.tables()[8];
  ASSERT_EQ(tenants.known().name, "Tenants");
  const StagedRow& row = tenants.rows().front();
  EXPECT_EQ(LongIn(row.cells[tenants.At("CREDENTIALID1")]), std::nullopt);
  EXPECT_EQ(LongIn(row.cells[tenants.At("CREDENTIALID2")]), 2);
  EXPECT_EQ(plan.settled().named().back().kind, "missing-credential");
}

}  // namespace
}  // namespace qorhost::test
