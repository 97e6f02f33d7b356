#include "tests/support/fault_gate.h"

#include <memory>
#include <utility>

#include "frame/runtime_error.h"

namespace qortest {

using qorcred::InvokeKind;
using qorcred::ObjectRef;
using qorcred::Value;

void FaultGate::FailAt(std::size_t n) {
  Reset();
  failAt_ = n;
}

void FaultGate::FailOn(std::string description) {
  Reset();
  failOn_ = std::move(description);
}

void FaultGate::DoAt(std::size_t n, std::function<void()> happening) {
  FailAt(n);
  happening_ = std::move(happening);
}

void FaultGate::Reset() {
  calls_ = 0;
  failAt_ = 0;
  failOn_.clear();
  failed_.clear();
  failure_ = nullptr;
  happening_ = nullptr;
}

void FaultGate::Pass(std::string_view description) {
  ++calls_;
  const bool named = !failOn_.empty() && failed_.empty() && description.starts_with(failOn_);
  if (calls_ == failAt_ && happening_ != nullptr) {
    // Its own calls may pass here, too.
    std::exchange(happening_, nullptr)();
    return;
  }
  if (calls_ == failAt_ || named) {
    failed_ = description;
    if (failure_ != nullptr) {
      std::rethrow_exception(failure_);
    }
    throw qorcred::RuntimeError(qorcred::ErrorNumber::kApplicationDefined, "Injected failure");
  }
}

GatedObject::GatedObject(std::string name, ObjectRef inner, FaultGate& gate)
    : name_(std::move(name)), inner_(std::move(inner)), gate_(gate) {}

Value GatedObject::Invoke(std::string_view member, InvokeKind kind, qorcred::Arguments arguments) {
  std::string place = name_.empty() ? std::string(member) : name_ + "." + std::string(member);
  gate_.Pass(kind == InvokeKind::kPut ? place + "=" : place);
  Value result = inner_->Invoke(member, kind, arguments);
  const ObjectRef* object = result.As<ObjectRef>();
  if (object != nullptr && *object != nullptr) {
    return ObjectRef(std::make_shared<GatedObject>(std::move(place), *object, gate_));
  }
  return result;
}

}  // namespace qortest
