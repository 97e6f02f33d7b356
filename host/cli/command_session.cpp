#include "host/cli/command_session.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <sstream>
#include <utility>

#include "host/desks/history.h"
#include "host/desks/store_overview.h"
#include "host/desks/whole_number.h"
#include "host/desks/words.h"
#include "host/files/json_writer.h"
#include "host/terminal/display_text.h"
#include "host/terminal/table_printer.h"

namespace qorhost {

namespace {

std::unique_ptr<Store> OpenFile(const GlobalOptions& global, Access access, Console& console) {
  try {
    return OpenStoreFile(global.file, access, PatienceOf(global, console));
  } catch (const MissingStore& missing) {
    throw FailureError(std::string(missing.what()) +
                       ": create one with 'qorhost init --demo', or name another file with --db");
  }
}

/// "1 Harbour Court, 2 Linden Park", not too many of them.
std::string Listed(const std::vector<UnitName>& units) {
  constexpr std::size_t kMost = 20;
  std::vector<std::string> names;
  for (std::size_t at = 0; at < std::min(units.size(), kMost); ++at) {
    names.push_back(fmt::format("{} {}", units[at].key, units[at].name));
  }
  return fmt::format("{}{}", fmt::join(names, ", "), units.size() > kMost ? ", ..." : "");
}

/// What a trial would have changed: "Tenants: 1 changed"; of `all` its rows as many as the history
/// would tell nothing of are counted behind it, or alone.
std::string WouldHaveChanged(const TriedChanges& tried, std::optional<std::int64_t> all) {
  const auto rows = [](std::int64_t count) {
    return Counted(static_cast<std::size_t>(count), "row", "rows");
  };
  if (tried.summary.empty()) {
    return rows(all.value_or(tried.rows));
  }
  const std::int64_t untold = all.value_or(tried.rows) - tried.rows;
  return untold <= 0 ? tried.summary
                     : fmt::format("{}; and {} of which the history tells nothing", tried.summary,
                                   rows(untold));
}

/// What a trial would have queued besides: ", and queued 2 programming steps".
std::string StepsThen(std::int64_t steps) {
  return steps <= 0
             ? std::string()
             : fmt::format(", and queued {}", Counted(static_cast<std::size_t>(steps),
                                                      "programming step", "programming steps"));
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
        console.Live() << fmt::format(
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
  if (global.trace || console.traceFile != nullptr) {
    surroundings.trace = [err = global.trace ? &console.Live() : nullptr,
                          file = console.traceFile](std::string_view line) {
      if (err != nullptr) {
        *err << Displayable(line) << '\n';
      }
      if (file != nullptr) {
        *file << line << '\n';
      }
    };
  }
  return surroundings;
}

CommandSession::CommandSession(const GlobalOptions& global, Access access, Console& console,
                               Trial trial)
    : global_(global),
      console_(console),
      trial_(trial),
      operator_(console, global.answer, trial),
      session_(OpenFile(global, access, console),
               SurroundingsOf(
                   global, console,
                   [this](std::string_view text, qorcred::MessageStyle style,
                          std::string_view title) { return operator_.Show(text, style, title); })) {
  if (trial_ == Trial::kYes) {
    session_.OnlyTry();
  }
}

bool CommandSession::ToldTrial(const Outcome& outcome, std::optional<std::int64_t> rows) {
  if (trial_ == Trial::kNo) {
    return false;
  }
  console_.stored = false;
  if (global_.json || !outcome.done() || outcome.unchanged) {
    return false;
  }
  const TriedChanges tried = ChangesTried(session_, NamedFor::kPeople);
  if (!tried.fields.rows.empty()) {
    PrintTable(console_.out, tried.fields, 0, WidestText(console_));
  }
  console_.out << "Would have changed " << WouldHaveChanged(tried, rows) << StepsThen(tried.steps)
               << ". This was a trial, nothing was changed.\n";
  return true;
}

void CommandSession::TellDone(const Outcome& outcome, const std::function<ChangeReport()>& report,
                              const std::function<void()>& print) {
  if (ToldTrial(outcome) || !outcome.done()) {
    return;
  }
  if (global_.json) {
    Report(report());
  } else {
    print();
  }
}

void CommandSession::Report(ChangeReport report) {
  report.trial = trial_ == Trial::kYes;
  if (report.trial) {
    report.stored = false;
    for (TouchedThing& thing : report.added) {
      thing.id = qorcred::Null{};  // its row gets another identity later
    }
  }
  AddTried(report.facts);
  PrintChange(console_.out, report);
}

void CommandSession::AddTried(JsonObject& facts) {
  if (trial_ == Trial::kYes) {
    facts.Add("changes", ChangesTried(session_, NamedFor::kPrograms).fields);
  } else {
    facts.Add("changes", qorcred::Null{});
  }
}

std::optional<UnitName> CommandSession::UnitOf(UnitScope scope) {
  const std::optional<std::int32_t> key = scope == UnitScope::kNamed ? NamedUnit() : global_.unit;
  return key ? std::optional(Find(key, std::to_string(*key), session_.Units())) : std::nullopt;
}

std::vector<UnitName> CommandSession::ChosenUnits(UnitScope scope) {
  const std::optional<UnitName> one = UnitOf(scope);
  return one ? std::vector{*one} : session_.Units();
}

UnitName CommandSession::UnitNamed(const std::string& given) {
  return Find(WholeNumber(given), given, session_.Units());
}

UnitName CommandSession::Find(std::optional<std::int32_t> key, std::string_view given,
                              std::vector<UnitName> units) const {
  for (UnitName& unit : units) {
    if (key && unit.key == *key) {
      return std::move(unit);
    }
  }
  throw UsageError(fmt::format("there is no unit '{}' in '{}': 'qorhost units' lists them", given,
                               global_.file.string()));
}

std::optional<std::int32_t> CommandSession::NamedUnit() const {
  if (global_.unit || !console_.environment.unit) {
    return global_.unit;
  }
  const auto key = WholeNumber(*console_.environment.unit);
  if (!key) {
    throw UsageError(
        fmt::format("QORHOST_UNIT is '{}', which is no key of a unit: set it to a whole number, or "
                    "say --unit N",
                    *console_.environment.unit));
  }
  return key;
}

void CommandSession::RequireConsent(const std::string& question) {
  if (!operator_.Asks(question)) {
    throw RefusedError("nothing was changed");
  }
}

void CommandSession::RequireDeletion() const {
  if (global_.answer == false) {
    throw RefusedError("nothing was deleted: --no says so");
  }
}

UnitName CommandSession::ChosenUnit() {
  std::vector<UnitName> units = session_.Units();
  if (units.empty()) {
    throw RefusedError(fmt::format(
        "'{}' has no units: 'qorhost units add' adds one, 'qorhost init --demo' makes a store "
        "with three",
        global_.file.string()));
  }
  const std::optional<std::int32_t> key = NamedUnit();
  UnitName chosen =
      key ? Find(key, std::to_string(*key), std::move(units)) : std::move(units.front());
  TellWhatIsMissing({chosen});
  return chosen;
}

UnitName CommandSession::UnitToChange() {
  if (NamedUnit()) {
    return ChosenUnit();
  }
  const std::vector<UnitName> units = session_.Units();
  if (units.size() > 1) {
    throw UsageError(
        fmt::format("say which unit to change with --unit N, or set QORHOST_UNIT: there are {}",
                    Listed(units)));
  }
  return ChosenUnit();
}

std::string NameOf(const UnitName& unit) {
  return unit.name.empty() ? fmt::format("unit {}", unit.key)
                           : fmt::format("unit {}, {}", unit.key, Displayable(unit.name));
}

std::string InUnit(const UnitName& unit) {
  return "in " + NameOf(unit);
}

void PrintRaw(Console& console, const std::function<void(std::ostream&)>& print) {
  if (!console.environment.outputIsTerminal) {
    print(console.out);
    return;
  }
  std::ostringstream text;
  print(text);
  console.out << DisplayableLines(text.str());
}

std::string TitleOf(const UnitName& unit) {
  std::string title = NameOf(unit);
  title.front() = 'U';
  return title;
}

void PrintTitle(Console& console, const UnitName& unit) {
  console.Remarks() << TitleOf(unit) << '\n';
}

void CommandSession::TellWhatIsMissing(const std::vector<UnitName>& units) {
  for (const std::string& missing : MissingSettings(session_, units)) {
    console_.err << "qorhost: " << Displayable(missing) << '\n';
    console_.told = missing;
  }
}

}  // namespace qorhost
