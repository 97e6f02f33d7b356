#include "tests/com/scenarios/object_dispatch.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "com/dispatch_object.h"
#include "com/failures.h"
#include "com/text.h"
#include "com/variants.h"
#include "frame/runtime_error.h"
#include "tests/com/support/plain_dispatch.h"

namespace qortest {

namespace {

using qorcred::InvokeKind;
using qorcred::ObjectRef;
using qorcred::Value;
using qorcred::com::ComPtr;

int live = 0;

// Known to this program alone: the way from an automation object to the object behind it.
constexpr IID kBehind = {
    0x5d0c9e0a, 0x34c6, 0x4e1b, {0x9d, 0x2c, 0x6f, 0x4a, 0x1e, 0x77, 0x90, 0x31}};

class ObjectDispatch final : public PlainDispatch<IDispatch> {
 public:
  explicit ObjectDispatch(ObjectRef object) : object_(std::move(object)) { ++live; }

  [[nodiscard]] const ObjectRef& object() const { return object_; }

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                          DISPID* ids) override {
    // Every name gets an identifier: what it is worth shows when it is used.
    members_.push_back(qorcred::com::ToUtf8(names[0]));
    ids[0] = static_cast<DISPID>(members_.size());
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* info, UINT*) override {
    const ComPtr<IDispatch> alive(this);
    try {
      const std::string member =
          id == DISPID_VALUE ? std::string() : members_.at(static_cast<std::size_t>(id) - 1);
      std::vector<Value> arguments;
      for (UINT at = parameters->cArgs; at > 0; --at) {
        arguments.push_back(Inward(qorcred::com::ToValue(parameters->rgvarg[at - 1])));
      }
      const std::vector<Value> before = arguments;
      const Value answer = object_->Invoke(member, KindOf(flags), arguments);
      for (std::size_t at = 0; at < arguments.size(); ++at) {
        if (arguments[at] == before[at]) continue;
        qorcred::com::WriteBack(parameters->rgvarg[arguments.size() - 1 - at],
                                Outward(arguments[at]));
      }
      if (result != nullptr) qorcred::com::PutInto(*result, Outward(answer));
      return S_OK;
    } catch (const BareCode& bare) {
      return bare.code;
    } catch (...) {
      return qorcred::com::TellCurrent(L"test", info);
    }
  }

 private:
  ~ObjectDispatch() override { --live; }

  [[nodiscard]] bool Answers(REFIID iid) const override {
    return IsEqualIID(iid, IID_IDispatch) || IsEqualIID(iid, kBehind);
  }

  static InvokeKind KindOf(WORD flags) {
    if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) return InvokeKind::kPut;
    return (flags & DISPATCH_PROPERTYGET) != 0 ? InvokeKind::kGet : InvokeKind::kCall;
  }

  // An argument that is one of these objects stands for the object behind it.
  static Value Inward(Value value) {
    const ObjectRef* object = value.As<ObjectRef>();
    if (object == nullptr || *object == nullptr) return value;
    ComPtr<IDispatch> behind;
    if (FAILED(qorcred::com::Unwrap(*object)->QueryInterface(kBehind, behind.ReceiveVoid()))) {
      return value;
    }
    return static_cast<ObjectDispatch*>(behind.get())->object();
  }

  static Value Outward(Value value) {
    const ObjectRef* object = value.As<ObjectRef>();
    if (object == nullptr || *object == nullptr) return value;
    return qorcred::com::Wrap(AsAutomationObject(*object).get());
  }

  ObjectRef object_;
  std::vector<std::string> members_;
};

}  // namespace

ComPtr<IDispatch> AsAutomationObject(const ObjectRef& object) {
  ComPtr<IDispatch> made;
  if (object != nullptr) *made.Receive() = new ObjectDispatch(object);
  return made;
}

int LiveAutomationObjects() {
  return live;
}

}  // namespace qortest
