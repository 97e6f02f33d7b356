#include "host/desks/entered_numbers.h"

#include <cmath>
#include <string>

#include "credentials/credential_type.h"
#include "frame/convert.h"
#include "frame/runtime_error.h"

namespace qorhost {

std::optional<EnteredNumbers> ReadEntered(const ScreenModel& screen) {
  const std::string& end = screen.Box("txtPINEND").text();
  if (end.empty()) {
    return std::nullopt;  // of a single credential, before its save: an exception would cost more
  }
  try {
    const double first = std::nearbyint(qorcred::ToDouble(screen.Box("txtPINStart").text()));
    const double last = std::nearbyint(qorcred::ToDouble(end));
    if (first >= 1 && last >= first && last <= qorcred::kHighestCredentialNumber) {
      return EnteredNumbers{static_cast<std::int64_t>(first), static_cast<std::int64_t>(last)};
    }
  } catch (const qorcred::RuntimeError&) {
    // A text that is no number, or one too long for any.
    return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace qorhost
