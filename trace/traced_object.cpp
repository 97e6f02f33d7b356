#include "trace/traced_object.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "frame/manager_operations.h"
#include "frame/runtime_error.h"
#include "trace/argument_names.h"
#include "trace/traced_call.h"

namespace qorcred::trace {

namespace {

/// Counts, while it lives, a statement that is run for a controller.
class StatementUnderWay {
 public:
  StatementUnderWay(int& count, bool isStatement) : count_(isStatement ? &count : nullptr) {
    if (count_ != nullptr) ++*count_;
  }
  ~StatementUnderWay() {
    if (count_ != nullptr) --*count_;
  }
  StatementUnderWay(const StatementUnderWay&) = delete;
  StatementUnderWay& operator=(const StatementUnderWay&) = delete;

 private:
  int* count_;
};

bool RunsStatement(std::string_view member, std::size_t arguments) {
  return FindManagerOperation(member, arguments) != nullptr || SameMember(member, "Execute");
}

}  // namespace

TracedObject::TracedObject(std::shared_ptr<Tracer> tracer, std::string name, ObjectRef inner,
                           bool tellsRelease)
    : tracer_(std::move(tracer)),
      name_(std::move(name)),
      inner_(std::move(inner)),
      tellsRelease_(tellsRelease) {}

TracedObject::~TracedObject() {
  if (!tellsRelease_) return;
  try {
    tracer_->Note("Release " + name_);
  } catch (...) {
    // Memory that is short must not end the program while objects go.
    return;
  }
}

std::string TracedObject::Call(std::string_view member, InvokeKind kind,
                               Arguments arguments) const {
  std::string call = name_;
  if (!member.empty()) call.append(".").append(member);
  const bool isPut = kind == InvokeKind::kPut && !arguments.empty();
  const Arguments listed = isPut ? Arguments(arguments.data(), arguments.size() - 1) : arguments;
  if (kind == InvokeKind::kCall || !listed.empty()) {
    call += ArgumentsText(*tracer_, listed, [member, count = listed.size()](std::size_t at) {
      return member.empty() ? IndexName(at, count) : ArgumentName(member, at);
    });
  }
  if (isPut) call += " = " + tracer_->Spelled(arguments.back());
  return call;
}

// What comes from a get is called by the member, an item by the name of what it is an item of and
// its place.
std::string TracedObject::LabelOf(std::string_view member, Arguments arguments) const {
  if (SameMember(member, kExecuteSelect.name)) return "rows";
  std::string label(member.empty() ? std::string_view(name_).substr(0, name_.rfind('@')) : member);
  for (const Value& index : arguments) {
    if (const std::int32_t* place = index.As<std::int32_t>()) {
      label += "[" + std::to_string(*place) + "]";
    }
  }
  return label;
}

Value TracedObject::Invoke(std::string_view member, InvokeKind kind, Arguments arguments) {
  // Whoever is called may let go of this object.
  const ObjectRef inner = inner_;
  const std::shared_ptr<Tracer> tracer = tracer_;
  const std::string label = LabelOf(member, kind == InvokeKind::kGet ? arguments : Arguments());
  const std::string memberName(member);

  std::vector<Value> before(arguments.begin(), arguments.end());
  tracer->Begin(Call(member, kind, arguments));
  for (Value& argument : arguments) {
    if (ObjectRef* object = argument.As<ObjectRef>()) *object = Untraced(*object);
  }
  const std::vector<Value> handed(arguments.begin(), arguments.end());
  const auto outs = [&] {
    return OutsText(*tracer, handed, arguments,
                    [&memberName](std::size_t at) { return ArgumentName(memberName, at); });
  };
  // What was not written to is the caller's own again, traced or not.
  const auto handBack = [&] {
    for (std::size_t at = 0; at < arguments.size(); ++at) {
      if (arguments[at] == handed[at]) {
        arguments[at] = std::move(before[at]);
      } else if (ObjectRef* object = arguments[at].As<ObjectRef>()) {
        *object = tracer->Traced(*object, label);
      }
    }
  };
  try {
    const StatementUnderWay statement(
        tracer->statements_,
        kind == InvokeKind::kCall && RunsStatement(memberName, arguments.size()));
    Value result = inner->Invoke(member, kind, arguments);
    std::string outcome;
    if (ObjectRef* object = result.As<ObjectRef>()) *object = tracer->Traced(*object, label);
    const bool tellsResult =
        kind == InvokeKind::kGet || (kind == InvokeKind::kCall && !result.Is(ValueType::kEmpty));
    if (tellsResult) outcome = " -> " + tracer->Spelled(result, label);
    tracer->End(outcome + outs());
    handBack();
    return result;
  } catch (...) {
    tracer->End(SpelledFailure(CurrentFailure()) + outs());
    handBack();
    throw;
  }
}

}  // namespace qorcred::trace
