#include "host/components/store_host.h"

#include <ctime>
#include <memory>
#include <utility>

#include "frame/date.h"

namespace qorhost {

namespace {

qorcred::Date DateOf(const std::tm& parts) {
  constexpr int kFirstYear = 1900;
  return qorcred::FromCivil({parts.tm_year + kFirstYear, parts.tm_mon + 1, parts.tm_mday,
                             parts.tm_hour, parts.tm_min, parts.tm_sec});
}

}  // namespace

Clock SystemClock() {
  // A range save asks for every row; the calendar is worked out once a second.
  return [last = std::time_t{-1}, date = qorcred::Date{}]() mutable {
    const std::time_t now = std::time(nullptr);
    if (now != last) {
      std::tm parts{};
      date = DateOf(*localtime_r(&now, &parts));
      last = now;
    }
    return date;
  };
}

Clock UtcClock() {
  return [] {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    return DateOf(*gmtime_r(&now, &parts));
  };
}

StoreHost::StoreHost(Services services) : services_(std::move(services)) {}

qorcred::ObjectRef StoreHost::CreateComponent(std::string_view programmaticId) {
  return services_.components.Create(programmaticId);
}

qorcred::MessageButton StoreHost::ShowMessage(std::string_view text, qorcred::MessageStyle style,
                                              std::string_view title) {
  if (services_.messageBox) {
    return services_.messageBox(text, style, title);
  }
  return UnseenAnswer(style);
}

qorcred::Date StoreHost::Now() {
  return services_.clock();
}

void StoreHost::LetEventsRun() {
  if (services_.letEventsRun) {
    services_.letEventsRun();
  }
}

void StoreHost::ReportFailure(std::string_view operation,
                              const qorcred::RuntimeError& failure) noexcept {
  if (!services_.failureLog) {
    return;
  }
  try {
    services_.failureLog(operation, failure);
  } catch (...) {
    // A log that cannot be written must not stop the operation that is being wound up.
    return;
  }
}

}  // namespace qorhost
