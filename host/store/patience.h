// How long one who wants to write waits for another who is writing, how long a statement may work,
// and who is called meanwhile.
#pragma once

#include <chrono>
#include <functional>

namespace qorhost {

inline constexpr std::chrono::seconds kUsualPatience{30};
inline constexpr std::chrono::seconds kUsualWork{60};

struct Patience {
  std::chrono::milliseconds limit = kUsualPatience;
  /// Called again and again while waiting, with the time waited; answers false to give up. May be
  /// empty.
  std::function<bool(std::chrono::milliseconds waited)> waiting;
  /// Called now and then while a statement works, or a copy is made; answers false to have it fail,
  /// with all that it did undone. It must not use the store. May be empty.
  std::function<bool()> working = nullptr;
  /// For how long one statement of an operator may work on a server. A file counts steps instead.
  std::chrono::milliseconds work = kUsualWork;
};

}  // namespace qorhost
