// Objects of a host that answer by chance.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <vector>

#include "tests/com/fuzz/odd_values.h"
#include "tests/com/support/random.h"

namespace qortest {

/// What the objects of one host have in common.
class OddHost {
 public:
  explicit OddHost(Random& random);
  OddHost(const OddHost&) = delete;
  OddHost& operator=(const OddHost&) = delete;

  /// A reference to a new object.
  [[nodiscard]] IDispatch* NewObject();

  [[nodiscard]] OddValues& values() { return values_; }
  [[nodiscard]] Random& random() { return random_; }
  /// Calls of members; beyond a bound every one fails, so that no loop lasts.
  [[nodiscard]] std::size_t calls() const { return calls_; }
  /// The next operation may make its own calls.
  void Begin() { calls_ = 0; }
  [[nodiscard]] bool Takes() { return ++calls_ <= kMostCalls; }
  /// How many objects live, of all hosts.
  [[nodiscard]] static long Alive();

 private:
  static constexpr std::size_t kMostCalls = 300;

  Random& random_;
  OddValues values_;
  std::size_t calls_ = 0;
};

}  // namespace qortest
