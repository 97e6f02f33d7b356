// Components as compilers make them: their dispatch comes from a description of their methods'
// types, and the system converts every argument to what is declared.
#pragma once

#include <windows.h>

#include <string_view>

#include "com/ownership.h"
#include "frame/object.h"

namespace qortest {

/// A component by programmatic identifier, with every parameter that can be declared so declared by
/// reference, and `component` behind it. As the system's own conversion goes, an argument by
/// reference has to have the declared type; one by value is converted.
[[nodiscard]] qorcred::com::ComPtr<IDispatch> AsTypedComponent(std::string_view programmaticId,
                                                               const qorcred::ObjectRef& component);

}  // namespace qortest
