// Handing the programming steps that wait over to a unit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/list.h"
#include "host/desks/session.h"
#include "host/desks/trial.h"
#include "host/files/fresh_file.h"
#include "host/store/step_queue.h"

namespace qorhost {

/// What the input is called in an InputFault.
namespace step_input {
inline constexpr std::string_view kUpTo = "last step";
inline constexpr std::string_view kStep = "step";
}  // namespace step_input

/// The steps that wait, of one unit or of all, in the order of queuing: whom or what they are
/// about, and when they were queued, with the offset of that time.
[[nodiscard]] List WaitingStepList(DeskSession& session, std::optional<std::int32_t> unitKey);

/// What waits for one unit, with all that the unit has to know, made up from the rows as they are:
/// one line of JSON for each step between a line of the unit and one that counts them.
class StepFile {
 public:
  StepFile(DeskSession& session, UnitName unit);

  [[nodiscard]] std::size_t count() const { return steps_.size(); }
  /// The numbers of the steps in it.
  [[nodiscard]] std::vector<std::string> numbers() const;
  /// The last step in it; nothing without one.
  [[nodiscard]] std::optional<std::int32_t> last() const;
  void Write(std::ostream& out) const;
  /// Writes it whole or not at all; never over a file of the store `store`, under whatever name.
  /// Raises FileError as WriteWholeFile() does.
  void WriteTo(const std::filesystem::path& to, Standing existing,
               const std::filesystem::path& store) const;

 private:
  DeskSession& session_;
  UnitName unit_;
  std::vector<ProgramStep> steps_;
};

struct SentSteps {
  std::vector<std::int32_t> marked;  ///< by their numbers
  std::size_t steps = 0;
  std::size_t codes = 0;  ///< directory codes that are as the unit has them now
};

/// What becomes of a step that is named and does not wait: it was marked meanwhile, or queued anew
/// behind a further change, of which the unit is to be told.
enum class UnknownSteps : bool { kRefused, kLeftOut };

/// Which of the steps that wait for a unit; without either all of them.
struct StepChoice {
  std::vector<std::string> steps;                 ///< these
  std::optional<std::string> upTo = {};           ///< else all up to this one
  UnknownSteps unknown = UnknownSteps::kRefused;  ///< among `steps`
};

/// Marks steps that wait for the unit as sent. A directory code that was programmed or changed by
/// them stands in the unit under its present number, and is as the unit has it unless another of
/// its steps waits still. One unit of work; of a trial nothing is stored. Raises InputFault when
/// one that is named is no step that waits for the unit and is not left out.
[[nodiscard]] SentSteps MarkSent(DeskSession& session, std::int32_t unitKey,
                                 const StepChoice& choice, Trial trial);

}  // namespace qorhost
