#include <gmock/gmock.h>

#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

/// The demo building with the code 0101 of unit 2 renumbered in entry 2.
class History : public RunFixture {
 protected:
  void SetUp() override {
    InitDemo();
    ASSERT_EQ(Run({"--unit", "2", "dircodes", "renumber", "101", "180"}).status, 0);
  }
  [[nodiscard]] std::string Code() {
    return Rows({"sql", "SELECT DIRECTORYCODE FROM DirectoryCode WHERE RID=11"})[0].dump();
  }
};

TEST_F(History, UndoNamesTheUnitThatItChanges) {
  const Outcome trial = Run({"history", "undo", "2", "--dry-run"});
  EXPECT_EQ(trial.status, 0) << trial.err;
  EXPECT_THAT(trial.out, EndsWith(" can be undone in unit 2, Linden Park: 1 row; nothing was "
                                  "changed\n"));
  EXPECT_THAT(Code(), HasSubstr("180"));
  const Outcome undone = Run({"history", "undo", "2"});
  EXPECT_EQ(undone.status, 0) << undone.err;
  EXPECT_THAT(undone.out, EndsWith(" undone in unit 2, Linden Park: 1 row as before\n"));
  EXPECT_THAT(Code(), HasSubstr("101"));
}

TEST_F(History, UndoOfTheWholeStoreNamesNoUnit) {
  ASSERT_EQ(Run({"sql", "--write", "UPDATE Units SET UNITNAME='Annex' WHERE UNITKEY=3"}).status, 0);
  EXPECT_THAT(Run({"history", "undo", "3"}).out, EndsWith(" UTC) undone: 1 row as before\n"));
}

TEST_F(History, AnEntryOfAnotherUnitThanTheNamedOneStays) {
  const Outcome outcome = Run({"--unit", "3", "history", "undo", "2"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err, "qorhost: entry 2 is of unit 2, not of unit 3\n");
  EXPECT_EQ(outcome.out, "");
  EXPECT_THAT(Code(), HasSubstr("180"));
  EXPECT_EQ(Run({"--unit", "2", "history", "undo", "2"}).status, 0);
}

TEST_F(History, AnUndoWhoseOutputCannotBeWrittenIsToldAsStored) {
  outputFails_ = true;
  EXPECT_EQ(Run({"history", "undo", "2", "--dry-run"}).err,
            "qorhost: the output could not be written\n");
  EXPECT_EQ(Run({"history", "undo", "2"}).err,
            "qorhost: the output could not be written; the change is stored\n");
}

}  // namespace
}  // namespace qorhost::test
