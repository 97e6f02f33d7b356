// The guard around every public operation.
#pragma once

#include <string_view>

#include "frame/host.h"

namespace qorcred {

/// Runs `body`; whatever it throws ends there and is reported to `host` under the operation's name.
/// The operation's result is the variable that `body` sets: it keeps what it had when the failure
/// struck.
template <typename Body>
void Trap(Host& host, std::string_view operation, Body&& body) noexcept {
  try {
    body();
  } catch (const RuntimeError& failure) {
    host.ReportFailure(operation, failure);
  } catch (...) {
    // A failure of the C++ library (out of memory, a host's own exception) has no number yet.
    host.ReportFailure(operation, CurrentFailure());
  }
}

}  // namespace qorcred
