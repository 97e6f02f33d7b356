#include "host/store/postgres/connection.h"

#include <fmt/format.h>
#include <libpq-fe.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <exception>
#include <future>
#include <thread>
#include <utility>
#include <vector>

#include "host/store/postgres/change_triggers.h"
#include "host/store/postgres/connecting.h"
#include "host/store/postgres/engine_error.h"
#include "host/store/server_passwords.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

namespace {

constexpr int kOldestServer = 150000;
// For how long a server that is not there is tried again: it may be starting.
constexpr std::chrono::seconds kReopenTime(5);
// And for how long to learn whether a transaction is stored.
constexpr std::chrono::seconds kLookTime(10);
constexpr std::chrono::milliseconds kShortestPause(20);
constexpr std::chrono::milliseconds kLongestPause(500);
// How often somebody looks up who waits for a server meanwhile.
constexpr std::chrono::milliseconds kLookUp(20);

constexpr const char* kFailed = "The statement failed";
constexpr const char* kBeginPart = "SAVEPOINT whole_part";

/// The server itself counts how long locks are waited for: it knows what is waiting and what work.
Watch WaitingOf(const Patience& patience) {
  Watch watch;
  watch.goesOn = patience.waiting;
  return watch;
}

std::int64_t LockTimeoutOf(const Patience& patience) {
  return std::max<std::int64_t>(patience.limit.count(), 1);  // 0 would have no end
}

}  // namespace

/// Who is told of changed rows. Stays where it is, whoever owns the connection.
struct Connection::Listener {
  std::function<void(std::string_view)> told;

  static void Called(void* context, const pg_result* notice) {
    const auto& listener = *static_cast<const Listener*>(context);
    const char* const state = PQresultErrorField(notice, PG_DIAG_SQLSTATE);
    if (listener.told && state != nullptr && state == kChangedRow) {
      listener.told(PQresultErrorField(notice, PG_DIAG_MESSAGE_PRIMARY));
    }
  }
};

void Connection::Finish::operator()(pg_conn* handle) const noexcept {
  PQfinish(handle);
}

Connection::Connection(const std::string& name, GoesOn goesOn)
    : asked_(name),
      name_(ShownName(name)),
      goesOn_(std::move(goesOn)),
      listener_(std::make_unique<Listener>()) {
  RequireReadable(name);
  Open();
}

/// The library waits for a server that says nothing without asking anybody. Whoever gives up leaves
/// it to that: what becomes of it is thrown away.
Connection::Handle Connection::ConnectBeside() const {
  std::packaged_task<Handle()> connecting([asked = asked_, password = TypedPassword(asked_)] {
    return Handle(Connect(asked, password));
  });
  std::future<Handle> connected = connecting.get_future();
  std::thread(std::move(connecting)).detach();
  while (connected.wait_for(kLookUp) != std::future_status::ready) {
    if (!goesOn_()) {
      throw GivenUpError();
    }
  }
  return connected.get();
}

Connection::Handle Connection::ConnectOnce() const {
  return goesOn_ ? ConnectBeside() : Handle(Connect(asked_, TypedPassword(asked_)));
}

void Connection::Open() {
  handle_ = ConnectOnce();
  if (isLost() && PQconnectionNeedsPassword(handle()) == 1 && AskPasswordOf(asked_, name_)) {
    handle_ = ConnectOnce();
  }
  if (isLost() && PQconnectionUsedPassword(handle()) == 1) {
    ForgetPassword(asked_);  // so that a person may mend it
  }
  ++names_.connection;
  lockTimeout_ = 0;
  if (isLost()) {
    // Later it is known what was there.
    const Answer answer = names_.connection == 1 ? AnswerOf(asked_) : Answer::kNone;
    throw ConnectionError(handle(), fmt::format("The store '{}' cannot be opened", name_), answer);
  }
  // What else the server has to say beside its answers is nothing for the terminal.
  PQsetNoticeReceiver(handle(), &Listener::Called, listener_.get());
  RequireServer();
  if (prepare_) {
    prepare_(*this);
  }
}

/// Whether it may be tried once more behind it.
bool Connection::Pause(std::chrono::milliseconds pause) const {
  using std::chrono::steady_clock;
  const steady_clock::time_point end = steady_clock::now() + pause;
  while (goesOn_ && steady_clock::now() < end) {
    if (!goesOn_()) {
      return false;
    }
    std::this_thread::sleep_for(std::min(pause, kLookUp));
  }
  std::this_thread::sleep_until(end);
  return true;
}

void Connection::Reopen() {
  using std::chrono::steady_clock;
  const steady_clock::time_point begun = steady_clock::now();
  // What was waited for in vain a moment ago is tried once: the same operation asks again.
  const bool isKnown = triedInVain_ && begun - *triedInVain_ < kReopenTime;
  const steady_clock::time_point end = isKnown ? begun : begun + kReopenTime;
  for (std::chrono::milliseconds pause = kShortestPause;;) {
    try {
      Open();
      triedInVain_.reset();
      return;
    } catch (const StoreError& failure) {
      if (failure.fault() != StoreFault::kNoServer) {
        throw;
      }
      if (steady_clock::now() + pause > end) {
        triedInVain_ = steady_clock::now();
        throw;
      }
    }
    if (!Pause(pause)) {
      throw GivenUpError();
    }
    pause = std::min(pause * 2, kLongestPause);
  }
}

void Connection::Prepare(std::function<void(Connection&)> prepare) {
  prepare_ = std::move(prepare);
  prepare_(*this);
}

Connection::~Connection() = default;
Connection::Connection(Connection&&) noexcept = default;
Connection& Connection::operator=(Connection&&) noexcept = default;

void Connection::RequireServer() {
  if (PQserverVersion(handle()) < kOldestServer) {
    throw StoreError(
        fmt::format("The store '{}' cannot be opened: its server is older than PostgreSQL 15",
                    name_),
        StoreFault::kCannotOpen);
  }
  if (Run("SHOW server_encoding").Text(0, 0) != "UTF8") {
    throw StoreError(
        fmt::format("The store '{}' cannot be opened: the database keeps its texts in another "
                    "encoding than UTF-8: create it with ENCODING 'UTF8'",
                    name_),
        StoreFault::kCannotOpen);
  }
  // Rows come in the order in which they are asked for; texts are what they say; numbers have all
  // their digits.
  RunAll(
      "SET max_parallel_workers_per_gather = 0; SET standard_conforming_strings = on; "
      "SET extra_float_digits = 1; SET client_min_messages = error");
}

Result Connection::Run(const std::string& sql, std::span<const Sent> values) {
  SendWhatWaits();
  SentTexts sent(values);
  Result result(PQexecParams(handle(), sql.c_str(), sent.count(), nullptr, sent.pointers(), nullptr,
                             nullptr, 0));
  if (!result.isDone()) {
    throw ErrorOf(result.get(), handle(), kFailed);
  }
  return result;
}

void Connection::Begin(const char* sql) {
  RequireNoneLost();
  if (isWhole_) {
    RunAll(kBeginPart);
    hasPart_ = true;
    return;
  }
  try {
    RunAll(sql);
  } catch (const StoreError&) {
    if (!isLost()) {
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
  } catch (const StoreError&) {
    if (!isLost()) {
      throw;
    }
  }
  if (isLost()) {
    if (isWhole_) {
      throw LostError(handle(), kFailed);
    }
    Reopen();
    failure = run();
  }
  begun_ = true;
  try {
    RequireDone(failure, steps.back().answer);
  } catch (const StoreError& error) {
    const bool isBusy = failure.isCutShort || error.fault() == StoreFault::kBusy;
    throw isBusy && !isLost() ? BusyError() : error;
  }
  std::vector<Result> answers;
  for (Step& step : std::span(steps).subspan(1)) {
    answers.push_back(std::move(step.answer));
  }
  return answers;
}

/// Waiting for locks ends as the patience says, from here on, on this connection.
void Connection::BoundLocks(const Patience& patience) {
  const std::int64_t timeout = LockTimeoutOf(patience);
  if (lockTimeout_ != timeout) {
    RunAll(fmt::format("SET lock_timeout = {}", timeout));
    lockTimeout_ = timeout;
  }
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
  if (isWhole_) {
    RunAll("RELEASE SAVEPOINT whole_part");
    hasPart_ = false;
    return;
  }
  const int backend = PQbackendPID(handle());
  std::vector<Step> steps = std::exchange(later_, {});
  Step& commit = steps.emplace_back();
  commit.text = "COMMIT";
  const Failure failure = RunSteps(steps, {});
  if (!isLost()) {
    if (failure.any()) {
      const StoreError error = ErrorOf(failure.refusal.get(), handle(), kFailed);
      UndoWhatIsOpen();
      throw error;
    }
    begun_ = false;
    // The server ends a transaction that has failed as it should, but tells what it has done.
    if (commit.answer.done() != "COMMIT") {
      throw StoreError("The transaction had failed before its end: nothing was stored");
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
  const std::string process = std::to_string(backend);
  const std::array both{Sent(process), Sent(witness.number)};
  // Its other end may wait for ever for a network that was cut.
  Run("SELECT pg_terminate_backend(pid) FROM pg_stat_activity "
      "WHERE pid = $1::int4 AND backend_xid = $2::xid8::xid",
      both);
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

void Connection::RunAll(const std::string& sql) {
  SendWhatWaits();
  const Result result(PQexec(handle(), sql.c_str()));
  if (!result.isDone()) {
    throw ErrorOf(result.get(), handle(), kFailed);
  }
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
  RequireDone(RunSteps(steps, {}), steps.back().answer);
}

/// Everything goes to the server at once. Whoever calls it looks whether the connection was lost.
Failure Connection::RunSteps(std::span<Step> steps, const Watch& watch) {
  try {
    return RunTogether(handle(), names_, steps, watch);
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
  } catch (const StoreError&) {
    if (!isLost() || isTaken) {
      throw;
    }
  }
  Reopen();
  return RunOnce(statement, values, guarded, noting, watch);
}

Result Connection::RunOnce(PreparedText& statement, std::span<const Sent> values, bool guarded,
                           const TakeRow& take, const Watch& watch) {
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
  } catch (...) {
    if (guarded) {
      UndoWhatIsOpen("ROLLBACK TO SAVEPOINT statement; RELEASE SAVEPOINT statement");
    }
    throw;
  }
  return std::move(steps[own].answer);
}

Result Connection::RunWaiting(const std::string& sql, const Patience& patience) {
  SendWhatWaits();
  const std::string limited = fmt::format(
      "SET LOCAL lock_timeout = {}; {}; SET LOCAL lock_timeout = 0", LockTimeoutOf(patience), sql);
  if (PQsendQuery(handle(), limited.c_str()) == 0) {
    throw LostError(handle(), kFailed);
  }
  const bool isCutShort =
      !AwaitAnswer(handle(), WaitingOf(patience), std::chrono::steady_clock::now());
  if (isCutShort) {
    EndWork(handle());
  }
  Result rows(nullptr);
  Result failure(nullptr);
  for (Result result(PQgetResult(handle())); result.get() != nullptr;
       result = Result(PQgetResult(handle()))) {
    if (PQresultStatus(result.get()) == PGRES_TUPLES_OK) {
      rows = std::move(result);
    } else if (!result.isDone()) {
      failure = std::move(result);
    }
  }
  if (failure.get() != nullptr) {
    const StoreError error = ErrorOf(failure.get(), handle(), kFailed);
    throw isCutShort || error.fault() == StoreFault::kBusy ? BusyError() : error;
  }
  return rows;
}

StoreError Connection::BusyError() const {
  return StoreError(fmt::format("The store '{}': {}", name_, AdviceFor(StoreFault::kBusy)),
                    StoreFault::kBusy);
}

StoreError Connection::GivenUpError() const {
  return StoreError(fmt::format(
      "The store '{}': its server does not answer, and was not waited for any longer", name_));
}

void Connection::TellChanges(std::function<void(std::string_view)> told) {
  listener_->told = std::move(told);
}

void Connection::UndoWhatIsOpen() noexcept {
  later_.clear();
  if (isWhole_) {
    UndoWhatIsOpen("ROLLBACK TO SAVEPOINT whole_part; RELEASE SAVEPOINT whole_part");
    hasPart_ = false;
    return;
  }
  UndoWhatIsOpen("ROLLBACK");
  begun_ = false;
}

void Connection::UndoWhatIsOpen(const char* sql) noexcept {
  try {
    SendWhatWaits();  // what is gone back to may be in it
  } catch (const StoreError&) {
    // It belonged to what is undone.
  }
  if (inTransaction()) {
    const Result ignored(PQexec(handle(), sql));
  }
}

bool Connection::isLost() const noexcept {
  return PQstatus(handle()) != CONNECTION_OK;
}

bool Connection::inTransaction() const noexcept {
  if (isWhole_ && !hasPart_) {
    return false;
  }
  const PGTransactionStatusType status = PQtransactionStatus(handle());
  return status == PQTRANS_INTRANS || status == PQTRANS_INERROR;
}

}  // namespace qorhost::postgres
