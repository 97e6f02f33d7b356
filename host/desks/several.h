// Several operations at a desk as one unit of work: all of them are stored, or none is.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/desks/outcome.h"
#include "host/desks/session.h"

namespace qorhost {

/// What has to be asked before operations may be stored, and about what. The same question about
/// several is asked once.
class OpenQuestions {
 public:
  void Add(std::string_view subject, std::string_view question);

  [[nodiscard]] bool any() const { return !asked_.empty(); }
  /// "0101, 0102: Do you wish to continue?", the next one behind it.
  [[nodiscard]] std::string Text() const;

  friend bool operator==(const OpenQuestions&, const OpenQuestions&) = default;

 private:
  struct Asked {
    std::string question;
    std::vector<std::string> subjects;
    friend bool operator==(const Asked&, const Asked&) = default;
  };
  std::vector<Asked> asked_;
};

struct SeveralOutcome : Outcome {
  std::string subject;  ///< of the operation that was not done
};

/// What one of the operations came to, and what it was about.
struct PartOutcome : Outcome {
  std::string subject;
};

struct SeveralOperations {
  /// Prepares what they work on, and returns how many there are; nobody else writes from then on
  /// until they end.
  std::function<std::size_t()> begin;
  /// Does the one at that place. What is to be asked besides the controllers' questions is added.
  std::function<PartOutcome(std::size_t at, OpenQuestions& questions)> run;
  /// Looks at what they have come to together; may be empty.
  std::function<void()> end;
};

/// True for Yes.
using Consent = std::function<bool(const std::string& question)>;

/// Runs them one after the other until one is not done: then nothing is stored. The controllers'
/// questions are answered Yes meanwhile; where there are any, everything is undone, `consent` is
/// asked while nobody waits, and all of it is done again. Refused without consent, and what the
/// operations raise is raised with nothing stored.
[[nodiscard]] SeveralOutcome RunSeveral(DeskSession& session, const WorkOrder& order,
                                        const SeveralOperations& operations,
                                        const Consent& consent);

}  // namespace qorhost
