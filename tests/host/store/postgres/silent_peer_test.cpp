// A network that is cut somewhere on the way: no byte comes, none is acknowledged, and nobody gives
// up. The operating system finds that out by itself, as it is told to for each connection.
#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <libpq-fe.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>

#include "host/store/postgres/connection.h"
#include "host/store/store_error.h"
#include "test_server.h"

namespace qorhost::postgres::test {

namespace {

using std::chrono::seconds;
using std::chrono::steady_clock;
using testing::AllOf;
using testing::Contains;
using testing::Pair;

/// A step of a packet filter, and the filter, as the system takes them (SO_ATTACH_FILTER).
struct PacketStep {
  static constexpr std::uint16_t kKeepSoManyBytes = 6;
  std::uint16_t code;
  std::uint8_t ifTrue;
  std::uint8_t ifFalse;
  std::uint32_t number;
};
struct PacketFilter {
  std::uint16_t steps;
  PacketStep* first;
};

/// A line between a program and the server that begins as one of a network does, with addresses of
/// this machine; it takes one connection.
class NetworkLine {
 public:
  explicit NetworkLine(const TestServer& server)
      : listening_(Require(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))),
        server_(Require(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))) {
    sockaddr_in here{};
    here.sin_family = AF_INET;
    here.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof here;
    Require(bind(listening_, reinterpret_cast<const sockaddr*>(&here), size));
    Require(getsockname(listening_, reinterpret_cast<sockaddr*>(&here), &size));
    port_ = ntohs(here.sin_port);
    Require(listen(listening_, 1));
    sockaddr_un there{};
    there.sun_family = AF_UNIX;
    server.socket().copy(there.sun_path, sizeof there.sun_path - 1);
    Require(connect(server_, reinterpret_cast<const sockaddr*>(&there), sizeof there));
    thread_ = std::thread([this] { Serve(); });
  }
  ~NetworkLine() {
    isOver_ = true;
    thread_.join();
    close(listening_);
    close(server_);
  }
  NetworkLine(const NetworkLine&) = delete;
  NetworkLine& operator=(const NetworkLine&) = delete;

  [[nodiscard]] std::string Name(const std::string& settings) const {
    return "postgresql://tester@127.0.0.1:" + std::to_string(port_) +
           "/postgres?sslmode=disable&gssencmode=disable" + settings;
  }
  /// Cuts it behind the next message of the program with that text in it, which the server gets.
  void CutBehind(std::string_view text) {
    text_ = text;
    isToCut_ = true;
  }
  /// Cuts it: before what the program sends from now on.
  void Cut() { DropAll(); }

 private:
  static int Require(int result) {
    if (result < 0) {
      throw std::runtime_error(std::strerror(errno));
    }
    return result;
  }

  void Serve() {
    constexpr int kTick = 20;
    for (pollfd asked{listening_, POLLIN, 0}; poll(&asked, 1, kTick) <= 0;) {
      if (isOver_) {
        return;
      }
    }
    program_ = accept4(listening_, nullptr, nullptr, SOCK_CLOEXEC);
    while (!isOver_) {
      std::array<pollfd, 2> both{{{program_, POLLIN, 0}, {server_, POLLIN, 0}}};
      if (poll(both.data(), both.size(), kTick) <= 0 || isCut_) {
        continue;
      }
      if ((both[0].revents != 0 && !HandOn(program_, server_)) ||
          (both[1].revents != 0 && !HandOn(server_, program_))) {
        break;
      }
    }
    close(program_);
  }

  bool HandOn(int from, int to) {
    std::array<char, 65536> room{};
    const ssize_t got = recv(from, room.data(), room.size(), 0);
    if (got <= 0 || send(to, room.data(), static_cast<std::size_t>(got), MSG_NOSIGNAL) != got) {
      return false;
    }
    const std::string_view bytes(room.data(), static_cast<std::size_t>(got));
    if (from == program_ && isToCut_ && bytes.find(text_) != std::string_view::npos) {
      DropAll();
    }
    return true;
  }

  /// The system throws away what comes for this end, and acknowledges none of it.
  void DropAll() {
    isCut_ = true;
    PacketStep keepNothing{};
    keepNothing.code = PacketStep::kKeepSoManyBytes;
    const PacketFilter filter{1, &keepNothing};
    Require(setsockopt(program_, SOL_SOCKET, SO_ATTACH_FILTER, &filter, sizeof filter));
  }

  int listening_;
  int server_;
  std::atomic<int> program_ = -1;
  int port_ = 0;
  std::atomic<bool> isOver_ = false;
  std::atomic<bool> isCut_ = false;
  std::atomic<bool> isToCut_ = false;
  std::string text_;
  std::thread thread_;
};

class SilentPeer : public testing::Test {
 protected:
  void SetUp() override {
    if (const std::string missing = TestServer::Missing(); !missing.empty()) {
      GTEST_SKIP() << missing;
    }
    line_ = std::make_unique<NetworkLine>(TestServer::Shared());
  }

  /// How long it takes until it is told that the server is not there any more.
  static steady_clock::duration TimeUntilLost(Connection& connection, const std::string& sql) {
    const steady_clock::time_point begun = steady_clock::now();
    try {
      (void)connection.Run(sql);
      ADD_FAILURE() << "it was answered";
    } catch (const StoreError& failure) {
      EXPECT_EQ(static_cast<int>(failure.fault()), static_cast<int>(StoreFault::kNoServer))
          << failure.what();
    }
    return steady_clock::now() - begun;
  }

  std::unique_ptr<NetworkLine> line_;
};

std::map<std::string, std::string> SettingsOf(const Connection& connection) {
  std::map<std::string, std::string> settings;
  const std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)> options(
      PQconninfo(connection.handle()), PQconninfoFree);
  for (const PQconninfoOption* one = options.get(); one->keyword != nullptr; ++one) {
    settings[one->keyword] = one->val == nullptr ? "" : one->val;
  }
  return settings;
}

int OptionOf(const Connection& connection, int level, int option) {
  int value = -1;
  socklen_t size = sizeof value;
  getsockopt(PQsocket(connection.handle()), level, option, &value, &size);
  return value;
}

TEST_F(SilentPeer, IsAskedForBySettingsThatTheConnectionHas) {
  const Connection connection(line_->Name(""));
  EXPECT_THAT(
      SettingsOf(connection),
      AllOf(Contains(Pair("keepalives_idle", "20")), Contains(Pair("keepalives_interval", "5")),
            Contains(Pair("keepalives_count", "4")), Contains(Pair("tcp_user_timeout", "40000"))));
  EXPECT_NE(OptionOf(connection, SOL_SOCKET, SO_KEEPALIVE), 0);
  EXPECT_EQ(OptionOf(connection, IPPROTO_TCP, TCP_KEEPIDLE), 20);
  EXPECT_EQ(OptionOf(connection, IPPROTO_TCP, TCP_KEEPINTVL), 5);
  EXPECT_EQ(OptionOf(connection, IPPROTO_TCP, TCP_KEEPCNT), 4);
  EXPECT_EQ(OptionOf(connection, IPPROTO_TCP, TCP_USER_TIMEOUT), 40000);
}

TEST_F(SilentPeer, IsAskedForAsTheNameSays) {
  const Connection connection(line_->Name("&keepalives_idle=7&tcp_user_timeout=9000"));
  EXPECT_EQ(OptionOf(connection, IPPROTO_TCP, TCP_KEEPIDLE), 7);
  EXPECT_EQ(OptionOf(connection, IPPROTO_TCP, TCP_KEEPCNT), 4);
  EXPECT_EQ(OptionOf(connection, IPPROTO_TCP, TCP_USER_TIMEOUT), 9000);
}

// By what is sent and not acknowledged.
TEST_F(SilentPeer, ThatHearsNothingIsFoundOut) {
  Connection connection(line_->Name("&tcp_user_timeout=300"));
  line_->Cut();
  EXPECT_LT(TimeUntilLost(connection, "SELECT 1"), seconds(5));
}

// By asking whether it is there: the server has heard the statement and may well be at work.
TEST_F(SilentPeer, ThatIsWaitedForIsFoundOut) {
  Connection connection(line_->Name(
      "&keepalives_idle=1&keepalives_interval=1&keepalives_count=1&tcp_user_timeout=0"));
  line_->CutBehind("pg_sleep");
  const steady_clock::duration time = TimeUntilLost(connection, "SELECT pg_sleep(30)");
  EXPECT_GT(time, seconds(1));
  EXPECT_LT(time, seconds(10));
}

}  // namespace

}  // namespace qorhost::postgres::test
