// The transactions of a connection, and what has become of one whose end the server did not tell.
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

// For how long it is tried to learn whether a transaction is stored.
constexpr std::chrono::seconds kLookTime(10);
constexpr const char* kBeginPart = "SAVEPOINT whole_part";

}  // namespace

void Connection::Begin(const char* sql) {
  RequireNoneLost();
  if (isWhole_) {
    RunAll(kBeginPart);
    hasPart_ = true;
    return;
  }
  try {
    RunAll(sql);
  } catch (const StoreError& failure) {
    if (!MayReopen(failure)) {
      throw;
    }
    Reopen();
    RunAll(sql);
  }
  begun_ = true;
}

std::vector<Result> Connection::BeginWaiting(std::vector<Step> steps, const Patience& patience) {
  RequireNoneLost();
  Step begin;
  begin.text = isWhole_ ? kBeginPart : "BEGIN";
  steps.insert(steps.begin(), std::move(begin));
  const auto run = [&] {
    BoundLocks(patience);
    hasPart_ = isWhole_;
    return RunSteps(steps, WaitingOf(patience));
  };
  Failure failure;
  try {
    failure = run();
  } catch (const StoreError& lost) {
    if (!MayReopen(lost)) {
      throw;
    }
  }
  if (isLost() && !failure.isCutShort) {
    if (isWhole_) {
      throw LostError(handle(), kFailed);
    }
    Reopen();
    failure = run();
  }
  begun_ = true;
  RequireDoneInTime(failure, steps.back().answer);
  std::vector<Result> answers;
  for (Step& step : std::span(steps).subspan(1)) {
    answers.push_back(std::move(step.answer));
  }
  return answers;
}

/// Whoever has begun a transaction that was lost has to hear of that first.
void Connection::RequireNoneLost() const {
  if (begun_ && isLost()) {
    throw LostError(handle(), kFailed);
  }
}

void Connection::BeginWhole() {
  Begin();
  isWhole_ = true;
}

void Connection::KeepWhole(const Witness& witness) {
  isWhole_ = false;
  Commit(witness);
}

void Connection::Commit(const Witness& witness) {
  if (givenUp_) {
    throw StoreError(kGivenUp);
  }
  if (isWhole_) {
    RunAll("RELEASE SAVEPOINT whole_part");
    hasPart_ = false;
    return;
  }
  const int backend = PQbackendPID(handle());
  std::vector<Step> steps = std::exchange(later_, {});
  Step& commit = steps.emplace_back();
  commit.text = "COMMIT";
  const Failure failure = RunSteps(steps, Looking());
  if (!isLost()) {
    if (failure.any()) {
      const StoreError error = ErrorOf(failure.refusal.get(), handle(), kFailed);
      UndoWhatIsOpen();
      throw error;
    }
    begun_ = false;
    // The server ends a transaction that has failed as it should, but tells what it has done.
    if (commit.answer.done() != "COMMIT") {
      throw StoreError(kGivenUp);
    }
    return;
  }
  begun_ = false;
  switch (FateOf(witness, backend)) {
    case Fate::kStored:
      return;
    case Fate::kNotStored:
      throw StoreError(
          "The connection to the server was lost while it was to store: nothing was stored; try "
          "again",
          StoreFault::kNoServer);
    case Fate::kUnknown:
      break;
  }
  throw StoreError(fmt::format("The connection to the server was lost while it was to store: {}",
                               AdviceFor(StoreFault::kUnknown)),
                   StoreFault::kUnknown);
}

/// What has become of a transaction whose end the server did not tell.
Connection::Fate Connection::FateOf(const Witness& witness, int backend) noexcept {
  using std::chrono::steady_clock;
  const steady_clock::time_point started = steady_clock::now();
  for (std::chrono::milliseconds pause = kShortestPause; steady_clock::now() - started < kLookTime;
       pause = std::min(pause * 2, kLongestPause)) {
    try {
      if (isLost()) {
        Open();
      }
      return LookAtFate(witness, backend);
    } catch (const std::exception&) {
      // It may be starting, or on its way to its end: that is asked once more.
    }
    if (!MayGoOn(pause)) {
      break;
    }
  }
  return Fate::kUnknown;
}

/// The same for whoever must not raise.
bool Connection::MayGoOn(std::chrono::milliseconds pause) const noexcept {
  try {
    return Pause(pause);
  } catch (const std::exception&) {
    return false;
  }
}

/// Raises while the server has not yet ended it.
Connection::Fate Connection::LookAtFate(const Witness& witness, int backend) {
  // Its other end may wait for ever for a network that was cut. A process may be ended by the login
  // that it works for, whatever role that has taken, and has again behind this message.
  RunAll(
      fmt::format("SET LOCAL ROLE NONE; SELECT pg_terminate_backend(pid) FROM pg_stat_activity "
                  "WHERE pid = {} AND backend_xid = '{}'::xid8::xid",
                  backend, witness.number));
  const std::array one{Sent(witness.number)};
  // One that a server has forgotten when it crashed is to come yet.
  const Result status =
      Run("SELECT CASE WHEN $1::xid8 >= pg_snapshot_xmax(pg_current_snapshot()) THEN 'aborted' "
          "ELSE pg_xact_status($1::xid8) END",
          one);
  const std::string_view text = status.Text(0, 0);
  if (text == "in progress") {
    throw StoreError("The transaction has not ended yet", StoreFault::kBusy);
  }
  if (text == "aborted") {
    return Fate::kNotStored;
  }
  // A server that has crashed gives the numbers of transactions that had written nothing to its
  // disk to others: "committed" may be said of another one.
  if (witness.select.empty()) {
    return Fate::kUnknown;
  }
  return Run(witness.select).rows() > 0 ? Fate::kStored : Fate::kNotStored;
}

void Connection::UndoWhatIsOpen() noexcept {
  later_.clear();
  givenUp_ = false;
  if (isWhole_) {
    UndoBackTo("whole_part");
    hasPart_ = false;
    return;
  }
  UndoBy("ROLLBACK");
  begun_ = false;
}

void Connection::UndoBackTo(const char* savepoint) noexcept {
  UndoBy(fmt::format("ROLLBACK TO SAVEPOINT {0}; RELEASE SAVEPOINT {0}", savepoint));
}

void Connection::UndoBy(const std::string& sql) noexcept {
  try {
    SendWhatWaits();  // what is gone back to may be in it
  } catch (const StoreError&) {
    // It belonged to what is undone.
  }
  if (!inTransaction()) {
    return;
  }
  try {
    RunAll(sql);
  } catch (const std::exception&) {
    // With the connection everything is undone that is not.
  }
}

bool Connection::inTransaction() const noexcept {
  if (isWhole_ && !hasPart_) {
    return false;
  }
  const PGTransactionStatusType status = PQtransactionStatus(handle());
  return status == PQTRANS_INTRANS || status == PQTRANS_INERROR;
}

}  // namespace qorhost::postgres
