// Counts the calls that reach the host and makes a chosen one fail.
#pragma once

#include <cstddef>
#include <exception>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "frame/object.h"

namespace qortest {

/// Every call on the host or one of its objects passes here before it does anything.
class FaultGate {
 public:
  /// The n-th call from now on fails (1 is the next one).
  void FailAt(std::size_t n);
  /// The next call whose description starts with `description` fails.
  void FailOn(std::string description);
  /// The n-th call from now on does `happening` before anything else; what that raises, it raises.
  void DoAt(std::size_t n, std::function<void()> happening);
  /// The failing call raises this instead of kApplicationDefined "Injected failure".
  void Raise(std::exception_ptr failure) { failure_ = std::move(failure); }
  /// No call fails, and counting starts again.
  void Reset();

  /// Raises when this is the call to fail.
  void Pass(std::string_view description);

  [[nodiscard]] std::size_t calls() const { return calls_; }
  /// The call that failed; empty when none did.
  [[nodiscard]] const std::string& failed() const { return failed_; }

 private:
  std::size_t calls_ = 0;
  std::size_t failAt_ = 0;
  std::string failOn_;
  std::string failed_;
  std::exception_ptr failure_;
  std::function<void()> happening_;
};

/// A screen or control behind the gate; what comes back from it stands behind the gate as well.
/// Descriptions read `cboDoor.AddItem`, `txtNumber.Text=` for a put, `gstrTag` for a variable.
class GatedObject final : public qorcred::Object {
 public:
  GatedObject(std::string name, qorcred::ObjectRef inner, FaultGate& gate);

  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;

 private:
  std::string name_;
  qorcred::ObjectRef inner_;
  FaultGate& gate_;
};

}  // namespace qortest
