// Threads with apartments of their own, and what they call in other apartments.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "tests/com/support/variant.h"

namespace qortest {

/// Runs `body` in a new thread whose apartment is of that kind (COINIT_...). The calling thread's
/// apartment, a single-threaded one, answers calls until the other is gone. What is found wrong in
/// `body` is to be checked afterwards: tests fail in their own thread only.
[[nodiscard]] HRESULT RunInApartment(DWORD kind, const std::function<void()>& body);

/// Carries one interface from this apartment into another: in a stream, or by the process's table.
class Passage {
 public:
  Passage(bool byTable, IDispatch* object, REFIID iid);
  ~Passage();
  Passage(const Passage&) = delete;
  Passage& operator=(const Passage&) = delete;

  [[nodiscard]] HRESULT sent() const { return sent_; }
  /// Once, in the other apartment.
  [[nodiscard]] HRESULT Receive(ComPtr<IDispatch>& proxy);

 private:
  IID iid_;
  HRESULT sent_ = E_FAIL;
  LPSTREAM stream_ = nullptr;
  ComPtr<IGlobalInterfaceTable> table_;
  DWORD cookie_ = 0;
};

/// Whether it stands for an object of another apartment: only proxies have the interface asked for.
[[nodiscard]] bool IsProxy(IUnknown* object);

/// What a call gave, for the test's own thread to look at.
struct Answer {
  HRESULT code = E_UNEXPECTED;
  Variant result;
  HRESULT raised = S_OK;  ///< EXCEPINFO's code
};

/// A call with one argument; a property is read without it.
[[nodiscard]] Answer Call(IDispatch* object, const std::wstring& name, WORD flags,
                          Variant argument);

/// Lets a controller hand out the text "500": one of a screen decodes it, one of a report keeps it.
[[nodiscard]] Answer TextThrough(IDispatch* object);

}  // namespace qortest
