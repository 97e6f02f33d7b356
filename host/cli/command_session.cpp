#include "host/cli/command_session.h"

#include <fmt/format.h>

#include <chrono>
#include <utility>

#include "host/cli/display_text.h"
#include "host/desks/store_overview.h"

namespace qorhost {

namespace {

std::unique_ptr<Store> OpenFile(const GlobalOptions& global, Access access, Console& console) {
  if (LookAt(global.file) == StorePlace::kFree) {
    throw FailureError(
        fmt::format("there is no database '{}': create one with 'qorhost init --demo', or name "
                    "another file with --db",
                    global.file.string()));
  }
  return OpenStoreFile(global.file, access, PatienceOf(global, console));
}

}  // namespace

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
    : CommandSession(OpenFile(global, access, console), global, console) {}

CommandSession::CommandSession(std::unique_ptr<Store> store, const GlobalOptions& global,
                               Console& console)
    : global_(global),
      console_(console),
      operator_(console, global.answer),
      session_(std::move(store),
               SurroundingsOf(
                   global, console,
                   [this](std::string_view text, qorcred::MessageStyle style,
                          std::string_view title) { return operator_.Show(text, style, title); })) {
}

std::vector<UnitName> CommandSession::ChosenUnits() {
  std::vector<UnitName> units = session_.Units();
  if (global_.unit) {
    std::erase_if(units, [this](const UnitName& unit) { return unit.key != *global_.unit; });
    if (units.empty()) {
      throw UsageError(fmt::format("there is no unit {} in '{}': 'qorhost units' lists them",
                                   *global_.unit, global_.file.string()));
    }
  }
  return units;
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
  units.resize(1);
  TellWhatIsMissing(units);
  return std::move(units.front());
}

void CommandSession::TellWhatIsMissing(const std::vector<UnitName>& units) {
  for (const std::string& missing : MissingSettings(session_, units)) {
    console_.err << "qorhost: " << Displayable(missing) << '\n';
  }
}

}  // namespace qorhost
