#include "host/desks/session.h"

#include <fmt/format.h>

#include <utility>

#include "frame/convert.h"
#include "frame/siblings.h"
#include "host/store/observed_store.h"

namespace qorhost {

using qorcred::MessageStyle;

DeskSession::DeskSession(std::unique_ptr<Store> store, Surroundings surroundings)
    : surroundings_(std::move(surroundings)),
      connection_(
          std::make_shared<StoreConnection>(Watched(std::move(store)), surroundings_.clock)),
      attendance_(std::move(surroundings_.messageBox), *connection_),
      storeHost_(MakeServices()) {
  connection_->store().SetPatience(surroundings_.patience);
  sql().work().SignAs(surroundings_.author);
  TraceTo(surroundings_.trace);
}

void DeskSession::TraceTo(qorcred::trace::TraceSink sink) {
  tracedHost_.reset();
  tracer_ = sink ? std::make_shared<qorcred::trace::Tracer>(std::move(sink)) : nullptr;
  if (tracer_ != nullptr) {
    tracedHost_ = std::make_unique<qorcred::trace::TracedHost>(storeHost_, tracer_);
  }
}

std::unique_ptr<Store> DeskSession::Watched(std::unique_ptr<Store> store) {
  if (!surroundings_.trace && !surroundings_.tracedLater) {
    return store;
  }
  return Observed(std::move(store), [this](std::string_view statement, std::int64_t rows,
                                           const std::exception* failure) {
    if (tracer_ == nullptr || tracer_->inStatement()) {
      return;  // nobody asks, or it is the controller's own, which stands there already
    }
    const std::string text = "host " + qorcred::trace::SpelledText(statement);
    tracer_->Note(failure == nullptr
                      ? fmt::format("{} -> {} {}", text, rows, rows == 1 ? "row" : "rows")
                      : fmt::format("{} ! {}", text, qorcred::trace::SpelledText(failure->what())));
  });
}

StoreHost::Services DeskSession::MakeServices() {
  StoreHost::Services services;
  services.clock = surroundings_.clock;
  services.messageBox = [this](std::string_view text, MessageStyle style, std::string_view title) {
    return attendance_.Show({std::string(text), style, std::string(title)});
  };
  services.letEventsRun = surroundings_.pendingEvents;
  services.failureLog = [this](std::string_view operation, const qorcred::RuntimeError& failure) {
    if (failure.number() == qorcred::ErrorNumber::kApplicationDefined) {
      attendance_.NoteFailure(
          failure.description());  // the store's own words, as statements have them
      return;
    }
    attendance_.NoteTrapped(fmt::format("{} failed: {} (error {})", operation,
                                        failure.description(), static_cast<int>(failure.number())));
  };
  const ComponentRegistry components = services.components;
  services.components.Register(qorcred::component::kDatabaseManager, [this, components] {
    return std::make_shared<WatchedManager>(
        components.Create(qorcred::component::kDatabaseManager),
        [this](std::string_view errorText) { attendance_.NoteFailure(errorText); },
        [this](std::string_view table) { attendance_.NoteInsert(table); });
  });
  return services;
}

qorcred::Host& DeskSession::host() {
  return tracedHost_ != nullptr ? *tracedHost_ : ownHost();
}

std::vector<UnitName> DeskSession::Units() {
  const QueryResult result = sql().Select("SELECT UnitKey, UnitName FROM Units ORDER BY UnitKey");
  std::vector<UnitName> units;
  for (const ResultRow row : result.rows()) {
    units.push_back({qorcred::ToLong(row[0]), qorcred::TextOrEmpty(row[1])});
  }
  return units;
}

}  // namespace qorhost
