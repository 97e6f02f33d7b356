// One operation of the soak: a scenario through the component, with something that disturbs it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "tests/com/support/offered_component.h"
#include "tests/com/support/random.h"
#include "tests/scenarios/scenarios.h"

namespace qortest {

/// What happens at one of the calls by which a controller reaches its host.
enum class Disturbance : std::uint8_t {
  kNone,
  kFailingCall,         ///< the call raises a number
  kFailingCode,         ///< the call ends with a code of the system's and tells nothing
  kFailingCreation,     ///< a component that a new controller wants is not there
  kReadController,      ///< the host reads the controller's properties
  kPutController,       ///< the host puts the controller's properties
  kSameOperation,       ///< the host runs the same operation of the same controller
  kOtherScreen,         ///< the host runs another scenario from its beginning to its end
  kReleasedScreen,      ///< the host takes the screen away and lets go of it
  kReleasedController,  ///< the host lets go of the controller
  kChangedEntry,        ///< the host enters something else, which may be refused by a message
};
inline constexpr std::size_t kDisturbances = 11;
[[nodiscard]] const char* NameOf(Disturbance disturbance);

/// Runs turns, one after the other. The components that controllers create belong to the host of
/// the turn that runs.
class Turns {
 public:
  Turns();
  Turns(const Turns&) = delete;
  Turns& operator=(const Turns&) = delete;

  /// Returns what was wrong; empty when all was well.
  [[nodiscard]] std::string Run(Random& random);

  [[nodiscard]] std::size_t Count(Disturbance disturbance) const {
    return counts_[static_cast<std::size_t>(disturbance)];
  }
  /// Calls that have reached a host.
  [[nodiscard]] std::size_t calls() const { return calls_; }
  /// Turns in which what should disturb them did come to pass.
  [[nodiscard]] std::size_t disturbed() const { return disturbed_; }

 private:
  struct Happening;
  void Happen(const Happening& happening, Random& random);
  std::string Act(const Scenario& scenario, RecordingHost& host, Disturbance disturbance,
                  std::size_t& callsOf, Random& random);
  void RunScenario(std::size_t number, Disturbance disturbance, Random& random);
  [[nodiscard]] qorcred::ObjectRef CreateComponent(const char* programmaticId) const;

  std::vector<std::unique_ptr<OfferedComponent>> offered_;
  RecordingHost* host_ = nullptr;     ///< of the turn that runs
  std::vector<std::size_t> callsOf_;  ///< of each scenario when nothing disturbs it
  std::vector<std::size_t> counts_;
  std::string wrong_;  ///< the first thing that was, in the turn that runs
  std::size_t calls_ = 0;
  std::size_t disturbed_ = 0;
};

}  // namespace qortest
