#include <poll.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "host/cli/command_line.h"

namespace {

qorhost::Environment EnvironmentOfProcess() {
  qorhost::Environment environment;
  environment.inputIsTerminal = isatty(STDIN_FILENO) == 1;
  environment.outputIsTerminal = isatty(STDOUT_FILENO) == 1;
  environment.errorIsTerminal = isatty(STDERR_FILENO) == 1;
  environment.colours = environment.outputIsTerminal && std::getenv("NO_COLOR") == nullptr;
  return environment;
}

/// Whether standard output is a pipe that nobody reads any more.
bool ReaderIsGone() {
  pollfd output{STDOUT_FILENO, 0, 0};
  return poll(&output, 1, 0) > 0 && (output.revents & (POLLERR | POLLHUP)) != 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    // A reader that went away is told by the write, not by a signal.
    std::signal(SIGPIPE, SIG_IGN);
    // So is a limit on the size of files, like a full disk.
    std::signal(SIGXFSZ, SIG_IGN);
    std::ios::sync_with_stdio(false);
    const std::vector<std::string> args(argv + (argc > 0 ? 1 : 0), argv + argc);
    const int status =
        qorhost::RunCommandLine(args, std::cin, std::cout, std::cerr, EnvironmentOfProcess());
    std::cout.flush();
    if (std::cout.good() || ReaderIsGone()) {
      return status;
    }
    std::cerr << "qorhost: the output could not be written\n";
  } catch (...) {
    std::cerr << "qorhost: unexpected failure\n";
  }
  return static_cast<int>(qorhost::ExitStatus::kFailure);
}
