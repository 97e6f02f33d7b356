// A store opened for one command.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/cli/change_report.h"
#include "host/cli/operator.h"
#include "host/desks/session.h"
#include "host/desks/store_file.h"
#include "host/desks/trial.h"
#include "host/terminal/console.h"

namespace qorhost {

/// Options that every command has.
struct GlobalOptions {
  std::filesystem::path file = "building.db";
  std::optional<std::int32_t> unit;
  std::optional<bool> answer;  ///< --yes or --no
  bool json = false;
  bool quiet = false;  ///< prints nothing but what was asked for
  bool trace = false;
  std::optional<std::filesystem::path> traceFile;
  bool replaceTraceFile = false;
  int wait = static_cast<int>(kUsualPatience.count());  ///< for others who write, in seconds
};

/// Which unit a list is of.
enum class UnitScope : std::uint8_t {
  kEvery,  ///< that of --unit, else all
  kNamed,  ///< that of --unit, else that of QORHOST_UNIT, else all
};

/// A desk session whose messages, questions and, with --trace, trace go to the console.
class CommandSession {
 public:
  /// Opens the file of `global`. Raises FailureError that names `qorhost init --demo` when there is
  /// no such file, and StoreError.
  /// In a trial every unit of work is done and undone; questions are taken as answered Yes.
  CommandSession(const GlobalOptions& global, Access access, Console& console,
                 Trial trial = Trial::kNo);
  CommandSession(const CommandSession&) = delete;
  CommandSession& operator=(const CommandSession&) = delete;

  [[nodiscard]] DeskSession& desks() { return session_; }

  /// The unit of --unit or QORHOST_UNIT, or the first: to look at; what it lacks is told. Raises
  /// UsageError for a unit that is not in the store and RefusedError when there is none.
  [[nodiscard]] UnitName ChosenUnit();
  /// The same to change something: of several units one has to be named, or it raises UsageError.
  [[nodiscard]] UnitName UnitToChange();
  /// Of a trial that would have changed something: tells what, and that nothing was changed. True
  /// then, and what the command would tell of what it has done is not so. Programs are told by
  /// Report() instead. `rows` are all that would have changed, where there may be some that the
  /// history tells nothing of.
  [[nodiscard]] bool ToldTrial(const Outcome& outcome,
                               std::optional<std::int64_t> rows = std::nullopt);
  /// Tells of what is done: with --json what `report` makes, else `print` tells it. Of a trial it
  /// tells what ToldTrial() does, of what is not done nothing.
  void TellDone(const Outcome& outcome, const std::function<ChangeReport()>& report,
                const std::function<void()>& print);
  /// Prints for programs what a command has changed; of a trial what it would, row by row.
  void Report(ChangeReport report);
  /// The rows that a trial would have changed, for programs; Null when it is none.
  void AddTried(JsonObject& facts);
  /// Asks a question of the host's own, as the controllers' are asked: true for Yes.
  [[nodiscard]] bool Asks(const std::string& question) { return operator_.Asks(question); }
  /// For what has to ask later. The session must outlive it.
  [[nodiscard]] Consent Asking() {
    return [this](const std::string& question) { return Asks(question); };
  }
  /// The same as Asks(); raises RefusedError unless the answer is Yes.
  void RequireConsent(const std::string& question);
  /// To be called before a deletion, which may ask nothing: with --no nothing is deleted all the
  /// same. Raises RefusedError then.
  void RequireDeletion() const;
  /// The unit whose key is given; UsageError when there is none.
  [[nodiscard]] UnitName UnitNamed(const std::string& given);
  /// The unit that the scope names; nothing for all units. Raises UsageError for one that is not in
  /// the store.
  [[nodiscard]] std::optional<UnitName> UnitOf(UnitScope scope);
  /// That one, or all units.
  [[nodiscard]] std::vector<UnitName> ChosenUnits(UnitScope scope = UnitScope::kEvery);

  /// What `read` gives, read from one state of the store. Print it behind that: whoever reads page
  /// by page keeps nobody waiting then.
  template <typename Read>
  [[nodiscard]] auto OfOneState(Read&& read) {
    const Undoable oneState = session_.OneState();
    return read();
  }

  /// Tells what units lack so that nothing can be stored in them.
  void TellWhatIsMissing(const std::vector<UnitName>& units);

 private:
  [[nodiscard]] std::optional<std::int32_t> NamedUnit() const;
  /// Among `units` the one with that key, which was `given` so.
  [[nodiscard]] UnitName Find(std::optional<std::int32_t> key, std::string_view given,
                              std::vector<UnitName> units) const;

  const GlobalOptions& global_;
  Console& console_;
  Trial trial_;
  Operator operator_;
  DeskSession session_;
};

[[nodiscard]] inline Trial TrialOf(bool trial) {
  return trial ? Trial::kYes : Trial::kNo;
}

/// Waits for others who write as long as --wait says, with a word on a terminal when that takes a
/// while.
[[nodiscard]] Patience PatienceOf(const GlobalOptions& global, Console& console);
/// "unit 2, Linden Park", fit for a terminal.
[[nodiscard]] std::string NameOf(const UnitName& unit);
/// "in unit 2, Linden Park"
[[nodiscard]] std::string InUnit(const UnitName& unit);
/// "Unit 2, Linden Park"
[[nodiscard]] std::string TitleOf(const UnitName& unit);
/// That above what is printed of it.
void PrintTitle(Console& console, const UnitName& unit);

/// What programs read, byte by byte; on a terminal nothing in it can steer that.
void PrintRaw(Console& console, const std::function<void(std::ostream&)>& print);

/// What a session on the console is handed; `messageBox` shows messages.
[[nodiscard]] Surroundings SurroundingsOf(const GlobalOptions& global, Console& console,
                                          MessageBox messageBox);

}  // namespace qorhost
