// What the controllers touch of their hosts while a test program runs, operation by operation.
#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace qortest {

/// One thing that an operation touched.
struct Touch {
  std::string className;
  std::string operation;  ///< kCreation for what the controller's constructor does
  std::string part;       ///< what was touched: a screen, a component, "message", "statement", ...
  std::string what;       ///< the member and how it was reached; a text
  std::string test;       ///< that touched it first

  friend bool operator==(const Touch&, const Touch&) = default;
  friend bool operator<(const Touch& one, const Touch& other) {
    return std::tie(one.className, one.operation, one.part, one.what, one.test) <
           std::tie(other.className, other.operation, other.part, other.what, other.test);
  }
};

inline constexpr std::string_view kCreation = "creation";
inline constexpr std::string_view kHandedOver = "(handed over)";

/// The touches of a program, each kept once. When QORCRED_SURFACE names a file they are written to
/// it at the program's end. One thread.
class SurfaceRecord {
 public:
  /// The record of this program.
  static SurfaceRecord& Instance();

  /// An operation, from its call to its end. One that the host calls from inside another comes on
  /// top of it.
  class Operation {
   public:
    Operation(std::string_view className, std::string_view operation);
    ~Operation();
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;
  };

  /// A call to the host, from its beginning to its end: what happens inside is the host's own
  /// doing.
  class HostsTurn {
   public:
    HostsTurn();
    ~HostsTurn();
    HostsTurn(const HostsTurn&) = delete;
    HostsTurn& operator=(const HostsTurn&) = delete;
  };

  /// Keeps a touch of the operation that is running; nothing when none is, or when it is the host's
  /// turn.
  void Note(std::string_view part, std::string_view what);

  /// The running operation was handed `statement`: when it runs it, kHandedOver is noted instead.
  void HandOver(std::string_view statement);

  [[nodiscard]] std::vector<Touch> Touches() const;

 private:
  struct Running {
    std::string_view className;
    std::string_view operation;
    int hostCalls = 0;
    std::string handedStatement;
  };
  std::vector<Running> running_;
  std::map<Touch, std::string> firstTests_;  // by touches without a test
};

void WriteTouches(std::ostream& out, const std::vector<Touch>& touches);
/// What WriteTouches() wrote. Raises std::runtime_error for a line that it did not write.
[[nodiscard]] std::vector<Touch> ReadTouches(std::istream& in);

}  // namespace qortest
