// Two operations of one unit that meet, and the building in which they do.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "tests/host/concurrency/meeting_place.h"
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
