// The small building on the engine of the test program, at which several work at once.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "tests/host/concurrency/seat.h"

namespace qorhost::test {

/// The small building on the engine of this program, once and again.
class MeetingPlace {
 public:
  virtual ~MeetingPlace() = default;
  MeetingPlace(const MeetingPlace&) = delete;
  MeetingPlace& operator=(const MeetingPlace&) = delete;

  [[nodiscard]] virtual std::unique_ptr<Seat> NewSeat(const std::string& who, bool traced) = 0;
  /// How a program names the store.
  [[nodiscard]] virtual std::string Name() const = 0;
  /// Makes everything as it is in the beginning, before the first use of it, too; seats stay where
  /// they are.
  virtual void Renew() = 0;
  /// See ContentOf(), and WrongIn(); equal contents may differ in what an engine gives out itself.
  [[nodiscard]] virtual std::vector<std::string> Content() = 0;
  [[nodiscard]] virtual std::vector<std::string> Wrong() = 0;
  [[nodiscard]] virtual std::int64_t Entries() = 0;
  /// What a SELECT in words that all engines know counts.
  [[nodiscard]] virtual std::int64_t Number(const std::string& select) = 0;
  /// Somebody who writes, and keeps all others from it until what this gives ends.
  [[nodiscard]] virtual std::shared_ptr<void> Hold() = 0;

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
extern const int kUsualStepOfReadings;
/// How often programs race.
extern const int kUsualRaces;

}  // namespace qorhost::test
