#include "host/cli/store_session.h"

#include <fmt/format.h>

#include <system_error>
#include <utility>

#include "frame/convert.h"
#include "frame/siblings.h"
#include "host/cli/display_text.h"
#include "host/store/engines/opening.h"
#include "trace/tracing_services.h"

namespace qorhost {

using qorcred::RuntimeError;

std::unique_ptr<Store> OpenFile(const GlobalOptions& options, OpenMode mode) {
  std::error_code ignored;
  if (!std::filesystem::exists(options.file, ignored)) {
    throw FailureError(
        fmt::format("there is no database '{}': create one with 'qorhost init --demo', or name "
                    "another file with --db",
                    options.file.string()));
  }
  if (mode == OpenMode::kReadOnly && IsOlderStore(options.file)) {
    // Brought up to date by whatever is asked of it first.
    (void)OpenStore(options.file, OpenMode::kReadWrite);
  }
  return OpenStore(options.file, mode);
}

StoreSession::StoreSession(std::unique_ptr<Store> store, const GlobalOptions& options,
                           Console& console)
    : options_(options),
      operator_(console, log_, options.answer),
      messageBox_([this](std::string_view text, qorcred::MessageStyle style,
                         std::string_view title) { return operator_.Show(text, style, title); }),
      clock_(console.environment.clock),
      transcript_([&err = console.err](std::string_view line) { err << line << '\n'; }),
      connection_(std::make_shared<StoreConnection>(std::move(store), clock_)),
      visibleConnection_(connection_),
      storeHost_(MakeServices()) {
  if (options.trace) {
    visibleConnection_ = std::make_shared<TracingConnection>(connection_, transcript_);
    tracingHost_ = std::make_unique<TracingHost>(storeHost_, transcript_);
  }
}

StoreHost::Services StoreSession::MakeServices() {
  StoreHost::Services services;
  services.clock = clock_;
  services.messageBox = [this](std::string_view text, qorcred::MessageStyle style,
                               std::string_view title) { return messageBox_(text, style, title); };
  services.failureLog = [this](std::string_view operation, const RuntimeError& failure) {
    log_.failures.push_back(fmt::format("{} failed: {} (error {})", operation,
                                        failure.description(), static_cast<int>(failure.number())));
  };
  const ComponentRegistry components = services.components;
  services.components.Register(
      qorcred::component::kDatabaseManager, [this, components, onInsert = onInsert_] {
        return std::make_shared<WatchedManager>(
            components.Create(qorcred::component::kDatabaseManager),
            [this](std::string_view errorText) { log_.failures.emplace_back(errorText); },
            [onInsert](std::string_view table) {
              if (*onInsert) {
                (*onInsert)(table);
              }
            });
      });
  return services;
}

qorcred::Host& StoreSession::host() {
  if (tracingHost_ != nullptr) {
    return *tracingHost_;
  }
  return storeHost_;
}

std::vector<UnitName> StoreSession::Units() {
  const QueryResult result = sql().Select("SELECT UnitKey, UnitName FROM Units ORDER BY UnitKey");
  std::vector<UnitName> units;
  for (const ResultRow row : result.rows()) {
    units.push_back({qorcred::ToLong(row[0]), qorcred::TextOrEmpty(row[1])});
  }
  return units;
}

std::vector<UnitName> StoreSession::ChosenUnits() {
  std::vector<UnitName> units = Units();
  if (!options_.unit) {
    return units;
  }
  for (UnitName& unit : units) {
    if (unit.key == *options_.unit) {
      return {std::move(unit)};
    }
  }
  throw UsageError(fmt::format("there is no unit {} in '{}': 'qorhost units' lists them",
                               *options_.unit, options_.file.string()));
}

UnitName StoreSession::ChosenUnit() {
  std::vector<UnitName> units = ChosenUnits();
  if (units.empty()) {
    throw RefusedError(
        fmt::format("'{}' has no units: 'qorhost init --demo' makes a store with three",
                    options_.file.string()));
  }
  return std::move(units.front());
}

}  // namespace qorhost
