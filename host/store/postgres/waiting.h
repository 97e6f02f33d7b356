// Waiting for what a server answers: whoever waits looks up meanwhile, and may give up.
#pragma once

#include <chrono>
#include <exception>
#include <functional>

#include "host/store/postgres/result.h"

struct pg_conn;

namespace qorhost::postgres {

/// Looks after what a server does; its false, and its limit, end that.
struct Watch {
  std::chrono::milliseconds limit = std::chrono::milliseconds::max();
  /// Asked again and again, with the time that has passed; may be empty.
  std::function<bool(std::chrono::milliseconds passed)> goesOn = nullptr;
  /// How long a server that hears that it is to end its work, and does not answer, is waited for.
  std::chrono::milliseconds endTime = std::chrono::minutes(1);
};

/// When a waiting has begun, and when somebody has looked up last.
struct Looks {
  std::chrono::steady_clock::time_point started = std::chrono::steady_clock::now();
  std::chrono::steady_clock::time_point latest = started;
  int answers = 0;  ///< that were asked for

  /// Between the two.
  [[nodiscard]] std::chrono::milliseconds passed() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(latest - started);
  }
};

/// Why statements came to no good end; nothing of it when they did, or when the connection was
/// lost.
struct Failure {
  Result refusal{nullptr};    ///< what the server says of the first that it refused
  std::exception_ptr raised;  ///< by whoever takes the rows
  bool isCutShort = false;    ///< the watch has ended it

  [[nodiscard]] bool any() const { return refusal.get() != nullptr || raised != nullptr; }
};

/// The answers to a message that was sent, one after the other.
class AnswerReader {
 public:
  /// The watch lives longer.
  AnswerReader(pg_conn* handle, const Watch& watch) : handle_(handle), watch_(watch) {}

  /// The next one; null behind the last. When the watch ends the waiting the server is told to end
  /// its work; one that does not hear that in 3 seconds, or that hears it and says nothing until
  /// the watch's end time, is given up: the connection is lost then.
  [[nodiscard]] Result Next();
  /// Has the server end its work in the same way; what it has done by then is answered yet.
  void End();
  [[nodiscard]] bool isCutShort() const noexcept { return isCutShort_; }

 private:
  pg_conn* handle_;
  const Watch& watch_;
  Looks looks_;
  bool isCutShort_ = false;
};

/// Reads all the answers to a text. `last` becomes the last one that has rows, or where none has,
/// the last.
[[nodiscard]] Failure ReadAnswers(pg_conn* handle, const Watch& watch, Result& last);

}  // namespace qorhost::postgres
