#include "test_server.h"

#include <fcntl.h>
#include <libpq-fe.h>
#include <signal.h>  // kill
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>

#include "host/store/postgres/connection.h"

namespace qorhost::postgres::test {

namespace {

namespace fs = std::filesystem;

using Words = std::vector<std::string>;

/// The folder of the newest server that is installed; empty for none.
fs::path ProgramFolder() {
  std::vector<fs::path> found;
  std::error_code ignored;
  for (const auto& entry : fs::directory_iterator("/usr/lib/postgresql", ignored)) {
    if (fs::exists(entry.path() / "bin" / "initdb") && entry.path().filename() >= "15") {
      found.push_back(entry.path() / "bin");
    }
  }
  return found.empty() ? fs::path() : *std::max_element(found.begin(), found.end());
}

/// The server does not run as root: in a namespace of its own the superuser is somebody else.
Words AsAnotherUser() {
  return geteuid() == 0 ? Words{"unshare", "--user", "--map-user=65534", "--map-group=65534"}
                        : Words();
}

/// Starts a program whose output goes to a file.
pid_t Start(Words words, const fs::path& output) {
  std::vector<char*> arguments;
  for (std::string& word : words) {
    arguments.push_back(word.data());
  }
  arguments.push_back(nullptr);
  const pid_t process = fork();
  if (process == 0) {
    const int file = open(output.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    dup2(file, STDOUT_FILENO);
    dup2(file, STDERR_FILENO);
    execvp(arguments.front(), arguments.data());
    _exit(127);
  }
  return process;
}

Words Joined(Words first, const Words& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

std::string ContentOf(const fs::path& file) {
  std::ifstream stream(file);
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

TestServer::TestServer() {
  const fs::path programs = ProgramFolder();
  const fs::path log = folder_.File("log");
  const std::string data = folder_.File("data").string();
  int status = 0;
  waitpid(Start(Joined(AsAnotherUser(),
                       {programs / "initdb", "-D", data, "-U", "tester", "--auth=trust", "-E",
                        "UTF8", "--locale=C.UTF-8", "--no-sync"}),
                log),
          &status, 0);
  if (status != 0) {
    throw std::runtime_error("initdb failed: " + ContentOf(log));
  }
  StartServer();
}

void TestServer::StartServer() {
  const fs::path programs = ProgramFolder();
  const std::string data = folder_.File("data").string();
  // The server is told when this program ends, whatever ends it.
  process_ = Start(
      Joined(AsAnotherUser(),
             {"setpriv", "--pdeathsig", "QUIT", "--", programs / "postgres", "-D", data, "-k",
              folder_.path().string(), "-c", "listen_addresses=", "-c", "fsync=off", "-c",
              "full_page_writes=off", "-c", "shared_buffers=32MB", "-c", "max_connections=40"}),
      folder_.File("log"));
  WaitUntilReady();
}

TestServer::~TestServer() {
  End();
}

void TestServer::End() {
  if (process_ != 0) {
    kill(process_, SIGQUIT);
    int status = 0;
    waitpid(process_, &status, 0);
    process_ = 0;
  }
}

void TestServer::StartAgain() {
  End();
  StartServer();
}

std::string TestServer::socket() const {
  return (folder_.path() / ".s.PGSQL.5432").string();
}

void TestServer::WaitUntilReady() {
  constexpr int kMostTries = 3000;
  const std::string name = NameOf("postgres");
  for (int tries = 0; tries < kMostTries; ++tries) {
    if (PQping(name.c_str()) == PQPING_OK) {
      return;
    }
    int status = 0;
    if (waitpid(process_, &status, WNOHANG) != 0) {
      break;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  throw std::runtime_error("the server did not start: " + ContentOf(folder_.File("log")));
}

std::string TestServer::NameOf(const std::string& database) const {
  return "postgresql:///" + database + "?user=tester&host=" + folder_.path().string();
}

std::string TestServer::Create(const std::string& database, const std::string& like) {
  Connection(NameOf("postgres")).RunAll("CREATE DATABASE " + database + " TEMPLATE " + like);
  return NameOf(database);
}

void TestServer::LogPlans(const std::string& database) {
  Connection connection(NameOf("postgres"));
  for (const char* setting :
       {"session_preload_libraries = 'auto_explain'", "auto_explain.log_min_duration = 0",
        "auto_explain.log_format = 'json'", "auto_explain.log_nested_statements = off"}) {
    connection.RunAll("ALTER DATABASE " + database + " SET " + setting);
  }
}

void TestServer::AddUser(const std::string& user, const std::string& password) {
  Connection connection(NameOf("postgres"));
  connection.RunAll("CREATE ROLE " + user + " SUPERUSER LOGIN PASSWORD '" + password + "'");
  const fs::path rules = folder_.File("data") / "pg_hba.conf";
  const std::string others = ContentOf(rules);
  std::ofstream(rules) << "local all " << user << " scram-sha-256\n" << others;
  connection.RunAll("SELECT pg_reload_conf()");
  // The server takes them up when it comes to it.
  const std::string name = NameOf("postgres") + "&user=" + user;
  bool isWanted = false;
  while (!isWanted) {
    PGconn* tried = PQconnectdb(name.c_str());
    isWanted = PQconnectionNeedsPassword(tried) == 1;
    PQfinish(tried);
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
}

std::string TestServer::Log() const {
  return ContentOf(folder_.File("log"));
}

std::string TestServer::Missing() {
  if (ProgramFolder().empty()) {
    return "no PostgreSQL server of version 15 or newer is installed (Debian: postgresql-15)";
  }
  return "";
}

TestServer& TestServer::Shared() {
  static TestServer server;
  return server;
}

}  // namespace qorhost::postgres::test
