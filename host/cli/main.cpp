#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "host/cli/command_line.h"
#include "host/desks/author.h"
#include "host/desks/whole_number.h"

namespace {

/// Whether standard output is a pipe that nobody reads any more.
bool ReaderIsGone() {
  pollfd output{STDOUT_FILENO, 0, 0};
  return poll(&output, 1, 0) > 0 && (output.revents & (POLLERR | POLLHUP)) != 0;
}

/// A stream that was closed by whoever started the program stays unusable: the next file that is
/// opened would get its number, and messages would go into that file.
void KeepClosedStreamsClosed() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(stream, F_GETFD) < 0) {
      // It gets the lowest free number, which is this one; reading from it or writing to it fails.
      (void)!open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
  }
}

/// How wide the terminal is: as COLUMNS says, else as the terminal itself does.
std::size_t ColumnsOfTerminal() {
  constexpr std::size_t kUsual = 80;
  if (const char* told = std::getenv("COLUMNS")) {
    const auto columns = qorhost::WholeNumber(told);
    if (columns && *columns > 0) {
      return static_cast<std::size_t>(*columns);
    }
  }
  winsize size{};
  return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : kUsual;
}

qorhost::Environment EnvironmentOfProcess() {
  qorhost::Environment environment;
  environment.inputIsTerminal = isatty(STDIN_FILENO) == 1;
  environment.outputIsTerminal = isatty(STDOUT_FILENO) == 1;
  environment.errorIsTerminal = isatty(STDERR_FILENO) == 1;
  environment.colours = environment.outputIsTerminal && std::getenv("NO_COLOR") == nullptr;
  environment.author = qorhost::AuthorOfProcess("qorhost");
  environment.columns = ColumnsOfTerminal();
  environment.readerIsGone = ReaderIsGone;
  if (const char* store = std::getenv("QORHOST_DB"); store != nullptr && *store != '\0') {
    environment.store = store;
  }
  if (const char* unit = std::getenv("QORHOST_UNIT"); unit != nullptr && *unit != '\0') {
    environment.unit = unit;
  }
  return environment;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    KeepClosedStreamsClosed();
    // A reader that went away is told by the write, not by a signal.
    std::signal(SIGPIPE, SIG_IGN);
    // So is a limit on the size of files, like a full disk.
    std::signal(SIGXFSZ, SIG_IGN);
    std::ios::sync_with_stdio(false);
    const std::vector<std::string> args(argv + (argc > 0 ? 1 : 0), argv + argc);
    return qorhost::RunCommandLine(args, std::cin, std::cout, std::cerr, EnvironmentOfProcess());
  } catch (...) {
    std::cerr << "qorhost: unexpected failure\n";
  }
  return static_cast<int>(qorhost::ExitStatus::kFailure);
}
