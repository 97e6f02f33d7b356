#include "host/store/postgres/connection.h"

#include <fmt/format.h>
#include <libpq-fe.h>
#include <poll.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <exception>
#include <thread>
#include <utility>
#include <vector>

#include "host/store/postgres/change_triggers.h"
#include "host/store/postgres/connecting.h"
#include "host/store/postgres/engine_error.h"
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

/// The values as the library takes them: texts that end with NUL.
class SentTexts {
 public:
  explicit SentTexts(std::span<const Sent> values) {
    texts_.reserve(values.size());
    pointers_.reserve(values.size());
    for (const Sent& value : values) {
      if (!value) {
        pointers_.push_back(nullptr);
        continue;
      }
      if (value->find('\0') != std::string_view::npos) {
        throw StoreError(
            "The statement failed: a text holds the character NUL, which a server cannot keep");
      }
      pointers_.push_back(texts_.emplace_back(*value).c_str());
    }
  }

  [[nodiscard]] int count() const { return static_cast<int>(pointers_.size()); }
  [[nodiscard]] const char* const* pointers() const { return pointers_.data(); }

 private:
  std::vector<std::string> texts_;
  std::vector<const char*> pointers_;
};

/// Whoever fails to say so waits no longer.
bool GoesOnWaiting(const Patience& patience, std::chrono::milliseconds waited) {
  try {
    return !patience.waiting || patience.waiting(waited);
  } catch (...) {
    return false;
  }
}

bool IsDone(ExecStatusType status) {
  return status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK;
}

constexpr const char* kFailed = "The statement failed";

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

void Result::Clear::operator()(pg_result* result) const noexcept {
  PQclear(result);
}

int Result::rows() const noexcept {
  return PQntuples(result_.get());
}

int Result::columns() const noexcept {
  return PQnfields(result_.get());
}

std::string_view Result::NameOf(int column) const {
  return PQfname(result_.get(), column);
}

std::uint32_t Result::TypeOf(int column) const {
  return PQftype(result_.get(), column);
}

bool Result::IsNull(int row, int column) const {
  return PQgetisnull(result_.get(), row, column) != 0;
}

std::string_view Result::Text(int row, int column) const {
  return {PQgetvalue(result_.get(), row, column),
          static_cast<std::size_t>(PQgetlength(result_.get(), row, column))};
}

std::int64_t Result::Number(int row, int column) const {
  const std::string_view text = Text(row, column);
  std::int64_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

std::int64_t Result::affected() const {
  const std::string_view text = PQcmdTuples(result_.get());
  std::int64_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

std::string_view Result::done() const {
  return PQcmdStatus(result_.get());
}

void Connection::Finish::operator()(pg_conn* handle) const noexcept {
  PQfinish(handle);
}

Connection::Connection(const std::string& name)
    : asked_(name), name_(ShownName(name)), listener_(std::make_unique<Listener>()) {
  RequireReadable(name);
  Open();
}

void Connection::Open() {
  handle_.reset(Connect(asked_));
  ++connected_;
  if (isLost()) {
    // Later it is known what was there.
    const Answer answer = connected_ == 1 ? AnswerOf(asked_) : Answer::kNone;
    throw ConnectionError(handle(), fmt::format("The store '{}' cannot be opened", name_), answer);
  }
  // What else the server has to say beside its answers is nothing for the terminal.
  PQsetNoticeReceiver(handle(), &Listener::Called, listener_.get());
  RequireServer();
  if (prepare_) {
    prepare_(*this);
  }
}

void Connection::Reopen() {
  using std::chrono::steady_clock;
  const steady_clock::time_point end = steady_clock::now() + kReopenTime;
  for (std::chrono::milliseconds pause = kShortestPause;;) {
    try {
      Open();
      return;
    } catch (const StoreError& failure) {
      if (failure.fault() != StoreFault::kNoServer || steady_clock::now() + pause > end) {
        throw;
      }
    }
    std::this_thread::sleep_for(pause);
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
  const SentTexts sent(values);
  Result result(PQexecParams(handle(), sql.c_str(), sent.count(), nullptr, sent.pointers(), nullptr,
                             nullptr, 0));
  if (!IsDone(PQresultStatus(result.get()))) {
    throw ErrorOf(result.get(), handle(), kFailed);
  }
  return result;
}

void Connection::Begin(const char* sql) {
  if (begun_ && isLost()) {
    throw LostError(handle(), kFailed);  // whoever has begun it has to hear of that first
  }
  if (isWhole_) {
    RunAll("SAVEPOINT whole_part");
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
  const Result result(PQexec(handle(), "COMMIT"));
  begun_ = false;
  if (!isLost()) {
    if (!IsDone(PQresultStatus(result.get()))) {
      throw ErrorOf(result.get(), handle(), kFailed);
    }
    // The server ends a transaction that has failed as it should, but tells what it has done.
    if (result.done() != "COMMIT") {
      throw StoreError("The transaction had failed before its end: nothing was stored");
    }
    return;
  }
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
      std::this_thread::sleep_for(pause);
    }
  }
  return Fate::kUnknown;
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
  const Result result(PQexec(handle(), sql.c_str()));
  if (!IsDone(PQresultStatus(result.get()))) {
    throw ErrorOf(result.get(), handle(), kFailed);
  }
}

/// Everything goes to the server at once; the answers come in the same order.
void Connection::Send(PreparedText& statement, std::span<const Sent> values, bool guarded) {
  const SentTexts sent(values);
  const auto plain = [this](const char* sql) {
    return PQsendQueryParams(handle(), sql, 0, nullptr, nullptr, nullptr, nullptr, 0);
  };
  bool isSent = PQenterPipelineMode(handle()) != 0;
  if (guarded) {
    isSent = isSent && plain("SAVEPOINT statement") != 0;
  }
  if (statement.name.empty() || statement.connection != connected_) {
    const std::string name = fmt::format("s{}", ++named_);
    isSent =
        isSent && PQsendPrepare(handle(), name.c_str(), statement.sql.c_str(), 0, nullptr) != 0;
    statement.name = name;
    statement.connection = connected_;
  }
  isSent = isSent && PQsendQueryPrepared(handle(), statement.name.c_str(), sent.count(),
                                         sent.pointers(), nullptr, nullptr, 0) != 0;
  if (guarded) {
    isSent = isSent && plain("RELEASE statement") != 0;
  }
  if (!isSent || PQpipelineSync(handle()) == 0) {
    throw LostError(handle(), kFailed);
  }
}

Result Connection::Run(PreparedText& statement, std::span<const Sent> values, bool guarded,
                       const TakeRow& take) {
  if (begun_) {
    return RunOnce(statement, values, guarded, take);
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
    return RunOnce(statement, values, guarded, noting);
  } catch (const StoreError&) {
    if (!isLost() || isTaken) {
      throw;
    }
  }
  Reopen();
  return RunOnce(statement, values, guarded, noting);
}

Result Connection::RunOnce(PreparedText& statement, std::span<const Sent> values, bool guarded,
                           const TakeRow& take) {
  const bool isNew = statement.name.empty() || statement.connection != connected_;
  Send(statement, values, guarded);
  const int own = (guarded ? 1 : 0) + (isNew ? 1 : 0);  // which of the answers is the statement's
  Result answer(nullptr);
  Result failure(nullptr);
  std::exception_ptr stopped;
  bool isOver = false;
  for (int at = 0; !isOver; ++at) {
    if (at == own && take) {
      PQsetSingleRowMode(handle());
    }
    // Each command's results end with none; the pipeline's end has no such end.
    for (Result result(PQgetResult(handle())); !isOver; result = Result(PQgetResult(handle()))) {
      const ExecStatusType status = PQresultStatus(result.get());
      if (result.get() == nullptr) {
        isOver = PQstatus(handle()) != CONNECTION_OK;
        break;
      }
      if (status == PGRES_PIPELINE_SYNC) {
        isOver = true;
      } else if (status == PGRES_SINGLE_TUPLE) {
        try {
          if (!stopped) {
            take(result);
          }
        } catch (...) {
          stopped = std::current_exception();
          Cancel();
        }
      } else if (status == PGRES_FATAL_ERROR) {
        failure = std::move(result);
      } else if (at == own) {
        answer = std::move(result);
      }
    }
  }
  PQexitPipelineMode(handle());
  if (failure.get() == nullptr && answer.get() == nullptr) {
    throw LostError(handle(), kFailed);
  }
  if (failure.get() == nullptr && !stopped) {
    return answer;
  }
  const StoreError error =
      failure.get() == nullptr ? StoreError(kFailed) : ErrorOf(failure.get(), handle(), kFailed);
  // Whether the server has read the statement before it refused it is not worth asking.
  statement.name.clear();
  if (guarded) {
    UndoWhatIsOpen("ROLLBACK TO SAVEPOINT statement; RELEASE SAVEPOINT statement");
  }
  if (stopped) {
    std::rethrow_exception(stopped);
  }
  throw error;
}

Result Connection::RunWaiting(const std::string& sql, const Patience& patience) {
  using std::chrono::milliseconds;
  constexpr milliseconds kLongestLook(50);
  const auto started = std::chrono::steady_clock::now();
  const std::string limited =
      fmt::format("SET LOCAL lock_timeout = {}; {}; SET LOCAL lock_timeout = 0",
                  std::max<std::int64_t>(patience.limit.count(), 1), sql);
  if (PQsendQuery(handle(), limited.c_str()) == 0) {
    throw LostError(handle(), kFailed);
  }
  bool hasEnough = false;
  milliseconds pause(1);
  while (!hasEnough && PQisBusy(handle()) != 0) {
    pollfd socket{PQsocket(handle()), POLLIN, 0};
    if (poll(&socket, 1, static_cast<int>(pause.count())) == 0) {
      const auto waited =
          std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now() - started);
      hasEnough = !GoesOnWaiting(patience, waited);
      pause = std::min(pause * 2, kLongestLook);
    }
    if (PQconsumeInput(handle()) == 0) {
      throw LostError(handle(), kFailed);
    }
  }
  if (hasEnough) {
    Cancel();
  }
  Result rows(nullptr);
  Result failure(nullptr);
  for (Result result(PQgetResult(handle())); result.get() != nullptr;
       result = Result(PQgetResult(handle()))) {
    if (PQresultStatus(result.get()) == PGRES_TUPLES_OK) {
      rows = std::move(result);
    } else if (!IsDone(PQresultStatus(result.get()))) {
      failure = std::move(result);
    }
  }
  if (failure.get() != nullptr) {
    const StoreError error = ErrorOf(failure.get(), handle(), kFailed);
    if (hasEnough || error.fault() == StoreFault::kBusy) {
      throw StoreError(fmt::format("The store '{}': {}", name_, AdviceFor(StoreFault::kBusy)),
                       StoreFault::kBusy);
    }
    throw error;
  }
  return rows;
}

void Connection::Cancel() noexcept {
  const std::unique_ptr<PGcancel, decltype(&PQfreeCancel)> cancel(PQgetCancel(handle()),
                                                                  PQfreeCancel);
  std::array<char, 256> reason{};
  if (cancel != nullptr) {
    PQcancel(cancel.get(), reason.data(), static_cast<int>(reason.size()));
  }
}

void Connection::TellChanges(std::function<void(std::string_view)> told) {
  listener_->told = std::move(told);
}

void Connection::UndoWhatIsOpen() noexcept {
  if (isWhole_) {
    UndoWhatIsOpen("ROLLBACK TO SAVEPOINT whole_part; RELEASE SAVEPOINT whole_part");
    hasPart_ = false;
    return;
  }
  UndoWhatIsOpen("ROLLBACK");
  begun_ = false;
}

void Connection::UndoWhatIsOpen(const char* sql) noexcept {
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
