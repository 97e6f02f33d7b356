// What the controller's variables are for the components that it calls.
#include <gmock/gmock.h>

#include "tests/credentials/credential_fixture.h"
#include "tests/support/passing_record.h"

namespace qortest {
namespace {

using passing::kDelete;
using passing::kInsert;
using passing::kScalar;
using passing::kSelect;
using passing::kUnitStatus;
using passing::kUpdate;
using passing::kUpdateOfARow;
using ::testing::ElementsAre;

constexpr const char* kProgramSteps = "pvCreateProgramSteps variable variable variable";

class CredentialPassing : public TenantCreatingTest {
 protected:
  CredentialPassing()
      : passing_(Host().host()),
        controller_(passing_),
        connection_(passing_.Watched(Connection())) {
    controller_.set_gmobjCredentialScreen(Host().screen());
    passing_.TakeLines();
  }

  PassingRecord passing_;
  UnderTest<qorcred::clsCredential> controller_;
  qorcred::ObjectRef connection_;
};

TEST_F(CredentialPassing, OfANewCredentialWithItsTenant) {
  Screen().EnterSingle(kCard26, "100");
  Screen().EnterTenantDefaults();
  ASSERT_TRUE(controller_.pbSave(connection_, kUnit, true));
  EXPECT_THAT(passing_.TakeLines(),
              ElementsAre(kSelect, kUnitStatus, "BeginTrans", kInsert,
                          "pbGetMaxGroupIDOrLinkID variable variable value",
                          "pbIncrementMaxGroupIDOrLinkIDByOne variable variable value value",
                          "pbGetTenantID variable variable variable", "Execute variable variable",
                          kProgramSteps, "CommitTrans"));
}

TEST_F(CredentialPassing, OfAnAssignedCredential) {
  Screen().ShowStored(1, 1);
  Screen().AllowCodes("500");
  Database().Number("SELECT TenantID", 56);
  ASSERT_TRUE(controller_.pbSave(connection_, kUnit, false, true));
  EXPECT_THAT(passing_.TakeLines(),
              ElementsAre(kUpdateOfARow, kScalar, kUpdate, kProgramSteps, kSelect, kUnitStatus));
}

TEST_F(CredentialPassing, OfARenumberedCredential) {
  Screen().ShowStored(1, 0);
  ASSERT_TRUE(controller_.pbUpdatePinNo(connection_, 99, kUnit));
  EXPECT_THAT(passing_.TakeLines(), ElementsAre(kSelect, kUpdateOfARow));
}

TEST_F(CredentialPassing, OfADeletedCredential) {
  ASSERT_TRUE(controller_.pbDelete(connection_, kUnit, 17));
  EXPECT_THAT(passing_.TakeLines(), ElementsAre(kSelect, kDelete));
}

}  // namespace
}  // namespace qortest
