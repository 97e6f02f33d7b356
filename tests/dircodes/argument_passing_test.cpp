// What the controller's variables are for the components that it calls.
#include <gmock/gmock.h>

#include "tests/dircodes/dir_code_fixture.h"
#include "tests/support/passing_record.h"

namespace qortest {
namespace {

using passing::kDelete;
using passing::kInsert;
using passing::kQueryDelete;
using passing::kScalar;
using passing::kSelect;
using passing::kUnitStatus;
using passing::kUpdate;
using passing::kUpdateOfARow;
using ::testing::ElementsAre;
using ::testing::IsSupersetOf;

class DirCodePassing : public DirCodeTest {
 protected:
  DirCodePassing() : passing_(Host().host()), controller_(passing_) {
    controller_.set_mobjDirCodeScreen(Host().screen());
    controller_.set_mfrmConnectionScreen(Host().connectionScreen());
    passing_.TakeLines();
  }

  PassingRecord passing_;
  UnderTest<qorcred::clsDirCode> controller_;
};

TEST_F(DirCodePassing, OfANewCode) {
  Screen().EnterNew("12");
  std::int32_t rid = 0;
  ASSERT_TRUE(controller_.pbSave(Connection(), kUnit, false, &rid));
  EXPECT_THAT(passing_.TakeLines(),
              ElementsAre(kSelect, kUnitStatus, "pbDeleteDirCodePrgStepExists variable back value",
                          kInsert, "pbGenDirCodePrgStep variable back variable"));
}

TEST_F(DirCodePassing, OfAnEditedCode) {
  Screen().ShowStored();
  Database().Select("select directorycode", {{12}});
  ASSERT_TRUE(controller_.pbSave(Connection(), kUnit, true));
  EXPECT_THAT(passing_.TakeLines(),
              IsSupersetOf({kScalar, kUpdateOfARow, "pbGenDirCodePrgStep variable back value"}));
}

TEST_F(DirCodePassing, OfARenumberedCode) {
  const std::pair<std::int32_t, const char*> steps[] = {
      {0, "pbGenChgDirCodePrgStep variable back value"},
      {1, "pbGenDirCodePrgStep variable back value"}};
  Screen().ShowStored();
  for (const auto& [state, step] : steps) {
    Database().Replace("SELECT MODIFIED", {.value = state});
    ASSERT_TRUE(controller_.pbUpdateDirCode(Connection(), kUnit, "99"));
    EXPECT_THAT(passing_.TakeLines(), ElementsAre(kSelect, kScalar, kUpdateOfARow, step));
  }
}

TEST_F(DirCodePassing, OfADeletedCode) {
  const std::pair<std::int32_t, const char*> steps[] = {
      {0, "pbGenDelDirCodePrgStep variable back back"},
      {1, "pbDeleteDirCodePrgStep variable back back"}};
  Host().script().questionAnswer = qorcred::MessageButton::kYes;
  for (const auto& [state, step] : steps) {
    Database().Replace("SELECT MODIFIED", {.value = state});
    ASSERT_TRUE(controller_.pbDelete(Connection(), kUnit, kStoredRow, true, true));
    EXPECT_THAT(passing_.TakeLines(), ElementsAre(kSelect, kScalar, step, kDelete, kUpdate));
  }
}

TEST_F(DirCodePassing, OfAMergedCode) {
  qorcred::StringArray details(24);
  ASSERT_TRUE(controller_.pbMergeSave(Connection(), kUnit, "Delete", details, kStoredRow));
  EXPECT_THAT(passing_.TakeLines(), ElementsAre(kQueryDelete, kUpdate));
  ASSERT_TRUE(controller_.pbMergeSave(Connection(), kUnit, "Insert", details));
  EXPECT_THAT(passing_.TakeLines(), ElementsAre(kInsert));
  ASSERT_TRUE(controller_.pbMergeSave(Connection(), kUnit, "Update", details, kStoredRow));
  EXPECT_THAT(passing_.TakeLines(), ElementsAre(kUpdateOfARow));
}

}  // namespace
}  // namespace qortest
