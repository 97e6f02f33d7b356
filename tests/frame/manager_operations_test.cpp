#include "frame/manager_operations.h"

#include <gtest/gtest.h>

namespace qorcred {
namespace {

TEST(ManagerOperationsTest, AnOperationIsFoundInAnyLetterCase) {
  const ManagerOperation* found = FindManagerOperation("executeINSERT", 6);
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->name, "ExecuteInsert");
  EXPECT_EQ(found->errorFlagAt, 4U);
}

TEST(ManagerOperationsTest, ACallWithoutRoomForTheErrorTextIsNone) {
  EXPECT_EQ(FindManagerOperation("ExecuteSelect", 3), nullptr);
  EXPECT_NE(FindManagerOperation("ExecuteSelect", 4), nullptr);
}

TEST(ManagerOperationsTest, OtherMembersRunNoStatement) {
  EXPECT_EQ(FindManagerOperation("pbGetRowIDStringConstant", 9), nullptr);
  EXPECT_EQ(FindManagerOperation("", 9), nullptr);
}

}  // namespace
}  // namespace qorcred
