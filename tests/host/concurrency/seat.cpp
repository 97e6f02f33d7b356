#include "tests/host/concurrency/seat.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <sqlite3.h>

#include <chrono>

#include "host/desks/desk_error.h"
#include "host/desks/input_fault.h"
#include "host/store/engines/opening.h"
#include "host/store/sqlite/store.h"

namespace qorhost::test {

namespace {

class FileSteps final : public Steps {
 public:
  explicit FileSteps(Store& store) : database_(sqlite::DatabaseOf(store)) {}
  ~FileSteps() override { sqlite3_trace_v2(database_.handle(), 0, nullptr, nullptr); }

  void Tell(std::function<void()> step) override {
    step_ = std::move(step);
    sqlite3_trace_v2(database_.handle(), SQLITE_TRACE_STMT, &Called, this);
  }

 private:
  static int Called(unsigned /*event*/, void* steps, void* /*statement*/, void* text) {
    // What a trigger runs is a part of its statement.
    if (!std::string_view(static_cast<const char*>(text)).starts_with("--")) {
      static_cast<FileSteps*>(steps)->step_();
    }
    return 0;
  }

  sqlite::Database& database_;
  std::function<void()> step_;
};

}  // namespace

Seat::Seat(const std::filesystem::path& file, const std::string& who, bool traced)
    : Seat(OpenStore(file, OpenMode::kReadWrite), nullptr, who, traced) {
  steps_ = std::make_unique<FileSteps>(*store_);
}

Seat::Seat(std::unique_ptr<Store> store, std::unique_ptr<Steps> steps, const std::string& who,
           bool traced)
    : store_(store.get()), steps_(std::move(steps)) {
  Surroundings surroundings;
  surroundings.clock = [] { return qorcred::FromCivil({2026, 1, 31, 14, 5, 9}); };
  surroundings.author = {who, "desk of " + who, {}};
  surroundings.patience = {std::chrono::milliseconds(0), {}};
  surroundings.messageBox = [this](std::string_view text, qorcred::MessageStyle style,
                                   std::string_view) {
    shown.emplace_back(text);
    if (onBox) {
      onBox(text);
    }
    if (style != qorcred::MessageStyle::kQuestion) {
      return qorcred::MessageButton::kOk;
    }
    return yes ? qorcred::MessageButton::kYes : qorcred::MessageButton::kNo;
  };
  if (traced) {
    surroundings.trace = [this](std::string_view line) { trace.emplace_back(line); };
  }
  session_ = std::make_unique<DeskSession>(std::move(store), std::move(surroundings));
}

Seat::~Seat() = default;

sqlite::Database& Seat::database() {
  return sqlite::DatabaseOf(*store_);
}

void Seat::BeforeStatements(std::function<void(int nth)> step) {
  statements_ = 0;
  steps_->Tell([this, step = std::move(step)] { step(statements_++); });
}

std::string TextOf(const Told& told) {
  constexpr std::string_view kNames[] = {"done",  "refused",   "failed",
                                         "stale", "cancelled", "unknown"};
  return fmt::format("{} messages [{}] failures [{}] changed by [{}]",
                     kNames[static_cast<std::size_t>(told.ending)], fmt::join(told.messages, "; "),
                     fmt::join(told.failures, "; "), fmt::join(told.changedBy, "; "));
}

Told TellingRaised(const std::function<Told()>& work) {
  try {
    return work();
  } catch (const InputFault& fault) {
    return {Ending::kRefused, {fmt::format("{} '{}'", fault.field(), fault.value())}, {}, {}};
  } catch (const RefusedError& refusal) {
    return {Ending::kRefused, {refusal.what()}, {}, {}};
  } catch (const std::exception& failure) {
    return {EndingBy(failure), {}, {failure.what()}, {}};
  }
}

Told RunAt(const SeatOperation& operation, Seat& seat) {
  return TellingRaised([&] { return operation.prepare(seat).run(); });
}

}  // namespace qorhost::test
