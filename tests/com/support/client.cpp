#include "tests/com/support/client.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/com/support/component.h"

namespace qortest {

namespace {

std::wstring Text(BSTR text) {
  return text == nullptr ? std::wstring() : std::wstring(text, SysStringLen(text));
}

}  // namespace

Client::Client(const wchar_t* programmaticId) : object_(CreateObject(programmaticId)) {
  if (!object_) ADD_FAILURE() << "The component is not registered";
}

Outcome Client::Invoke(DISPID id, WORD flags, std::vector<VARIANT> arguments,
                       std::vector<DISPID> named) const {
  std::reverse(arguments.begin(), arguments.end());
  DISPPARAMS parameters{arguments.data(), named.data(), static_cast<UINT>(arguments.size()),
                        static_cast<UINT>(named.size())};
  Outcome outcome;
  qorcred::com::OwnedExcepInfo info;
  outcome.code = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                 &outcome.result, &info, &outcome.badArgument);
  outcome.raised = info.scode;
  outcome.source = Text(info.bstrSource);
  outcome.description = Text(info.bstrDescription);
  return outcome;
}

DISPID Client::IdOf(const std::wstring& name) const {
  std::wstring writable = name;
  LPOLESTR names = writable.data();
  DISPID id = DISPID_UNKNOWN;
  object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
  return id;
}

}  // namespace qortest
