// Programs that are started at one moment.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

namespace qorhost::test {

/// One run of a program, and what it said.
struct Finished {
  int status = -1;  ///< -1 when a signal ended it
  std::string said;
};

/// Runs `program` once for each list of arguments, all let go at once; waits for the last.
[[nodiscard]] std::vector<Finished> Race(const std::string& program,
                                         const std::vector<std::vector<std::string>>& runs);

/// A program whose standard error is a terminal. Killed at the end unless that was done before.
class AtATerminal {
 public:
  AtATerminal(const std::string& program, const std::vector<std::string>& arguments);
  ~AtATerminal();
  AtATerminal(const AtATerminal&) = delete;
  AtATerminal& operator=(const AtATerminal&) = delete;

  /// Reads what it says until it has said `text`; false when it ended before.
  [[nodiscard]] bool WaitUntilItSays(const std::string& text);
  void Kill();

 private:
  int terminal_ = -1;
  pid_t child_ = -1;
};

}  // namespace qorhost::test
