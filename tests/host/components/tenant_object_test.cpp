#include "host/components/tenant_object.h"

#include <gtest/gtest.h>

#include "host/store/step_queue.h"
#include "tests/host/components/component_fixture.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

using qorcred::Call;
using qorcred::ErrorNumber;
using qorcred::Value;

class TenantObjectTest : public ComponentFixture {
 protected:
  [[nodiscard]] std::int32_t Next(std::int32_t unit = kUnit) {
    return tenant_.NextLinkCode(unit, Connection());
  }

  qorcred::TenantComponent tenant_{Create(qorcred::component::kTenant)};
};

TEST_F(TenantObjectTest, LinkCodesCountFromOneInEveryUnit) {
  EXPECT_EQ(Next(), 1);
  EXPECT_EQ(Next(), 1);
  tenant_.TakeLinkCode(kUnit, Connection());
  EXPECT_EQ(Next(), 2);
  EXPECT_EQ(Next(2), 1);
}

TEST_F(TenantObjectTest, ARangeOfTenantsGetsConsecutiveLinkCodes) {
  for (int number = 1; number <= 5; ++number) {
    const std::int32_t code = Next();
    EXPECT_EQ(code, number);
    Run("INSERT INTO Tenants (UnitKey, LINKCODE) VALUES (1, " + std::to_string(code) + ")");
    tenant_.TakeLinkCode(kUnit, Connection());
  }
}

TEST_F(TenantObjectTest, LinkCodesGoOnAfterThoseThatTenantsHave) {
  Run("INSERT INTO Tenants (UnitKey, LINKCODE) VALUES (1, 50), (2, 900)");
  EXPECT_EQ(Next(), 51);
  Run("INSERT INTO Tenants (UnitKey, LINKCODE) VALUES (1, 70)");
  EXPECT_EQ(Next(), 71);
}

TEST_F(TenantObjectTest, ATakenLinkCodeIsNotGivenOutAgainWithoutATenant) {
  Run("INSERT INTO Tenants (UnitKey, LINKCODE) VALUES (1, 50)");
  tenant_.TakeLinkCode(kUnit, Connection());
  EXPECT_EQ(Next(), 52);
  Run("DELETE FROM Tenants");
  EXPECT_EQ(Next(), 52);
}

TEST_F(TenantObjectTest, RolledBackLinkCodesAreFreeAgain) {
  Call(*connection_, "BeginTrans");
  EXPECT_EQ(Next(), 1);
  tenant_.TakeLinkCode(kUnit, Connection());
  Call(*connection_, "RollbackTrans");
  EXPECT_EQ(Next(), 1);
}

TEST_F(TenantObjectTest, AStoreOpenForReadingStillTellsTheNextLinkCode) {
  const TemporaryFolder folder;
  const std::filesystem::path file = folder.File("linkcodes.db");
  { const std::unique_ptr<Store> created = OpenStore(file, OpenMode::kCreate); }
  const qorcred::ObjectRef readOnly = std::make_shared<StoreConnection>(
      OpenStore(file, OpenMode::kReadOnly), [this] { return now_; });
  EXPECT_EQ(tenant_.NextLinkCode(kUnit, readOnly), 1);
}

TEST_F(TenantObjectTest, TheTenantIdIsThatOfTheRowInThatUnit) {
  Run("INSERT INTO Tenants (RID, UnitKey) VALUES (33, 1)");
  EXPECT_EQ(tenant_.TenantId(Connection(), kUnit, 33), 33);
  EXPECT_EQ(tenant_.TenantId(Connection(), 2, 33), 0);
  EXPECT_EQ(tenant_.TenantId(Connection(), kUnit, 34), 0);
}

TEST_F(TenantObjectTest, QueuesTheStepThatProgramsTheTenant) {
  tenant_.CreateProgramSteps(Connection(), kUnit, 33);
  tenant_.CreateProgramSteps(Connection(), 2, 34);
  const std::vector<ProgramStep> steps = connection_->session().steps().List(kUnit);
  ASSERT_EQ(steps.size(), 1U);
  EXPECT_EQ(steps[0].unitKey, kUnit);
  EXPECT_EQ(steps[0].kind, "program tenant");
  EXPECT_EQ(steps[0].subjectRid, 33);
  EXPECT_EQ(steps[0].queuedAt, Value(now_));
  EXPECT_FALSE(steps[0].sent);
  EXPECT_EQ(connection_->session().steps().List(std::nullopt).size(), 2U);
}

TEST_F(TenantObjectTest, RefusesWhatItDoesNotKeep) {
  Value connection = Connection();
  qorcred::Object& tenant = tenant_.object();
  EXPECT_EQ(FailureOf([&] {
              Call(tenant, "pbGetMaxGroupIDOrLinkID", kUnit, connection, false);
            }).number(),
            ErrorNumber::kInvalidProcedureCall);
  EXPECT_EQ(FailureOf([&] {
              Call(tenant, "pbIncrementMaxGroupIDOrLinkIDByOne", kUnit, connection, true, -1);
            }).number(),
            ErrorNumber::kInvalidProcedureCall);
  EXPECT_EQ(FailureOf([&] { Call(tenant, "pbGetTenantID", connection, "one", 1); }).number(),
            ErrorNumber::kTypeMismatch);
  EXPECT_EQ(FailureOf([&] { Call(tenant, "pvCreateProgramSteps", connection); }).number(),
            ErrorNumber::kWrongArgumentCount);
  EXPECT_EQ(FailureOf([&] { Call(tenant, "pbPing"); }).number(), ErrorNumber::kUnknownMember);
}

TEST_F(TenantObjectTest, AFailingStoreIsRaisedWithItsText) {
  Run("DROP TABLE ProgramSteps");
  const qorcred::RuntimeError failure =
      FailureOf([&] { tenant_.CreateProgramSteps(Connection(), kUnit, 1); });
  EXPECT_EQ(failure.number(), ErrorNumber::kApplicationDefined);
  EXPECT_NE(failure.description().find("ProgramSteps"), std::string::npos);
}

}  // namespace
}  // namespace qorhost::test
