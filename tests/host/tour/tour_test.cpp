// The tour: every chapter, every kind of refusal, nothing left behind; on every engine.
#include "host/tour/tour.h"

#include <gmock/gmock.h>

#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "frame/date.h"
#include "host/store/demo.h"
#include "tests/host/store/engine.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::Not;

class Tour : public testing::Test {
 protected:
  struct Told {
    ExitStatus status = ExitStatus::kDone;
    std::string out;
    std::string err;
  };
  /// Takes the tour at five past two, away from any terminal: on a store of the program's engine.
  static Told Take() {
    return TakeOn([](const Surroundings& surroundings, Console& console) {
      std::unique_ptr<Store> store = FreshStore();
      CreateDemoData(*store->StartSession(surroundings.clock));
      return RunTourOn(std::move(store), surroundings, console);
    });
  }
  template <typename Tour>
  static Told TakeOn(Tour&& tour) {
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
    const Environment environment;
    Console console{in, out, err, environment};
    Surroundings surroundings;
    surroundings.clock = [] { return qorcred::FromCivil({2026, 1, 31, 14, 5, 9}); };
    const ExitStatus status = tour(surroundings, console);
    return {status, out.str(), err.str()};
  }
  static void ExpectParts(const std::vector<const char*>& parts) {
    const Told told = Take();
    EXPECT_EQ(told.status, ExitStatus::kDone) << told.err;
    for (const char* part : parts) {
      EXPECT_THAT(told.out, HasSubstr(part));
    }
  }
};

TEST_F(Tour, ShowsEveryChapterOnCredentialsAndEndsWell) {
  ExpectParts(
      {"You must enter a credential number.", "Please enter a numeric value for starting number.",
       "Please enter a starting number between 1 and 65535.", "smaller than 65535.",
       "The ending number must be greater than the starting number.",
       "Please enter a Facility Code between 0 and 63.",
       "Please enter an ID Code between 0 and 26.", "Please enter a Sequence Code between 0 and 2.",
       "cannot be duplicated.", "Reduce the ending number to 2",
       "You cannot assign more than 500 codes combined.",
       "You cannot enter more than 500 combined codes.",
       "The End Date must be later than the Start Date.",
       "Please enter a Credential Number between 1 and 65535.", "Credential Number already exists.",
       "already assgined to a Tenant", "[ No ]", "[ Yes ]", "program tenant"});
}

TEST_F(Tour, ShowsEveryChapterOnDirectoryCodesAndEndsWell) {
  ExpectParts({"Please enter a Directory Code.",
               "Please enter the positive number as Directory Code.",
               "Please enter a Phone No. to apply to the Directory Code.",
               "Please enter a Call Forwarding Phone No.",
               "This Directory Code already exists. Please enter a different Directory Code.",
               "Do not disturb    Night Shift\n", "Call forwarding   Early Shift, to 555-0290\n",
               "Do you still want to proceed?", "Step queued       change directory code (RID 11)",
               "the list shows 0180 in its place", "taken from Raghavan Samir\n",
               "1 inserted, 1 updated, 1 deleted, 5 unchanged", "program directory code 21: 250\n",
               "change directory code 11: 101 to 180\n"});
}

TEST_F(Tour, EndsWithBothReportsAsTables) {
  ExpectParts(
      {"The report of a unit's directory codes\n",
       "    Directory Code  Phone No.  Display Name   Directory Status  DND Schedule  CF "
       "Schedule  CF Phone No.\n",
       "    0250            555-0199   Karin Abel     Active            Night Shift   Early "
       "Shift  555-0290\n",
       "The report of a unit's credentials\n", "    4 rows\n",
       "Credentials which are assigned to tenants cannot be deleted.",
       "    1 credential deleted\n"});
}

TEST_F(Tour, IsTheSameEveryTime) {
  EXPECT_EQ(Take().out, Take().out);
}

/// Where identities have gaps, every number as the same sign, and however wide it is.
std::string Comparable(const std::string& text) {
  if (test::GivesIdentitiesWithoutGaps()) {
    return text;
  }
  std::string masked;
  for (const char letter : text) {
    const char sign = letter >= '0' && letter <= '9' ? '#' : letter;
    const bool isRepeated = !masked.empty() && masked.back() == sign;
    if (!isRepeated || (sign != '#' && sign != ' ' && sign != '-')) {
      masked += sign;
    }
  }
  return masked;
}

TEST_F(Tour, IsTheSameAsInMemory) {
  const Told inMemory = TakeOn(RunTour);
  EXPECT_EQ(inMemory.status, ExitStatus::kDone) << inMemory.err;
  EXPECT_EQ(Comparable(Take().out), Comparable(inMemory.out));
}

TEST_F(Tour, HasNoColoursOffATerminal) {
  EXPECT_THAT(Take().out, Not(HasSubstr("\x1b")));
}

}  // namespace
}  // namespace qorhost::test
