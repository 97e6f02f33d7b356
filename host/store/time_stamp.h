// The time that rows are stamped with.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "frame/value.h"

namespace qorhost {

/// The current local time, to the second.
using Clock = std::function<qorcred::Date()>;

/// The clock's time in the canonical text form, put into text once a second and not once a call.
class TimeStamp {
 public:
  explicit TimeStamp(Clock clock);

  /// Valid until the next call.
  [[nodiscard]] std::string_view Now();
  [[nodiscard]] qorcred::Date Clocked() const { return clock_(); }

 private:
  Clock clock_;
  qorcred::Date last_;
  std::string text_;
};

}  // namespace qorhost
