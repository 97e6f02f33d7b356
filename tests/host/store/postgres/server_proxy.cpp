#include "server_proxy.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <map>
#include <optional>
#include <stdexcept>
#include <utility>

namespace qorhost::postgres::test {

namespace {

constexpr int kTick = 20;  // milliseconds, after which it is asked whether all is over

sockaddr_un AddressOf(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) {
    throw std::runtime_error("the socket's path is too long: " + path);
  }
  std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  return address;
}

bool SendAll(int socket, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent <= 0) {
      return false;
    }
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

std::uint32_t NumberAt(std::string_view bytes, std::size_t at) {
  std::uint32_t number = 0;
  std::memcpy(&number, bytes.data() + at, sizeof number);
  return ntohl(number);
}

/// What comes from one side, cut into messages.
class Stream {
 public:
  /// The first message of a program has no type.
  explicit Stream(bool startsUntyped) : untyped_(startsUntyped) {}

  /// Reads what is there; false at the end.
  bool Read(int socket) {
    std::array<char, 65536> room{};
    const ssize_t got = recv(socket, room.data(), room.size(), 0);
    if (got > 0) {
      bytes_.append(room.data(), static_cast<std::size_t>(got));
    }
    return got > 0;
  }

  /// The next whole message.
  std::optional<std::string> Next() {
    const std::size_t head = untyped_ ? 0 : 1;
    if (bytes_.size() < head + 4) {
      return std::nullopt;
    }
    const std::size_t size = head + NumberAt(bytes_, head);
    if (bytes_.size() < size) {
      return std::nullopt;
    }
    std::string message = bytes_.substr(0, size);
    bytes_.erase(0, size);
    untyped_ = false;
    return message;
  }

 private:
  std::string bytes_;
  bool untyped_;
};

/// What a program has the server execute, told by what it has prepared and bound before.
class Texts {
 public:
  void Note(const std::string& message) {
    if (message.front() == 'P') {
      texts_[TextAt(message, kHead)] = TextAt(message, kHead + TextAt(message, kHead).size() + 1);
    } else if (message.front() == 'B') {
      bound_ = texts_[TextAt(message, kHead + TextAt(message, kHead).size() + 1)];
    }
  }
  [[nodiscard]] std::string Of(const std::string& message) const {
    return message.front() == 'Q' ? TextAt(message, kHead) : bound_;
  }

 private:
  static constexpr std::size_t kHead = 5;  // the type and the size

  static std::string TextAt(const std::string& message, std::size_t at) {
    return at < message.size() ? std::string(message.c_str() + at) : std::string();
  }

  std::map<std::string, std::string> texts_;  // by the names of the prepared statements
  std::string bound_;
};

bool IsGuard(std::string_view text) {
  return text == "SAVEPOINT statement" || text == "RELEASE statement";
}

}  // namespace

struct ServerProxy::Line {
  int program = -1;
  int server = -1;
  std::thread thread;
};

ServerProxy::ServerProxy(const TestServer& server)
    : server_(server.socket()), own_((folder_.path() / ".s.PGSQL.5432").string()) {
  listening_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_un address = AddressOf(own_);
  if (bind(listening_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      listen(listening_, SOMAXCONN) != 0) {
    throw std::runtime_error("the proxy cannot listen at " + own_);
  }
  listener_ = std::thread([this] { Listen(); });
}

ServerProxy::~ServerProxy() {
  ended_ = true;
  listener_.join();
  for (const std::unique_ptr<Line>& line : lines_) {
    line->thread.join();
  }
  close(listening_);
}

std::string ServerProxy::NameOf(const std::string& database) const {
  return "postgresql:///" + database + "?user=tester&host=" + folder_.path().string();
}

void ServerProxy::Ask(std::function<Way(const Message&)> ask) {
  const std::lock_guard hold(asking_);
  ask_ = std::move(ask);
}

ServerProxy::Way ServerProxy::WayOf(const Message& message) {
  std::function<Way(const Message&)> ask;
  {
    const std::lock_guard hold(asking_);
    ask = ask_;
  }
  return ask ? ask(message) : Way::kOn;
}

void ServerProxy::Listen() {
  while (!ended_) {
    pollfd one{listening_, POLLIN, 0};
    if (poll(&one, 1, kTick) <= 0) {
      continue;
    }
    auto line = std::make_unique<Line>();
    line->program = accept4(listening_, nullptr, nullptr, SOCK_CLOEXEC);
    line->server = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_un address = AddressOf(server_);
    const bool isOn = !closed_ && connect(line->server, reinterpret_cast<const sockaddr*>(&address),
                                          sizeof address) == 0;
    if (!isOn) {
      close(line->program);
      close(line->server);
      continue;
    }
    Line& served = *lines_.emplace_back(std::move(line));
    served.thread = std::thread([this, &served] {
      Serve(served);
      close(served.program);
      close(served.server);
    });
  }
}

/// Whether it was silent, until it was no longer.
bool ServerProxy::HasSleptThroughSilence() const {
  const bool wasSilent = silent_;
  while (silent_ && !ended_) {
    std::this_thread::sleep_for(std::chrono::milliseconds(kTick));
  }
  return wasSilent;
}

void ServerProxy::Serve(Line& line) {
  Stream fromProgram(true);
  Stream fromServer(false);
  pid_t backend = 0;
  bool isDeaf = false;  // the program hears nothing any more
  Texts texts;
  while (!ended_) {
    std::array<pollfd, 2> both{{{line.program, POLLIN, 0}, {line.server, POLLIN, 0}}};
    if (HasSleptThroughSilence()) {
      return;
    }
    if (poll(both.data(), both.size(), kTick) <= 0) {
      continue;
    }
    if (both[1].revents != 0) {
      const bool isThere = fromServer.Read(line.server);
      while (const std::optional<std::string> message = fromServer.Next()) {
        if (message->front() == 'K') {
          backend = static_cast<pid_t>(NumberAt(*message, 5));
        }
        if (isDeaf && message->front() == 'Z') {
          return;
        }
        if (!isDeaf && !SendAll(line.program, *message)) {
          return;
        }
      }
      if (!isThere) {
        return;
      }
    }
    if (both[0].revents == 0) {
      continue;
    }
    if (!fromProgram.Read(line.program)) {
      return;
    }
    while (const std::optional<std::string> message = fromProgram.Next()) {
      const char type = message->front();
      Way way = Way::kOn;
      texts.Note(*message);
      if (!isDeaf && (type == 'Q' || type == 'E')) {
        const std::string text = texts.Of(*message);
        way = WayOf({type, text, IsGuard(text), backend});
      }
      if (way == Way::kSilence) {
        silent_ = true;
        (void)HasSleptThroughSilence();
        return;
      }
      if (way == Way::kLostBefore || !SendAll(line.server, *message)) {
        return;
      }
      if (way == Way::kLostBehind) {
        return;
      }
      isDeaf = isDeaf || way == Way::kLostBehindAnswer;
    }
  }
}

}  // namespace qorhost::postgres::test
