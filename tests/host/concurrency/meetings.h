// Two operations of one unit that meet, and the building in which they do.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "tests/host/concurrency/seat.h"
#include "tests/host/concurrency/seat_operations.h"
#include "tests/host/concurrency/small_building.h"

namespace qorhost::test {

struct Meeting {
  std::string name;
  SeatOperation first;
  SeatOperation second;
  int capacity = kRoomy;
  /// Whether the first may have to be told that the second was faster. Where it may not, both are
  /// stored, whoever was faster, or the second is refused because the first is writing.
  bool mayBeStale = false;
};

void PrintTo(const Meeting& meeting, std::ostream* out);

/// Every two that are tried.
[[nodiscard]] std::vector<Meeting> MeetingsOfTwo();

/// What both told, and what is in the store then.
struct Result {
  Told first;
  Told second;
  std::vector<std::string> content;
  friend bool operator==(const Result&, const Result&) = default;
};

[[nodiscard]] std::string TextOf(const Result& result);

/// The small building on the engine of this program, once and again.
class MeetingPlace {
 public:
  virtual ~MeetingPlace() = default;
  MeetingPlace(const MeetingPlace&) = delete;
  MeetingPlace& operator=(const MeetingPlace&) = delete;

  [[nodiscard]] virtual std::unique_ptr<Seat> NewSeat(const std::string& who) = 0;
  /// Makes everything as it was in the beginning; seats stay where they are.
  virtual void Renew() = 0;
  /// See ContentOf(), and WrongIn(); equal contents may differ in what an engine gives out itself.
  [[nodiscard]] virtual std::vector<std::string> Content() = 0;
  [[nodiscard]] virtual std::vector<std::string> Wrong() = 0;
  [[nodiscard]] virtual std::int64_t Entries() = 0;

 protected:
  MeetingPlace() = default;
};

/// One for each program, by what it is linked with.
[[nodiscard]] std::unique_ptr<MeetingPlace> NewMeetingPlace(int capacity);
/// Of all orders one in so many is tried: what suits the engine, or as many times more orders as
/// QORHOST_MORE_ORDERS in the environment says; 100 tries all.
[[nodiscard]] int OrderStep(int usual);
extern const int kUsualStepOfMeetings;
extern const int kUsualStepOfInterruptions;

/// Two seats at a building, once and again.
class MeetingTest : public testing::TestWithParam<Meeting> {
 protected:
  void SetUp() override;

  /// Both seats at a new building.
  void Begin();
  [[nodiscard]] Result End(Told first, Told second);
  [[nodiscard]] Told RunFirst() { return RunAt(GetParam().first, *first_); }
  [[nodiscard]] Told RunSecond() { return RunAt(GetParam().second, *second_); }
  /// Whether it could not write because the other one was writing.
  [[nodiscard]] static bool IsBusy(const Told& told);

  std::unique_ptr<MeetingPlace> place_;
  std::unique_ptr<Seat> first_;
  std::unique_ptr<Seat> second_;
};

}  // namespace qorhost::test
