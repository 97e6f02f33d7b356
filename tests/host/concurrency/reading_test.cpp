// What takes several statements to read is read from one state of the store, whatever others store
// meanwhile.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <set>
#include <sstream>

#include "host/desks/history.h"
#include "host/desks/store_check.h"
#include "host/desks/tenant_export.h"
#include "host/files/csv_writer.h"
#include "tests/host/concurrency/meeting_place.h"
#include "tests/host/concurrency/seat_operations.h"
#include "tests/host/concurrency/small_building.h"

namespace qorhost::test {
namespace {

using Reading = std::function<std::string(DeskSession& session)>;

class Readings : public testing::Test {
 protected:
  /// All that somebody reads while another one does something, once at each statement.
  [[nodiscard]] std::set<std::string> ReadBeside(const SeatOperation& operation,
                                                 const Reading& read) {
    std::set<std::string> found;
    const int step = OrderStep(kUsualStepOfReadings);
    bool reached = true;
    for (int nth = 0; reached; nth += step) {
      place_->Renew();
      EXPECT_TRUE(RunAt(EditPhone("103", "555-0"), *other_).done());
      reached = false;
      reader_->BeforeStatements([&](int statement) {
        if (statement == nth) {
          reached = true;
          EXPECT_TRUE(RunAt(operation, *other_).done());
        }
      });
      found.insert(read(reader_->session()));
      reader_->BeforeStatements([](int) {});
      EXPECT_FALSE(reader_->session().sql().inTransaction());
    }
    return found;
  }

 private:
  std::unique_ptr<MeetingPlace> place_ = NewMeetingPlace(kRoomy);
  std::unique_ptr<Seat> reader_ = place_->NewSeat("anna", false);
  std::unique_ptr<Seat> other_ = place_->NewSeat("bert", false);
};

// The history was said to lack the entry that came meanwhile, and tenants to hold what was not
// there.
TEST_F(Readings, OfACheckFindNothingWrongBesideOthers) {
  const Reading check = [](DeskSession& session) {
    std::ostringstream found;
    PrintCsv(found, WholeCheck(session, session.Units()));
    return found.str();
  };
  for (const SeatOperation& operation :
       {IssueCards("201", "203"), AssignCard("103", "Berg Bea"), DeleteCard("101"),
        DeleteCode("101"), AddCode("301"), MergeUnit()}) {
    EXPECT_EQ(ReadBeside(operation, check),
              std::set<std::string>{"Unit,What is wrong,How to mend it\r\n"})
        << operation.name;
  }
}

TEST_F(Readings, OfTheHistoryFindItWholeBesideOthers) {
  const Reading check = [](DeskSession& session) {
    const std::vector<std::string> faults = FaultsOfHistory(session, {});
    return faults.empty() ? std::string() : faults.front();
  };
  EXPECT_EQ(ReadBeside(EditPhone("102", "555-1"), check), std::set<std::string>{""});
}

// A tenant was written without the card that came meanwhile: imported again, it would be lost.
TEST_F(Readings, OfAnExportAreWholeTenants) {
  const Reading read = [](DeskSession& session) {
    std::ostringstream file;
    PrintCsv(file, ExportedTenants(session, kUnit));
    return file.str();
  };
  for (const SeatOperation& operation :
       {IssueCardsWithTenants("201", "202"), AssignCard("103", "Berg Bea"), DeleteCard("101"),
        DeleteCode("101")}) {
    EXPECT_LE(ReadBeside(operation, read).size(), 2U) << operation.name;  // before and behind it
  }
}

}  // namespace
}  // namespace qorhost::test
