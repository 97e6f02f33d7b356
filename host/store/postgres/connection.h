// A connection to a PostgreSQL server and the results of its statements.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/store/patience.h"
#include "host/store/postgres/pipeline.h"
#include "host/store/postgres/result.h"
#include "host/store/postgres/waiting.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

/// Used by one thread. Everything raises StoreError: with the server's own words where it refuses a
/// statement, and StoreFault::kNoServer where it cannot be reached any more. A connection that was
/// lost is made anew for what begins then: a transaction, or a prepared statement outside of one.
class Connection {
 public:
  /// Connects to the server and database of `name`: a URI ("postgresql://host/database") or
  /// "service=name" and the like, as libpq reads it, which also asks its own files and variables
  /// for what is left out (host, user, password, certificates). Raises StoreError when the server
  /// cannot be reached at once, in 10 seconds (or connect_timeout) at most, refuses, is older than
  /// 15 or keeps texts in another encoding than UTF-8, and when the name holds a password: every
  /// other program of the machine can read the arguments of this one.
  /// Who waits for the server, now and whenever it is lost, is asked meanwhile whether to: see
  /// LookUpBy().
  using GoesOn = std::function<bool()>;
  explicit Connection(const std::string& name, GoesOn goesOn = nullptr);
  ~Connection();
  Connection(Connection&&) noexcept;
  Connection& operator=(Connection&&) noexcept;
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// Runs what every connection to the store needs, now and each time that it is made anew.
  void Prepare(std::function<void(Connection&)> prepare);

  /// Asked again and again while a server is waited for, be it lost or at work; its false gives up
  /// with a StoreError that is no kNoServer, and the connection is lost where the server does not
  /// hear of it. It must not use the connection.
  void LookUpBy(GoesOn goesOn) { goesOn_ = std::move(goesOn); }

  /// Begins a transaction by that text. Until its end nothing is repeated on a new connection.
  void Begin(const char* sql = "BEGIN");
  /// What tells later whether a transaction was stored.
  struct Witness {
    std::string number;  ///< the transaction's (LockStore(), pg_current_xact_id)
    /// A SELECT that finds a row when it was stored, and no other one's; without one it is known of
    /// such transactions alone that they were not stored.
    std::string select;
  };
  /// Begins a transaction and runs the steps in it, all in one message; their answers. They may
  /// have to wait for another one's lock, as in RunWaiting().
  [[nodiscard]] std::vector<Result> BeginWaiting(std::vector<Step> steps, const Patience& patience);
  /// Commits the transaction. When the connection is lost meanwhile, looks on a new one what has
  /// become of it: returns when it is stored, raises kNoServer when it is not, and kUnknown when
  /// nobody tells. What the server refuses is undone.
  void Commit(const Witness& witness);
  /// Begins a transaction that holds all that follow: these become parts of it, whose ends store
  /// nothing. Nothing is repeated on a new connection until KeepWhole() stores it, as Commit()
  /// does; it is undone when the connection ends before.
  void BeginWhole();
  void KeepWhole(const Witness& witness);

  /// Runs one statement with the values of its parameters.
  Result Run(const std::string& sql, std::span<const Sent> values = {});
  /// Runs statements without parameters one after the other.
  void RunAll(const std::string& sql);
  /// Runs a statement in a transaction whose answer nobody waits for: it goes with what runs
  /// next, at the latest with the commit, and its failure is told there. The text lives until then.
  void RunLater(PreparedText& statement, std::span<const Sent> values);

  /// Runs a statement with the values of its parameters. Inside a transaction a `guarded` one that
  /// the server refuses leaves the transaction as it was, by a savepoint that costs no waiting for
  /// answers of its own; otherwise the transaction is lost. It is lost, and at once undone, also
  /// when a change meets others, a full or failing disk, too little memory or its end: then
  /// nothing runs until UndoWhatIsOpen(). With `take` the rows are handed over
  /// one by one and the result has none; what it raises ends the statement. Outside of a
  /// transaction it must only read: when the connection is lost before the first row it runs on a
  /// new one. The watch may end it: then StoreFault::kTooMuchWork is raised.
  Result Run(PreparedText& statement, std::span<const Sent> values, bool guarded,
             const TakeRow& take = nullptr, const Watch& watch = {});

  /// Runs statements that may have to wait for another one's lock. `waiting` is asked again and
  /// again meanwhile, with the time waited; its false ends the waiting, as the limit does: then
  /// StoreFault::kBusy is raised.
  Result RunWaiting(const std::string& sql, const Patience& patience);

  /// Who is told of each changed row, by the triggers' text, and behind those of a statement that
  /// they are all; nobody at first. They must not raise and not use the connection.
  void TellChanges(std::function<void(std::string_view)> told, std::function<void()> toldAll);

  /// Undoes the open transaction, if one is open.
  void UndoWhatIsOpen() noexcept;
  /// Undoes what has come since a savepoint of it, and the savepoint.
  void UndoBackTo(const char* savepoint) noexcept;

  /// Whether a transaction is open, usable or not: of those that are held, whether a part is.
  [[nodiscard]] bool inTransaction() const noexcept;
  /// Of the server: 150004 is 15.4.
  [[nodiscard]] int serverVersion() const noexcept;
  /// How the store is called in messages: the name without what follows a "?".
  [[nodiscard]] const std::string& name() const noexcept { return name_; }
  [[nodiscard]] pg_conn* handle() const noexcept { return handle_.get(); }

 private:
  struct Finish {
    void operator()(pg_conn* handle) const noexcept;
  };
  struct Listener;

  enum class Fate : std::uint8_t { kStored, kNotStored, kUnknown };

  using Handle = std::unique_ptr<pg_conn, Finish>;

  static constexpr const char* kFailed = "The statement failed";
  static constexpr const char* kGivenUp =
      "The transaction had failed before its end: nothing was stored";
  // Between two tries to reach a server.
  static constexpr std::chrono::milliseconds kShortestPause{20};
  static constexpr std::chrono::milliseconds kLongestPause{500};

  template <typename Work>
  [[nodiscard]] auto Beside(Work work) const -> decltype(work());
  [[nodiscard]] Handle ConnectOnce() const;
  void Open();
  void MendPassword() const;
  void Reopen();
  void UndoBy(const std::string& sql) noexcept;
  void UndoBehind(bool guarded, bool endsAll) noexcept;
  [[nodiscard]] bool Pause(std::chrono::milliseconds pause) const;
  [[nodiscard]] bool MayGoOn(std::chrono::milliseconds pause) const noexcept;
  void RequireServer();
  [[nodiscard]] bool isLost() const noexcept;
  /// Whether what has failed, and may be done again, may be so on a new connection.
  [[nodiscard]] bool MayReopen(const StoreError& failure) const noexcept;
  [[nodiscard]] Watch Looking() const;
  [[nodiscard]] static Watch WaitingOf(const Patience& patience);
  [[nodiscard]] Result AnswerTo(bool isSent, const Watch& watch);
  /// Tells who listens that the rows told so far are all of a statement.
  void TellAll() const;
  void RequireDoneInTime(const Failure& failure, const Result& answer) const;
  [[nodiscard]] Fate FateOf(const Witness& witness, int backend) noexcept;
  [[nodiscard]] Fate LookAtFate(const Witness& witness, int backend);
  [[nodiscard]] Failure RunSteps(std::span<Step> steps, const Watch& watch);
  void RequireDone(const Failure& failure, const Result& answer) const;
  void RequireNoneLost() const;
  void SendWhatWaits();
  void BoundLocks(const Patience& patience);
  Result RunOnce(PreparedText& statement, std::span<const Sent> values, bool guarded,
                 const TakeRow& take, const Watch& watch);
  [[nodiscard]] StoreError BusyError() const;
  [[nodiscard]] StoreError GivenUpError() const;

  std::string asked_;  // the name as libpq reads it
  std::string name_;
  GoesOn goesOn_;
  std::function<void(Connection&)> prepare_;
  std::unique_ptr<Listener> listener_;
  Handle handle_;
  std::optional<std::chrono::steady_clock::time_point> triedInVain_;  // to reopen it
  StatementNames names_;          // counts how often it was made
  std::vector<Step> later_;       // goes with what runs next
  std::int64_t lockTimeout_ = 0;  // as the server has it; 0: its own
  bool begun_ = false;            // a transaction, which may be lost by now
  bool givenUp_ = false;          // what was begun, until whoever began it has heard of that
  bool isWhole_ = false;          // it holds all others
  bool hasPart_ = false;          // and one of them is open
};

}  // namespace qorhost::postgres
