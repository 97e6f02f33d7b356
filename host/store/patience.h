// How long one who wants to write waits for another who is writing.
#pragma once

#include <chrono>
#include <functional>

namespace qorhost {

inline constexpr std::chrono::seconds kUsualPatience{30};

struct Patience {
  std::chrono::milliseconds limit = kUsualPatience;
  /// Called again and again while waiting, with the time waited; answers false to give up. May be
  /// empty.
  std::function<bool(std::chrono::milliseconds waited)> waiting;
};

}  // namespace qorhost
