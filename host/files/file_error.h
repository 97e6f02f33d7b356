// What keeps a file from being read or written, as people read it.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace qorhost {

enum class FileProblem : std::uint8_t {
  kUnreachable,      ///< the system does not let it be read or written
  kUnusable,         ///< it is too large, or what it holds is damaged
  kHeadings,         ///< its headings are not those that are asked for
  kUnknownHeadings,  ///< some of them stand for nothing that is known
  kExists,           ///< it is there already, and nobody asked for its replacement
  kOccupied,         ///< what stands there is never replaced
  kLikeUtf16,        ///< its text is UTF-16, which was not said
  kNotUtf8,          ///< its text is of another encoding than UTF-8, which was not said
};

/// A file that cannot be used. what() says why and what to do; it may hold parts of the file as
/// they are.
class FileError : public std::runtime_error {
 public:
  FileError(FileProblem problem, const std::string& what)
      : std::runtime_error(what), problem_(problem) {}

  [[nodiscard]] FileProblem problem() const noexcept { return problem_; }

 private:
  FileProblem problem_;
};

}  // namespace qorhost
