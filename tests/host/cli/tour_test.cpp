// The tour: every chapter, every kind of refusal, nothing left behind.
#include <gmock/gmock.h>

#include <filesystem>

#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::Not;

class Tour : public RunFixture {};

TEST_F(Tour, ShowsEveryChapterAndEndsWell) {
  const Outcome outcome = Run({"tour"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  for (const char* part :
       {"You must enter a credential number.", "Please enter a numeric value for starting number.",
        "Please enter a starting number between 1 and 65535.", "smaller than 65535.",
        "The ending number must be greater than the starting number.",
        "Please enter a Facility Code between 0 and 63.",
        "Please enter an ID Code between 0 and 26.",
        "Please enter a Sequence Code between 0 and 2.", "cannot be duplicated.",
        "Reduce the ending number to 2", "You cannot assign more than 500 codes combined.",
        "You cannot enter more than 500 combined codes.",
        "The End Date must be later than the Start Date.",
        "Please enter a Credential Number between 1 and 65535.",
        "Credential Number already exists.", "already assgined to a Tenant", "[ No ]", "[ Yes ]",
        "program tenant"}) {
    EXPECT_THAT(outcome.out, HasSubstr(part));
  }
}

TEST_F(Tour, IsTheSameEveryTimeAndNeedsNoFile) {
  const Outcome first = Run({"tour"});
  const Outcome second = Run({"tour"});
  EXPECT_EQ(first.out, second.out);
  EXPECT_FALSE(std::filesystem::exists(File("building.db")));
}

TEST_F(Tour, HasNoColoursOffATerminal) {
  EXPECT_THAT(Run({"tour"}).out, Not(HasSubstr("\x1b")));
}

}  // namespace
}  // namespace qorhost::test
