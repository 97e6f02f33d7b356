// The statements of a connection. Each waits for its answer in the same loop, in which whoever
// waits looks up.
#include <fmt/format.h>
#include <libpq-fe.h>

#include <algorithm>
#include <array>
#include <exception>
#include <utility>

#include "host/store/postgres/connection.h"
#include "host/store/postgres/engine_error.h"

namespace qorhost::postgres {

namespace {

// A statement that is done at once is done, whoever has given up: the end of a transaction is one.
constexpr std::chrono::seconds kAtOnce(2);

/// Whether nothing of a transaction is kept whose write has failed so: not the row is at fault, and
/// what comes behind it would leave half of the work. A file gives up likewise.
bool EndsAll(const StoreError& failure) {
  constexpr std::array kEnds{StoreFault::kBusy,     StoreFault::kFull,    StoreFault::kDisk,
                             StoreFault::kNoMemory, StoreFault::kDamaged, StoreFault::kTooMuchWork};
  return std::find(kEnds.begin(), kEnds.end(), failure.fault()) != kEnds.end();
}

std::int64_t LockTimeoutOf(const Patience& patience) {
  return std::max<std::int64_t>(patience.limit.count(), 1);  // 0 would have no end
}

}  // namespace

/// Of statements that are the program's own.
Watch Connection::Looking() const {
  Watch watch;
  if (goesOn_) {
    watch.goesOn = [this](std::chrono::milliseconds passed) {
      return goesOn_() || passed < kAtOnce;
    };
  }
  return watch;
}

/// The server itself counts how long locks are waited for: it knows what is waiting and what work.
Watch Connection::WaitingOf(const Patience& patience) {
  Watch watch;
  watch.goesOn = patience.waiting;
  return watch;
}

Result Connection::Run(const std::string& sql, std::span<const Sent> values) {
  SendWhatWaits();
  SentTexts sent(values);
  return AnswerTo(PQsendQueryParams(handle(), sql.c_str(), sent.count(), nullptr, sent.pointers(),
                                    nullptr, nullptr, 0) != 0,
                  Looking());
}

void Connection::RunAll(const std::string& sql) {
  SendWhatWaits();
  (void)AnswerTo(PQsendQuery(handle(), sql.c_str()) != 0, Looking());
}

/// The answer to a text, its last one or the last one that has rows.
Result Connection::AnswerTo(bool isSent, const Watch& watch) {
  if (!isSent) {
    throw LostError(handle(), kFailed);
  }
  Result last(nullptr);
  const Failure failure = ReadAnswers(handle(), watch, last);
  TellAll();
  RequireDone(failure, last);
  return last;
}

void Connection::RunLater(PreparedText& statement, std::span<const Sent> values) {
  Step& step = later_.emplace_back();
  step.prepared = &statement;
  step.values = SentTexts(values);
}

void Connection::SendWhatWaits() {
  if (later_.empty()) {
    return;
  }
  std::vector<Step> steps = std::exchange(later_, {});
  RequireDone(RunSteps(steps, Looking()), steps.back().answer);
}

/// Everything goes to the server at once. Whoever calls it looks whether the connection was lost.
Failure Connection::RunSteps(std::span<Step> steps, const Watch& watch) {
  try {
    return RunTogether(handle(), names_, steps, watch, [this] { TellAll(); });
  } catch (const StoreError&) {
    if (!isLost()) {
      throw;
    }
  }
  return {};
}

/// Raises what has gone wrong before the last answer.
void Connection::RequireDone(const Failure& failure, const Result& answer) const {
  if (failure.raised != nullptr) {
    std::rethrow_exception(failure.raised);
  }
  if (failure.isCutShort && isLost()) {
    throw GivenUpError();
  }
  if (failure.refusal.get() == nullptr) {
    if (answer.get() == nullptr) {
      throw LostError(handle(), kFailed);
    }
    return;
  }
  StoreError error = ErrorOf(failure.refusal.get(), handle(), kFailed);
  if (failure.isCutShort && error.fault() == StoreFault::kTooMuchWork) {
    throw StoreError(fmt::format("{}: it worked for too long and was ended ({})", kFailed,
                                 AdviceFor(StoreFault::kTooMuchWork)),
                     StoreFault::kTooMuchWork);
  }
  throw error;
}

Result Connection::Run(PreparedText& statement, std::span<const Sent> values, bool guarded,
                       const TakeRow& take, const Watch& watch) {
  if (begun_) {
    return RunOnce(statement, values, guarded, take, watch);
  }
  bool isTaken = false;
  TakeRow noting;
  if (take) {
    noting = [&](const Result& row) {
      isTaken = true;
      take(row);
    };
  }
  try {
    return RunOnce(statement, values, guarded, noting, watch);
  } catch (const StoreError& failure) {
    if (!MayReopen(failure) || isTaken) {
      throw;
    }
  }
  Reopen();
  return RunOnce(statement, values, guarded, noting, watch);
}

Result Connection::RunOnce(PreparedText& statement, std::span<const Sent> values, bool guarded,
                           const TakeRow& take, const Watch& watch) {
  if (givenUp_) {
    throw StoreError(kGivenUp);
  }
  SentTexts sent(values);
  std::vector<Step> steps = std::exchange(later_, {});
  if (guarded) {
    steps.emplace_back().text = "SAVEPOINT statement";
  }
  const std::size_t own = steps.size();
  Step& step = steps.emplace_back();
  step.prepared = &statement;
  step.values = std::move(sent);
  step.takeRow = take;
  if (guarded) {
    steps.emplace_back().text = "RELEASE statement";
  }
  const Failure failure = RunSteps(steps, watch);
  try {
    RequireDone(failure, steps[own].answer);
  } catch (const StoreError& refusal) {
    const bool isRead = statement.sql.starts_with("SELECT");
    UndoBehind(guarded, begun_ && !isRead && EndsAll(refusal));
    throw;
  } catch (...) {
    UndoBehind(guarded, false);
    throw;
  }
  return std::move(steps[own].answer);
}

/// A statement that has failed: alone where it was guarded, or with all of the transaction.
void Connection::UndoBehind(bool guarded, bool endsAll) noexcept {
  if (endsAll) {
    UndoWhatIsOpen();
    givenUp_ = true;
  } else if (guarded) {
    UndoBackTo("statement");
  }
}

/// Waiting for locks ends as the patience says, from here on, on this connection.
void Connection::BoundLocks(const Patience& patience) {
  const std::int64_t timeout = LockTimeoutOf(patience);
  if (lockTimeout_ != timeout) {
    RunAll(fmt::format("SET lock_timeout = {}", timeout));
    lockTimeout_ = timeout;
  }
}

Result Connection::RunWaiting(const std::string& sql, const Patience& patience) {
  SendWhatWaits();
  const std::string limited = fmt::format(
      "SET LOCAL lock_timeout = {}; {}; SET LOCAL lock_timeout = 0", LockTimeoutOf(patience), sql);
  if (PQsendQuery(handle(), limited.c_str()) == 0) {
    throw LostError(handle(), kFailed);
  }
  Result rows(nullptr);
  const Failure failure = ReadAnswers(handle(), WaitingOf(patience), rows);
  RequireDoneInTime(failure, rows);
  return rows;
}

/// The same of what may have waited for another one's lock.
void Connection::RequireDoneInTime(const Failure& failure, const Result& answer) const {
  try {
    RequireDone(failure, answer);
  } catch (const StoreError& error) {
    const bool isBusy = failure.isCutShort || error.fault() == StoreFault::kBusy;
    throw isBusy && !isLost() ? BusyError() : error;
  }
}

}  // namespace qorhost::postgres
