// Components that this process offers under a programmatic identifier.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "tests/com/support/variant.h"

namespace qortest {

/// While it lives, creating an object by that name in this process gives what `make` gives; null
/// from there refuses. A name that nobody has registered is entered for as long.
class OfferedComponent {
 public:
  using Maker = std::function<ComPtr<IDispatch>()>;

  OfferedComponent(std::wstring programmaticId, Maker make);
  ~OfferedComponent();
  OfferedComponent(const OfferedComponent&) = delete;
  OfferedComponent& operator=(const OfferedComponent&) = delete;

 private:
  std::wstring programmaticId_;
  bool entered_ = false;
  DWORD cookie_ = 0;
};

}  // namespace qortest
