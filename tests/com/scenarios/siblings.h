// The components that controllers create by name, made by a recording host.
#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "frame/host.h"

namespace qortest {

/// While it lives, the siblings' programmatic identifiers give this process the components of
/// `host`. Writes them into the machine's registry and takes them away again.
class OfferedSiblings {
 public:
  explicit OfferedSiblings(qorcred::Host& host);
  ~OfferedSiblings();
  OfferedSiblings(const OfferedSiblings&) = delete;
  OfferedSiblings& operator=(const OfferedSiblings&) = delete;

 private:
  std::vector<DWORD> cookies_;
};

}  // namespace qortest
