// The words for yes and no in the cells of a file.
#include "host/desks/import_words.h"

#include <gtest/gtest.h>

#include <string>

#include "host/desks/input_fault.h"

namespace qorhost {
namespace {

TEST(ImportWords, SayYesAndNoInTheColumnsOwnWordsAndInThoseOfEveryColumn) {
  for (const char* yes : {"Active", "ACTIVE", "True", "yes", "1"}) {
    EXPECT_EQ(ReadEither("Status", yes, kActiveInactive), true) << yes;
  }
  for (const char* no : {"Inactive", "inactive", "false", "No", "0"}) {
    EXPECT_EQ(ReadEither("Status", no, kActiveInactive), false) << no;
  }
}

TEST(ImportWords, SayNothingInAnEmptyCell) {
  EXPECT_EQ(ReadEither("Status", "", kTrueFalse), std::nullopt);
}

TEST(ImportWords, AreToldWhenACellHasAnother) {
  for (const char* other : {"maybe", "2", "Active ", "-1"}) {
    try {
      (void)ReadEither("Directory Status", other, kActiveInactive);
      ADD_FAILURE() << other;
    } catch (const InputFault& fault) {
      EXPECT_EQ(std::string(fault.what()),
                "Directory Status '" + std::string(other) + "' is neither Active nor Inactive");
    }
  }
  EXPECT_THROW((void)ReadEither("Do Not Disturb", "Active", kTrueFalse), InputFault)
      << "the words of another column";
}

}  // namespace
}  // namespace qorhost
