// A controller's life among odd calls.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tests/com/fuzz/odd_object.h"
#include "tests/com/support/offered_component.h"
#include "tests/com/support/random.h"

namespace qortest {

/// Runs episodes: a controller is created, called in sound and odd ways, and released. Whatever a
/// client or a host does, the component must end every call with a code that automation knows,
/// touch nothing that is not its own, and let go of everything in the end.
class Episodes {
 public:
  /// `defect` is one of PlantedDefects(), or "".
  explicit Episodes(std::string_view defect);
  Episodes(const Episodes&) = delete;
  Episodes& operator=(const Episodes&) = delete;

  /// Returns what was wrong; empty when all was well.
  [[nodiscard]] std::string Run(Random& random);

  /// What is being called now, for whoever ends the process.
  [[nodiscard]] static const char* Current();
  [[nodiscard]] std::size_t calls() const { return calls_; }
  [[nodiscard]] std::size_t hostCalls() const { return hostCalls_; }
  /// How many calls have ended with each code.
  [[nodiscard]] const std::map<long, std::size_t>& codes() const { return codes_; }
  /// From now on writes down how calls end. Not where the process is measured: it takes memory.
  void KeepEndings() { keepsEndings_ = true; }
  /// Each member with each code that its calls have ended with, having called the host or not, and
  /// each element type and shape of arrays that were in a call that was done or refused.
  [[nodiscard]] const std::set<std::string>& endings() const { return endings_; }

 private:
  class Episode;

  std::string defect_;
  std::vector<std::unique_ptr<OfferedComponent>> offered_;
  OddHost* host_ = nullptr;  ///< of the episode that runs
  std::size_t calls_ = 0;
  std::size_t hostCalls_ = 0;
  std::map<long, std::size_t> codes_;
  bool keepsEndings_ = false;
  std::set<std::string> endings_;
};

}  // namespace qortest
