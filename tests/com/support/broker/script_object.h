// Objects of script engines, which are reached by their own interface.
#pragma once

#include <dispex.h>
#include <windows.h>

#include <string>

#include "com/ownership.h"

namespace qortest {

using qorcred::com::ComPtr;

/// The object's interface of script engines; null when it has none.
[[nodiscard]] ComPtr<IDispatchEx> AsScriptObject(const ComPtr<IDispatch>& object);

[[nodiscard]] HRESULT IdOf(const ComPtr<IDispatchEx>& object, const std::wstring& member,
                           DISPID& id);

/// `object` with its member `member` called `name`: for names that an engine's language keeps to
/// itself. All other members are the object's own.
[[nodiscard]] ComPtr<IDispatch> WithMemberCalled(const ComPtr<IDispatchEx>& object,
                                                 const std::wstring& name,
                                                 const std::wstring& member);

}  // namespace qortest
