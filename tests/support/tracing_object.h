// Objects that write a line for every call that reaches them and hand it on.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "frame/object.h"
#include "tests/support/transcript_text.h"

namespace qortest {

/// Base of the tracing decorators: keeps the decorated object alive as long as itself.
/// Whatever the decorated object raises is written to the line and raised again.
class TracingObject : public qorcred::Object {
 public:
  TracingObject(qorcred::ObjectRef inner, TranscriptSink sink);

  [[nodiscard]] const qorcred::ObjectRef& inner() const { return inner_; }

 protected:
  /// Hands the call on with decorated arguments undecorated, so that the receiver sees its own
  /// kind of object. A failure is written as `line` and the failure's number and text.
  qorcred::Value Forward(std::string_view line, std::string_view member, qorcred::InvokeKind kind,
                         qorcred::Arguments arguments);
  void Write(std::string_view line) const { sink_(line); }
  [[nodiscard]] const TranscriptSink& sink() const { return sink_; }

 private:
  qorcred::ObjectRef inner_;
  TranscriptSink sink_;
};

/// A control or any other object that is known by a name: `name.Member = value`,
/// `name.Member(index) -> value`, `name.Method argument`. The default member is the name alone.
/// An object that comes back from a get is traced under the name of the place it came from, one
/// that comes back from a call, `name.Method`, under the name of the method.
class TracingControl final : public TracingObject {
 public:
  TracingControl(std::string name, qorcred::ObjectRef inner, TranscriptSink sink);

  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;

 private:
  [[nodiscard]] std::string Place(std::string_view member) const;

  std::string name_;
};

/// Spells a member's name as its owner does; an empty result leaves the name as called.
using MemberSpeller = std::function<std::string_view(std::string_view)>;

/// A screen: its controls come back traced under their names, its variables print
/// `name -> value` and `name = value`.
class TracingScreen final : public TracingObject {
 public:
  TracingScreen(qorcred::ObjectRef inner, TranscriptSink sink, MemberSpeller speller = nullptr);

  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;

 private:
  [[nodiscard]] std::string Spelled(std::string_view member) const;

  MemberSpeller speller_;
};

/// The object behind any number of tracing decorators; `object` itself when it is not traced.
[[nodiscard]] qorcred::ObjectRef Undecorated(const qorcred::ObjectRef& object);

}  // namespace qortest
