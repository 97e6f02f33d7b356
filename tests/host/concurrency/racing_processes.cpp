#include "tests/host/concurrency/racing_processes.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

namespace qorhost::test {

namespace {

constexpr int kCannotStart = 127;

/// A file descriptor, closed at the end.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() { Close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  Descriptor(Descriptor&& other) noexcept : number_(other.number_) { other.number_ = -1; }
  Descriptor& operator=(Descriptor&&) = delete;

  [[nodiscard]] int number() const { return number_; }
  void Close() {
    if (number_ >= 0) {
      close(number_);
      number_ = -1;
    }
  }

 private:
  int number_;
};

struct Pipe {
  Descriptor out;
  Descriptor in;
};

Pipe MakePipe() {
  std::array<int, 2> ends{};
  // Nobody else's child keeps an end open.
  if (pipe2(ends.data(), O_CLOEXEC) != 0) {
    throw std::runtime_error("no pipe");
  }
  return {Descriptor(ends[0]), Descriptor(ends[1])};
}

/// What exec takes; made before the fork, where memory may be asked for.
class ArgumentList {
 public:
  ArgumentList(const std::string& program, const std::vector<std::string>& arguments)
      : texts_(arguments) {
    texts_.insert(texts_.begin(), program);
    for (std::string& text : texts_) {
      pointers_.push_back(text.data());
    }
    pointers_.push_back(nullptr);
  }
  [[noreturn]] void Run() {
    execv(pointers_.front(), pointers_.data());
    _exit(kCannotStart);
  }

 private:
  std::vector<std::string> texts_;
  std::vector<char*> pointers_;
};

/// Appends what comes; false at the end.
bool ReadMore(int from, std::string& text) {
  std::array<char, 4096> piece{};
  const ssize_t size = read(from, piece.data(), piece.size());
  if (size > 0) {
    text.append(piece.data(), static_cast<std::size_t>(size));
  }
  return size > 0;
}

}  // namespace

std::vector<Finished> Race(const std::string& program,
                           const std::vector<std::vector<std::string>>& runs) {
  struct Runner {
    pid_t child;
    Descriptor said;
  };
  Pipe start = MakePipe();
  std::vector<Runner> runners;
  for (const std::vector<std::string>& arguments : runs) {
    Pipe said = MakePipe();
    ArgumentList list(program, arguments);
    const pid_t child = fork();
    if (child == 0) {
      close(start.in.number());
      char nothing = 0;
      (void)!read(start.out.number(), &nothing, 1);  // until the starter lets go
      dup2(said.in.number(), STDOUT_FILENO);
      dup2(said.in.number(), STDERR_FILENO);
      list.Run();
    }
    runners.push_back({child, std::move(said.out)});
  }
  start.in.Close();
  std::vector<Finished> finished;
  for (Runner& runner : runners) {
    Finished one;
    while (ReadMore(runner.said.number(), one.said)) {
    }
    int state = 0;
    waitpid(runner.child, &state, 0);
    one.status = WIFEXITED(state) ? WEXITSTATUS(state) : -1;
    finished.push_back(std::move(one));
  }
  return finished;
}

AtATerminal::AtATerminal(const std::string& program, const std::vector<std::string>& arguments) {
  terminal_ = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (terminal_ < 0 || grantpt(terminal_) != 0 || unlockpt(terminal_) != 0) {
    throw std::runtime_error("no terminal");
  }
  const std::string name = ptsname(terminal_);
  ArgumentList list(program, arguments);
  child_ = fork();
  if (child_ == 0) {
    dup2(open(name.c_str(), O_RDWR | O_NOCTTY), STDERR_FILENO);
    list.Run();
  }
}

AtATerminal::~AtATerminal() {
  Kill();
  close(terminal_);
}

bool AtATerminal::WaitUntilItSays(const std::string& text) {
  std::string said;
  while (said.find(text) == std::string::npos) {
    if (!ReadMore(terminal_, said)) {
      return false;
    }
  }
  return true;
}

void AtATerminal::Kill() {
  if (child_ > 0) {
    kill(child_, SIGKILL);
    waitpid(child_, nullptr, 0);
    child_ = -1;
  }
}

}  // namespace qorhost::test
