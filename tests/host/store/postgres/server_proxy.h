// Stands between a program and its server, and can end their connection at any message.
#pragma once

#include <sys/types.h>

#include <atomic>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include "test_server.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::postgres::test {

/// Listens on a socket of its own and hands everything on, message by message. Each connection has
/// a thread.
class ServerProxy {
 public:
  /// A message by which the program has something executed: a text (Q) or a prepared statement (E).
  struct Message {
    char type = 'Q';
    std::string_view text;  ///< what is executed
    bool isGuard = false;   ///< an E that only marks a savepoint around another one
    pid_t backend = 0;      ///< the server's process that will run it
  };
  enum class Way {
    kOn,                ///< it is handed on
    kLostBefore,        ///< the connection ends before it
    kLostBehind,        ///< it is handed on, and the connection ends
    kLostBehindAnswer,  ///< the server has answered it, which the program never hears of
    kSilence,           ///< it is swallowed, and so is all that comes behind it: see Hush()
  };

  explicit ServerProxy(const TestServer& server);
  ~ServerProxy();
  ServerProxy(const ServerProxy&) = delete;
  ServerProxy& operator=(const ServerProxy&) = delete;

  /// The name of a database of the server through here, as a store is named.
  [[nodiscard]] std::string NameOf(const std::string& database) const;

  /// Asked before each such message is handed on, by the thread of its connection; while it does
  /// not answer, the program waits.
  void Ask(std::function<Way(const Message&)> ask);
  /// From now on, nobody who comes anew is let through, or everybody is.
  void Close(bool closed) { closed_ = closed; }
  /// From now on no byte passes, in no direction, as on a network that was cut: no connection ends,
  /// and those that come anew are taken. With false those that met it end, and others pass.
  void Hush(bool silent) { silent_ = silent; }

 private:
  struct Line;

  void Listen();
  void Serve(Line& line);
  [[nodiscard]] Way WayOf(const Message& message);
  [[nodiscard]] bool HasSleptThroughSilence() const;

  std::string server_;  // its socket
  qorhost::test::TemporaryFolder folder_;
  std::string own_;
  int listening_ = -1;
  std::atomic<bool> ended_ = false;
  std::atomic<bool> closed_ = false;
  std::atomic<bool> silent_ = false;
  std::mutex asking_;
  std::function<Way(const Message&)> ask_;
  std::list<std::unique_ptr<Line>> lines_;
  std::thread listener_;
};

}  // namespace qorhost::postgres::test
