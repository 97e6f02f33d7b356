// Entries of a list by what a file calls them.
#include "host/desks/entry_index.h"

#include <gmock/gmock.h>

namespace qorhost {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class EntryIndexes : public testing::Test {
 protected:
  EntryIndexes() {
    for (const char* text : {"<Unassigned>", "Abel Karin ", "Berg Bea", "berg bea", "BERG bea"}) {
      list_.AddItem(text);
    }
  }

  ListModel list_;
};

TEST_F(EntryIndexes, FindWithoutCaseAndBlanks) {
  const EntryIndex index(list_, 1);
  EXPECT_THAT(index.Find("  abel KARIN "), ElementsAre(1));
  EXPECT_THAT(index.Find("Abel"), IsEmpty());
  EXPECT_THAT(index.Find(""), IsEmpty());
}

TEST_F(EntryIndexes, PreferTheNameThatIsTheSameLetterForLetter) {
  const EntryIndex index(list_, 1);
  EXPECT_THAT(index.Find("berg bea"), ElementsAre(3));
  EXPECT_THAT(index.Find("Berg BEA"), ElementsAre(2, 3, 4)) << "none of them is";
}

TEST_F(EntryIndexes, FindSeveralOfTheSameNameInTheirOrder) {
  list_.AddItem(" berg bea ");
  EXPECT_THAT(EntryIndex(list_, 1).Find("berg bea"), ElementsAre(3, 5));
}

TEST_F(EntryIndexes, LeavePlaceholdersOut) {
  EXPECT_THAT(EntryIndex(list_, 1).Find("<Unassigned>"), IsEmpty());
  EXPECT_THAT(EntryIndex(list_, 0).Find("<Unassigned>"), ElementsAre(0));
}

TEST_F(EntryIndexes, KeepWhatTheListWas) {
  const EntryIndex index(list_, 1);
  list_.Clear();
  EXPECT_THAT(index.Find("Abel Karin"), ElementsAre(1));
}

}  // namespace
}  // namespace qorhost
