#include "tests/com/soak/bare_controller.h"

#include <array>
#include <utility>

#include "com/failures.h"
#include "com/ownership.h"
#include "com/text.h"
#include "com/variants.h"
#include "frame/runtime_error.h"

namespace qortest {

using qorcred::ErrorNumber;
using qorcred::InvokeKind;
using qorcred::RuntimeError;
using qorcred::Value;
using qorcred::com::OwnedExcepInfo;
using qorcred::com::OwnedVariant;

namespace {

WORD FlagsOf(InvokeKind kind) {
  switch (kind) {
    case InvokeKind::kGet:
      return DISPATCH_PROPERTYGET;
    case InvokeKind::kPut:
      return DISPATCH_PROPERTYPUT;
    case InvokeKind::kCall:
      return DISPATCH_METHOD;
  }
  return 0;
}

}  // namespace

BareController::BareController(const wchar_t* programmaticId) {
  CLSID id{};
  void* made = nullptr;
  if (FAILED(CLSIDFromProgID(programmaticId, &id)) ||
      FAILED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, &made))) {
    throw RuntimeError(ErrorNumber::kCannotCreateComponent);
  }
  object_ = static_cast<IDispatch*>(made);
}

Value BareController::Invoke(std::string_view member, InvokeKind kind,
                             qorcred::Arguments arguments) {
  if (object_ == nullptr) throw RuntimeError(ErrorNumber::kObjectNotSet);
  std::wstring name = qorcred::com::ToWide(member);
  LPOLESTR names = name.data();
  DISPID id = DISPID_UNKNOWN;
  if (FAILED(object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id))) {
    throw RuntimeError(ErrorNumber::kUnknownMember);
  }
  std::array<OwnedVariant, 8> pack;
  for (std::size_t at = 0; at < arguments.size(); ++at) {
    qorcred::com::PutInto(pack.at(arguments.size() - 1 - at), arguments[at]);
  }
  DISPID put = DISPID_PROPERTYPUT;
  const bool isPut = kind == InvokeKind::kPut;
  DISPPARAMS parameters{pack.data(), isPut ? &put : nullptr, static_cast<UINT>(arguments.size()),
                        isPut ? 1U : 0U};
  OwnedVariant result;
  OwnedExcepInfo info;
  const HRESULT done = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, FlagsOf(kind),
                                       &parameters, isPut ? nullptr : &result, &info, nullptr);
  if (FAILED(done)) throw qorcred::com::FailureFrom(done, info);
  return qorcred::com::ToValue(result);
}

void BareController::Release() {
  if (IDispatch* object = std::exchange(object_, nullptr)) object->Release();
}

}  // namespace qortest
