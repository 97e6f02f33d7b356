// A controller of the component for which a client holds one reference and not more.
#pragma once

#include <windows.h>

#include <string_view>

#include "frame/object.h"

namespace qortest {

/// Calls the component without a reference of its own for the time of the call, as clients may.
class BareController final : public qorcred::Object {
 public:
  /// Creates an object of a registered class; raises kCannotCreateComponent when that fails.
  explicit BareController(const wchar_t* programmaticId);
  ~BareController() override { Release(); }
  BareController(const BareController&) = delete;
  BareController& operator=(const BareController&) = delete;

  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;

  /// Gives the client's only reference back, also from inside a call.
  void Release();
  [[nodiscard]] IDispatch* get() const { return object_; }

 private:
  IDispatch* object_ = nullptr;
};

}  // namespace qortest
