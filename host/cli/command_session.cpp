#include "host/cli/command_session.h"

#include <fmt/format.h>

#include <chrono>
#include <utility>

namespace qorhost {

namespace {

std::unique_ptr<Store> OpenFile(const GlobalOptions& global, Access access) {
  if (LookAt(global.file) == StorePlace::kFree) {
    throw FailureError(
        fmt::format("there is no database '{}': create one with 'qorhost init --demo', or name "
                    "another file with --db",
                    global.file.string()));
  }
  return OpenStoreFile(global.file, access);
}

/// Waits for another writer, with a word on a terminal when that takes a while.
Patience PatienceOf(const GlobalOptions& global, Console& console) {
  static constexpr std::chrono::seconds kWordless(2);
  const std::chrono::seconds limit(global.wait);
  Patience patience{limit, {}};
  if (console.environment.errorIsTerminal) {
    patience.waiting = [&console, limit, told = false](std::chrono::milliseconds waited) mutable {
      if (waited >= kWordless && !told) {
        told = true;
        console.err << fmt::format(
            "qorhost: another program is writing to the store: waiting for up to {} s.\n",
            limit.count());
      }
      return true;
    };
  }
  return patience;
}

}  // namespace

Surroundings SurroundingsOf(const GlobalOptions& global, Console& console, MessageBox messageBox) {
  Surroundings surroundings;
  surroundings.messageBox = std::move(messageBox);
  surroundings.clock = console.environment.clock;
  surroundings.author = console.environment.author;
  surroundings.patience = PatienceOf(global, console);
  if (global.trace) {
    surroundings.transcript = [&err = console.err](std::string_view line) { err << line << '\n'; };
  }
  return surroundings;
}

CommandSession::CommandSession(const GlobalOptions& global, Access access, Console& console)
    : CommandSession(OpenFile(global, access), global, console) {}

CommandSession::CommandSession(std::unique_ptr<Store> store, const GlobalOptions& global,
                               Console& console)
    : global_(global),
      operator_(console, global.answer),
      session_(std::move(store),
               SurroundingsOf(
                   global, console,
                   [this](std::string_view text, qorcred::MessageStyle style,
                          std::string_view title) { return operator_.Show(text, style, title); })) {
}

std::vector<UnitName> CommandSession::ChosenUnits() {
  std::vector<UnitName> units = session_.Units();
  if (!global_.unit) {
    return units;
  }
  for (UnitName& unit : units) {
    if (unit.key == *global_.unit) {
      return {std::move(unit)};
    }
  }
  throw UsageError(fmt::format("there is no unit {} in '{}': 'qorhost units' lists them",
                               *global_.unit, global_.file.string()));
}

bool CommandSession::Asks(const std::string& question) {
  return operator_.Show(question, qorcred::MessageStyle::kQuestion, "qorhost") ==
         qorcred::MessageButton::kYes;
}

UnitName CommandSession::ChosenUnit() {
  std::vector<UnitName> units = ChosenUnits();
  if (units.empty()) {
    throw RefusedError(
        fmt::format("'{}' has no units: 'qorhost init --demo' makes a store with three",
                    global_.file.string()));
  }
  return std::move(units.front());
}

}  // namespace qorhost
