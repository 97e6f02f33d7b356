#include "host/store/postgres/connection.h"

#include <fmt/format.h>
#include <libpq-fe.h>

#include <algorithm>
#include <chrono>
#include <future>
#include <thread>
#include <utility>

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
// How often somebody looks up who waits for a server meanwhile.
constexpr std::chrono::milliseconds kLookUp(20);

}  // namespace

/// Who is told of changed rows. Stays where it is, whoever owns the connection.
struct Connection::Listener {
  std::function<void(std::string_view)> told;
  std::function<void()> toldAll;

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

/// The library waits for a server that says nothing without asking anybody: somebody else does
/// that, and whoever gives up leaves it to him. What becomes of it is thrown away.
template <typename Work>
auto Connection::Beside(Work work) const -> decltype(work()) {
  if (!goesOn_) {
    return work();
  }
  std::packaged_task<decltype(work())()> task(std::move(work));
  auto done = task.get_future();
  std::thread(std::move(task)).detach();
  while (done.wait_for(kLookUp) != std::future_status::ready) {
    if (!goesOn_()) {
      throw GivenUpError();
    }
  }
  return done.get();
}

Connection::Handle Connection::ConnectOnce() const {
  return Beside([asked = asked_, password = TypedPassword(asked_)] {
    return Handle(Connect(asked, password));
  });
}

void Connection::Open() {
  handle_ = ConnectOnce();
  if (isLost() && PQconnectionNeedsPassword(handle()) == 1 && AskPasswordOf(asked_, name_)) {
    handle_ = ConnectOnce();
  }
  if (isLost() && PQconnectionUsedPassword(handle()) == 1) {
    MendPassword();
  }
  ++names_.connection;
  lockTimeout_ = 0;
  if (isLost()) {
    // Later it is known what was there.
    const Answer answer = names_.connection == 1
                              ? Beside([asked = asked_] { return AnswerOf(asked); })
                              : Answer::kNone;
    throw ConnectionError(handle(), fmt::format("The store '{}' cannot be opened", name_), answer);
  }
  // What else the server has to say beside its answers is nothing for the terminal.
  PQsetNoticeReceiver(handle(), &Listener::Called, listener_.get());
  // A text that the network does not take is waited for as an answer is.
  PQsetnonblocking(handle(), 1);
  RequireServer();
  if (prepare_) {
    prepare_(*this);
  }
}

/// A typed one that the server does not take is forgotten, so that a person may mend it. It may be
/// right, and something else be missing.
void Connection::MendPassword() const {
  const std::string typed = TypedPassword(asked_);
  if (!typed.empty() && Beside([asked = asked_, typed] { return RefusesPassword(asked, typed); })) {
    ForgetPassword(asked_);
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
  if (serverVersion() < kOldestServer) {
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

StoreError Connection::BusyError() const {
  return StoreError(fmt::format("The store '{}': {}", name_, AdviceFor(StoreFault::kBusy)),
                    StoreFault::kBusy);
}

StoreError Connection::GivenUpError() const {
  return StoreError(fmt::format(
      "The store '{}': its server does not answer, and was not waited for any longer", name_));
}

void Connection::TellChanges(std::function<void(std::string_view)> told,
                             std::function<void()> toldAll) {
  listener_->told = std::move(told);
  listener_->toldAll = std::move(toldAll);
}

void Connection::TellAll() const {
  if (listener_->toldAll) {
    listener_->toldAll();
  }
}

bool Connection::MayReopen(const StoreError& failure) const noexcept {
  return isLost() && failure.fault() == StoreFault::kNoServer;
}

int Connection::serverVersion() const noexcept {
  return PQserverVersion(handle());
}

bool Connection::isLost() const noexcept {
  return PQstatus(handle()) != CONNECTION_OK;
}

}  // namespace qorhost::postgres
