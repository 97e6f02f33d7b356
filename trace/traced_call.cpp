#include "trace/traced_call.h"

#include <utility>
#include <vector>

#include "frame/runtime_error.h"

namespace qorcred::trace {

namespace {

void SetUntraced(Value& value) {
  if (ObjectRef* object = value.As<ObjectRef>()) *object = Untraced(*object);
}

std::string CallText(Tracer& tracer, std::string_view name, const Member& member, InvokeKind kind,
                     std::span<const Value> arguments, const Naming& naming) {
  std::string call = std::string(name) + "." + std::string(member.name);
  if (kind == InvokeKind::kCall) return call + ArgumentsText(tracer, arguments, naming);
  if (kind == InvokeKind::kPut) call += " = " + tracer.Spelled(arguments[0], member.name);
  return call;
}

}  // namespace

std::string ArgumentsText(Tracer& tracer, std::span<const Value> arguments, const Naming& naming) {
  std::string text = "(";
  for (std::size_t at = 0; at < arguments.size(); ++at) {
    if (at > 0) text += ", ";
    const std::string_view name = naming(at);
    if (!name.empty()) text.append(name).append(": ");
    text += tracer.Spelled(arguments[at], name.empty() ? "object" : name);
  }
  return text + ")";
}

std::string OutsText(Tracer& tracer, std::span<const Value> before, std::span<const Value> after,
                     const Naming& naming) {
  std::string text;
  for (std::size_t at = 0; at < before.size(); ++at) {
    if (before[at] == after[at]) continue;
    const std::string_view name = naming(at);
    text += text.empty() ? " out " : ", ";
    text += name.empty() ? std::to_string(at + 1) : std::string(name);
    text += ": " + tracer.Spelled(after[at], name.empty() ? "object" : name);
  }
  return text;
}

Value RunTraced(Tracer& tracer, std::string_view name, Controller& controller, const Member& member,
                InvokeKind kind, std::span<Value> arguments) {
  const Naming naming = [&member](std::size_t at) {
    return at < member.parameters.size() ? member.parameters[at].name : member.name;
  };
  for (std::size_t at = 0; at < arguments.size(); ++at) {
    if (ObjectRef* object = arguments[at].As<ObjectRef>()) {
      *object = tracer.Traced(*object, naming(at));
    }
  }
  const std::vector<Value> before(arguments.begin(), arguments.end());
  tracer.Begin(CallText(tracer, name, member, kind, arguments, naming));
  const auto outs = [&] {
    return kind == InvokeKind::kCall ? OutsText(tracer, before, arguments, naming) : std::string();
  };
  try {
    Value result = member.run(controller, kind, arguments);
    std::string outcome;
    if (member.type != ValueType::kEmpty && kind != InvokeKind::kPut) {
      outcome = " -> " + tracer.Spelled(result, member.name);
    }
    tracer.End(outcome + outs());
    SetUntraced(result);
    for (Value& argument : arguments) SetUntraced(argument);
    return result;
  } catch (...) {
    tracer.End(SpelledFailure(CurrentFailure()) + outs());
    for (Value& argument : arguments) SetUntraced(argument);
    throw;
  }
}

}  // namespace qorcred::trace
