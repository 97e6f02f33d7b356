// The writer of a trace: lines that are indented by who calls whom, and the names of objects.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "frame/object.h"
#include "trace/trace_text.h"

namespace qorcred::trace {

/// Receives one line of a trace, without a line end. What it raises is dropped, and the trace ends.
using TraceSink = std::function<void(std::string_view)>;
/// What two references to the same object have in common; none: the reference's own object.
using Identity = std::function<const void*(const Object&)>;

/// Writes calls as they begin and end: on one line when nothing happens in between, else the calls
/// that happen stand indented below, and what came of the outer one behind them. One thread.
class Tracer final : public std::enable_shared_from_this<Tracer> {
 public:
  explicit Tracer(TraceSink sink, Identity identity = nullptr);
  Tracer(const Tracer&) = delete;
  Tracer& operator=(const Tracer&) = delete;

  void Begin(std::string call);
  /// `outcome` begins with a blank, or is empty.
  void End(std::string_view outcome);
  /// A line of its own.
  void Note(std::string_view line);

  /// The object's name, "label@7". An object keeps name and number for as long as it lives.
  [[nodiscard]] std::string NameOf(const ObjectRef& object, std::string_view label);
  /// A name of the same kind for what is no object of the host.
  [[nodiscard]] std::string NewName(std::string_view label);
  [[nodiscard]] std::string Spelled(const Value& value, std::string_view label = "object");

  /// `object` as controllers are to see it: whoever calls it is traced. Nothing stays nothing, and
  /// what is traced already stays as it is.
  [[nodiscard]] ObjectRef Traced(const ObjectRef& object, std::string_view label);
  /// The same for a component, whose end is told as `Release`.
  [[nodiscard]] ObjectRef TracedComponent(const ObjectRef& component, std::string_view label);

  /// Whether a statement is being run for a controller: what it needs is no statement of the
  /// host's.
  [[nodiscard]] bool inStatement() const { return statements_ > 0; }

 private:
  friend class TracedObject;

  struct Known {
    std::string name;
    std::weak_ptr<Object> object;
    std::weak_ptr<Object> traced;
  };

  Known& KnownAs(const ObjectRef& object, std::string_view label);
  [[nodiscard]] ObjectRef Wrapped(const ObjectRef& object, std::string_view label,
                                  bool tellsRelease);
  void WriteOut();
  void Write(const std::string& line);
  void ForgetTheDead();

  TraceSink sink_;
  Identity identity_;
  std::size_t depth_ = 0;
  int statements_ = 0;
  bool waits_ = false;
  std::string waiting_;  // the call that has begun last, while nothing has happened in it
  std::size_t lastNumber_ = 0;
  std::size_t forgetAt_ = 256;
  std::unordered_map<const void*, Known> known_;
};

/// The object behind a traced one; `object` itself when it is not traced.
[[nodiscard]] ObjectRef Untraced(const ObjectRef& object);

}  // namespace qorcred::trace
