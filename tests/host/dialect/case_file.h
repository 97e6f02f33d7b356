// Tables of statements in text files.
//
//   == what the case shows
//   desktop  a statement; several run one after the other and the last is judged
//   sqlite   what it is translated to for that engine
//   postgres the same for that one
//   values   the values of its parameters, separated by " | "
//   types    the result types that the translation tells, separated by blanks; ? is unknown
//   gives    its rows: cells separated by ", ", rows by " ; "; "nothing" for none
//   changes  the number of rows that it changes
//   error    the whole text with which the dialect refuses it
//   fails    a part of the text with which it fails when it runs
//
// Lines that begin with # and empty lines are skipped.
#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace qorhost::dialect::test {

struct Case {
  std::string file;
  std::string name;
  std::vector<std::string> desktop;
  std::optional<std::string> sqlite;
  std::optional<std::string> postgres;
  std::optional<std::string> values;
  std::optional<std::string> types;
  std::optional<std::string> gives;
  std::optional<std::string> changes;
  std::optional<std::string> error;
  std::optional<std::string> fails;
};

/// The cases of all files in cases/, in the order of their names. Raises std::runtime_error for a
/// line that is none of the above, a case that expects nothing and a name that stands twice.
[[nodiscard]] std::vector<Case> LoadCases();

/// A name of letters and digits for the test program: "A = NULL means" becomes "ANullMeans".
[[nodiscard]] std::string TestName(const Case& entry);

void PrintTo(const Case& entry, std::ostream* stream);

}  // namespace qorhost::dialect::test
