#include "host/store/time_stamp.h"

#include <utility>

#include "host/dialect/canonical_date.h"

namespace qorhost {

TimeStamp::TimeStamp(Clock clock) : clock_(std::move(clock)) {}

std::string_view TimeStamp::Now() {
  const qorcred::Date now = clock_();
  if (text_.empty() || now != last_) {
    text_ = dialect::CanonicalDate(now);
    last_ = now;
  }
  return text_;
}

}  // namespace qorhost
