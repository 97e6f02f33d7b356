#include "host/store/postgres/waiting.h"

#include <libpq-fe.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <future>
#include <memory>
#include <thread>
#include <utility>

namespace qorhost::postgres {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// How often somebody looks up while the server works. Not shorter at first: a clock that is to go
// off before the system's own next tick costs more than the rest of a short wait.
constexpr milliseconds kLook(50);
// Of answers that are there already the clock is asked now and then: each is one row of many.
constexpr int kAnswersUnseen = 64;
// For how long it is waited until a server has heard that it is to end its work.
constexpr milliseconds kEndTime(3000);
// When it is told once more: work that has not begun yet when it is told does not hear of it.
// Whoever does not end it then is told ever more seldom.
constexpr milliseconds kTellAgain(200);
constexpr milliseconds kLongestPause(5000);

/// Whoever fails to say so goes on no longer.
bool GoesOn(const Watch& watch, milliseconds passed) {
  try {
    return !watch.goesOn || watch.goesOn(passed);
  } catch (...) {
    return false;
  }
}

/// Lets the same one look up who has given up, for so long.
Watch LookingOn(const Watch& watch, milliseconds limit) {
  return {limit, [&watch](milliseconds passed) {
            (void)GoesOn(watch, passed);
            return true;
          }};
}

/// Waits until the connection can be read, or written where something is still to be sent.
bool IsReady(pg_conn* handle, milliseconds pause) {
  const bool sends = PQflush(handle) > 0;
  pollfd socket{PQsocket(handle), static_cast<short>(sends ? POLLIN | POLLOUT : POLLIN), 0};
  return poll(&socket, 1, static_cast<int>(pause.count())) != 0;
}

/// Whether it is gone on; asked when nothing comes, and now and then while something does.
bool MayGoOn(const Watch& watch, Looks& looks, bool isQuiet) {
  const steady_clock::time_point now = steady_clock::now();
  if (!isQuiet && now - looks.latest < kLook) {
    return true;
  }
  looks.latest = now;
  return looks.passed() < watch.limit && GoesOn(watch, looks.passed());
}

/// Sends what is still to be sent and reads until an answer is there; false when the watch has
/// ended the waiting.
bool AwaitAnswer(pg_conn* handle, const Watch& watch, Looks& looks) {
  // They may come for long without any waiting.
  if (++looks.answers % kAnswersUnseen == 0 && !MayGoOn(watch, looks, false)) {
    return false;
  }
  while (PQisBusy(handle) != 0) {
    const bool isQuiet =
        !IsReady(handle, std::clamp(watch.limit - looks.passed(), milliseconds(1), kLook));
    if (!MayGoOn(watch, looks, isQuiet)) {
      return false;
    }
    if (PQconsumeInput(handle) == 0) {
      return true;  // that it is lost, is the answer
    }
  }
  return true;
}

/// Waits so long for somebody who has given up.
bool AwaitEnd(pg_conn* handle, const Watch& watch, milliseconds limit) {
  Looks looks;
  return AwaitAnswer(handle, LookingOn(watch, limit), looks);
}

/// Tells the server to end what it does on this connection; false when it has not taken that in by
/// then. The library waits for that without asking anybody, so somebody else does it, and is left
/// to it: when it was taken in, nothing of it can meet the next statement.
bool TellEnd(pg_conn* handle, const Watch& watch, steady_clock::time_point end) {
  const std::shared_ptr<PGcancel> cancel(PQgetCancel(handle), PQfreeCancel);
  if (cancel == nullptr) {
    return false;
  }
  std::packaged_task<void()> telling([cancel] {
    std::array<char, 256> reason{};
    PQcancel(cancel.get(), reason.data(), static_cast<int>(reason.size()));
  });
  const std::future<void> told = telling.get_future();
  std::thread(std::move(telling)).detach();
  while (told.wait_for(kLook) != std::future_status::ready) {
    if (steady_clock::now() >= end) {
      return false;
    }
    (void)GoesOn(watch, kEndTime);
  }
  return true;
}

/// The library finds out at its next look that the connection is lost.
void GiveUp(pg_conn* handle) {
  shutdown(PQsocket(handle), SHUT_RDWR);
}

}  // namespace

Result AnswerReader::Next() {
  const bool isThere =
      isCutShort_ ? AwaitEnd(handle_, watch_, kTellAgain) : AwaitAnswer(handle_, watch_, looks_);
  if (!isThere) {
    End();
  }
  return Result(PQgetResult(handle_));
}

void AnswerReader::End() {
  isCutShort_ = true;
  const steady_clock::time_point end = steady_clock::now() + watch_.endTime;
  milliseconds pause = kTellAgain;
  // A server that takes it in is there, and may need its time to undo what it has done.
  while (steady_clock::now() < end && TellEnd(handle_, watch_, steady_clock::now() + kEndTime)) {
    if (AwaitEnd(handle_, watch_, pause)) {
      return;
    }
    pause = std::min(pause * 2, kLongestPause);
  }
  GiveUp(handle_);
}

Failure ReadAnswers(pg_conn* handle, const Watch& watch, Result& last) {
  AnswerReader reader(handle, watch);
  Failure failure;
  for (Result answer = reader.Next(); answer.get() != nullptr; answer = reader.Next()) {
    if (!answer.isDone()) {
      failure.refusal = std::move(answer);
    } else if (answer.columns() > 0 || last.get() == nullptr || last.columns() == 0) {
      last = std::move(answer);
    }
  }
  failure.isCutShort = reader.isCutShort();
  return failure;
}

}  // namespace qorhost::postgres
