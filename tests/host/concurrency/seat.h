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

/// A desk session on a store file, whose surroundings the test plays. It answers questions with Yes
/// and waits for nobody unless the test says otherwise.
class Seat {
 public:
  Seat(const std::filesystem::path& file, const std::string& who, bool traced = false);
  ~Seat();
  Seat(const Seat&) = delete;
  Seat& operator=(const Seat&) = delete;

  [[nodiscard]] DeskSession& session() { return *session_; }
  [[nodiscard]] sqlite::Database& database() { return *database_; }
  void SetPatience(Patience patience) { store_->SetPatience(std::move(patience)); }

  /// From now on calls `step` before every statement of this seat, with its place from 0.
  void BeforeStatements(std::function<void(int nth)> step);

  std::vector<std::string> shown;               // messages, in their order
  std::vector<std::string> trace;               // empty unless it is traced
  std::function<void(std::string_view)> onBox;  // called when a message is shown
  bool yes = true;

 private:
  struct Trace;

  Store* store_ = nullptr;  // of the session
  sqlite::Database* database_ = nullptr;
  std::unique_ptr<DeskSession> session_;
  std::function<void(int)> step_;
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
