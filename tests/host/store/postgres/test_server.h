// A PostgreSQL server of the test program's own.
#pragma once

#include <sys/types.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/host/store/temporary_folder.h"

namespace qorhost::postgres::test {

/// Listens on a socket in a temporary folder and nowhere else; ends with this object, and with the
/// program, however that ends. It writes nothing to be safe from a power cut.
class TestServer {
 public:
  /// Raises std::runtime_error when the server does not start.
  TestServer();
  ~TestServer();
  TestServer(const TestServer&) = delete;
  TestServer& operator=(const TestServer&) = delete;

  /// Ends the server at once, as a power cut of its machine would, and starts it again.
  void End();
  void StartAgain();
  /// Where it listens.
  [[nodiscard]] std::string socket() const;

  /// The name of a database on it, as a store is named.
  [[nodiscard]] std::string NameOf(const std::string& database) const;
  /// Creates a database, empty or like another one, and gives its name as a store's.
  std::string Create(const std::string& database, const std::string& like = "template0");

  /// Makes a user who may do anything, and who has to say the password.
  void AddUser(const std::string& user, const std::string& password);

  /// From here on the server writes the plan of each statement that runs on a database into its
  /// log, for connections that begin now.
  void LogPlans(const std::string& database);
  /// What the server has written into its log so far.
  [[nodiscard]] std::string Log() const;

  /// Why there can be none here; empty when the server's programs are installed.
  [[nodiscard]] static std::string Missing();
  /// The one of this program, started when it is first asked for.
  static TestServer& Shared();

 private:
  void StartServer();
  void WaitUntilReady();

  qorhost::test::TemporaryFolder folder_;
  pid_t process_ = 0;
};

}  // namespace qorhost::postgres::test
