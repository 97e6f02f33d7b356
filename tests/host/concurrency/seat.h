// One of several who work on a store at once.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/desks/session.h"
#include "host/screens/screen_snapshot.h"
#include "host/store/sqlite/database.h"

namespace qorhost::test {

/// Tells of the statements of a seat, on whatever engine.
class Steps {
 public:
  virtual ~Steps() = default;
  Steps(const Steps&) = delete;
  Steps& operator=(const Steps&) = delete;

  /// From now on calls `step` before every statement, which waits for it.
  virtual void Tell(std::function<void()> step) = 0;

 protected:
  Steps() = default;
};

/// A desk session on a store, whose surroundings the test plays. It answers questions with Yes and
/// waits for nobody unless the test says otherwise.
class Seat {
 public:
  /// On a store file.
  Seat(const std::filesystem::path& file, const std::string& who, bool traced = false);
  Seat(std::unique_ptr<Store> store, std::unique_ptr<Steps> steps, const std::string& who,
       bool traced = false);
  ~Seat();
  Seat(const Seat&) = delete;
  Seat& operator=(const Seat&) = delete;

  [[nodiscard]] DeskSession& session() { return *session_; }
  /// Of one on a file.
  [[nodiscard]] sqlite::Database& database();
  void SetPatience(Patience patience) { store_->SetPatience(std::move(patience)); }

  /// From now on calls `step` before every statement of this seat, with its place from 0.
  void BeforeStatements(std::function<void(int nth)> step);

  std::vector<std::string> shown;               // messages, in their order
  std::vector<std::string> trace;               // empty unless it is traced
  std::function<void(std::string_view)> onBox;  // called when a message is shown
  bool yes = true;
  std::int32_t unit = 1;  // at which it works

 private:
  Store* store_ = nullptr;  // of the session
  std::unique_ptr<DeskSession> session_;
  std::unique_ptr<Steps> steps_;
  int statements_ = 0;
};

/// What an operation at a seat told in the end.
struct Told {
  Ending ending = Ending::kDone;
  std::vector<std::string> messages;
  std::vector<std::string> failures;
  std::vector<std::string> changedBy;  // of a stale one: who did what
  StaleCause cause = StaleCause::kUnknown;
  friend bool operator==(const Told&, const Told&) = default;

  [[nodiscard]] bool done() const { return ending == Ending::kDone; }
};
[[nodiscard]] std::string TextOf(const Told& told);

/// A desk at which everything is entered; it lives as long as this.
struct PreparedDesk {
  std::function<Told()> run;
  std::function<ScreenSnapshot()> screen;  // empty for what has no screen
};

/// An operation from the opening of its desk to its end.
struct SeatOperation {
  std::string name;
  std::function<PreparedDesk(Seat&)> prepare;
};

/// What `work` tells; what it raises is told as a refusal or a failure.
[[nodiscard]] Told TellingRaised(const std::function<Told()>& work);
/// The whole of an operation.
[[nodiscard]] Told RunAt(const SeatOperation& operation, Seat& seat);

}  // namespace qorhost::test
