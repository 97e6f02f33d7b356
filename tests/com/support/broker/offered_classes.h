// Objects of a test under the programmatic identifiers by which the component creates its siblings.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "com/ownership.h"

namespace qortest {

using qorcred::com::ComPtr;

/// Is told of every creation, before the object is handed out.
using CreationListener = std::function<void(const std::wstring& programmaticId)>;

/// Makes creating a programmatic identifier, in this thread's apartment, give a test's own object.
/// A name that the system does not know is entered for the machine. At its end the classes and the
/// names that it entered are taken back.
class OfferedClasses {
 public:
  explicit OfferedClasses(CreationListener listener) : listener_(std::move(listener)) {}
  ~OfferedClasses();
  OfferedClasses(const OfferedClasses&) = delete;
  OfferedClasses& operator=(const OfferedClasses&) = delete;

  /// From now on creating `programmaticId` gives `object`, in place of what it gave before.
  HRESULT Offer(const std::wstring& programmaticId, IDispatch* object);

 private:
  struct Offered {
    std::wstring programmaticId;
    DWORD cookie;
    bool isNameOurs;
  };

  void Withdraw(const std::wstring& programmaticId);

  CreationListener listener_;
  std::vector<Offered> offered_;
};

}  // namespace qortest
