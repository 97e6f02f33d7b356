#include "tests/support/tracing_object.h"

#include <cstddef>
#include <utility>

namespace qortest {

using qorcred::Arguments;
using qorcred::InvokeKind;
using qorcred::ObjectRef;
using qorcred::Value;

namespace {

/// Replaces decorated arguments by what they decorate and puts them back at the end, except where
/// the receiver wrote something else.
class UndecoratedArguments {
 public:
  explicit UndecoratedArguments(Arguments arguments) : arguments_(arguments) {
    for (std::size_t at = 0; at < arguments_.size(); ++at) {
      const ObjectRef* object = arguments_[at].As<ObjectRef>();
      if (object == nullptr) {
        continue;
      }
      ObjectRef inner = Undecorated(*object);
      if (inner != *object) {
        replaced_.push_back({at, *object, inner});
        arguments_[at] = std::move(inner);
      }
    }
  }
  ~UndecoratedArguments() {
    for (Replaced& replaced : replaced_) {
      const ObjectRef* now = arguments_[replaced.at].As<ObjectRef>();
      if (now != nullptr && *now == replaced.inner) {
        arguments_[replaced.at] = std::move(replaced.decorated);
      }
    }
  }
  UndecoratedArguments(const UndecoratedArguments&) = delete;
  UndecoratedArguments& operator=(const UndecoratedArguments&) = delete;

 private:
  struct Replaced {
    std::size_t at;
    ObjectRef decorated;
    ObjectRef inner;
  };
  Arguments arguments_;
  std::vector<Replaced> replaced_;
};

std::string IndexList(std::span<const Value> indexes) {
  if (indexes.empty()) {
    return {};
  }
  std::string list;
  for (const Value& index : indexes) {
    list += (list.empty() ? "(" : ", ") + TranscriptText(index);
  }
  return list + ")";
}

/// The line of a call up to its result.
std::string CallLine(std::string_view place, InvokeKind kind, std::span<const Value> arguments) {
  std::string line(place);
  switch (kind) {
    case InvokeKind::kGet:
      return line + IndexList(arguments);
    case InvokeKind::kPut:
      if (arguments.empty()) {
        return line + " =";
      }
      return line + IndexList(arguments.first(arguments.size() - 1)) + " = " +
             TranscriptText(arguments.back());
    case InvokeKind::kCall:
      return line + ArgumentList(arguments);
  }
  return line;
}

bool HoldsObject(const Value& value) {
  const ObjectRef* object = value.As<ObjectRef>();
  return object != nullptr && *object != nullptr;
}

}  // namespace

ObjectRef Undecorated(const ObjectRef& object) {
  ObjectRef innermost = object;
  while (const auto* decorator = dynamic_cast<const TracingObject*>(innermost.get())) {
    innermost = decorator->inner();
  }
  return innermost;
}

TracingObject::TracingObject(ObjectRef inner, TranscriptSink sink)
    : inner_(std::move(inner)), sink_(std::move(sink)) {
  (void)qorcred::RequireSet(inner_);
}

Value TracingObject::Forward(std::string_view line, std::string_view member, InvokeKind kind,
                             Arguments arguments) {
  const UndecoratedArguments undecorated(arguments);
  try {
    return inner_->Invoke(member, kind, arguments);
  } catch (...) {
    Write(std::string(line) + FailureSuffix(qorcred::CurrentFailure()));
    throw;
  }
}

TracingControl::TracingControl(std::string name, ObjectRef inner, TranscriptSink sink)
    : TracingObject(std::move(inner), std::move(sink)), name_(std::move(name)) {}

std::string TracingControl::Place(std::string_view member) const {
  return member.empty() ? name_ : name_ + "." + std::string(member);
}

Value TracingControl::Invoke(std::string_view member, InvokeKind kind, Arguments arguments) {
  const std::string line = CallLine(Place(member), kind, arguments);
  Value result = Forward(line, member, kind, arguments);
  if (kind == InvokeKind::kGet) {
    if (HoldsObject(result)) {
      return Value(
          ObjectRef(std::make_shared<TracingControl>(line, *result.As<ObjectRef>(), sink())));
    }
    Write(line + " -> " + TranscriptText(result));
  } else if (kind == InvokeKind::kCall && HoldsObject(result)) {
    // Unlike fetching a part, making a new object is worth a line of its own.
    Write(line);
    return Value(ObjectRef(
        std::make_shared<TracingControl>(Place(member), *result.As<ObjectRef>(), sink())));
  } else if (kind == InvokeKind::kCall && !result.Is(qorcred::ValueType::kEmpty)) {
    Write(line + " -> " + TranscriptText(result));
  } else {
    Write(line);
  }
  return result;
}

TracingScreen::TracingScreen(ObjectRef inner, TranscriptSink sink, MemberSpeller speller)
    : TracingObject(std::move(inner), std::move(sink)), speller_(std::move(speller)) {}

std::string TracingScreen::Spelled(std::string_view member) const {
  const std::string_view spelled = speller_ ? speller_(member) : std::string_view{};
  return std::string(spelled.empty() ? member : spelled);
}

Value TracingScreen::Invoke(std::string_view member, InvokeKind kind, Arguments arguments) {
  const std::string line = CallLine(Spelled(member), kind, arguments);
  Value result = Forward(line, member, kind, arguments);
  if (kind == InvokeKind::kPut) {
    Write(line);
  } else if (HoldsObject(result)) {
    return Value(
        ObjectRef(std::make_shared<TracingControl>(line, *result.As<ObjectRef>(), sink())));
  } else {
    Write(line + " -> " + TranscriptText(result));
  }
  return result;
}

}  // namespace qortest
