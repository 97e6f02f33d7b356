// How controllers pass the arguments of their calls on the host's services.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "frame/host.h"
#include "frame/object.h"

namespace qortest {

/// "variable", "value" or "back" (a variable that is read back) for each argument.
[[nodiscard]] std::string PassingWords(const qorcred::Arguments& arguments);

/// A host over another one, which must outlive it. Each different form of a call on a component or
/// a watched object gives one line: `pbGetTenantID variable variable variable`.
class PassingRecord final : public qorcred::Host {
 public:
  explicit PassingRecord(qorcred::Host& inner) : inner_(inner) {}

  [[nodiscard]] qorcred::ObjectRef Watched(qorcred::ObjectRef object) const;
  /// The lines in the order in which they first came, since the last time.
  std::vector<std::string> TakeLines();

  qorcred::ObjectRef CreateComponent(std::string_view programmaticId) override {
    return Watched(inner_.CreateComponent(programmaticId));
  }
  qorcred::MessageButton ShowMessage(std::string_view text, qorcred::MessageStyle style,
                                     std::string_view title) override {
    return inner_.ShowMessage(text, style, title);
  }
  qorcred::Date Now() override { return inner_.Now(); }
  void LetEventsRun() override { inner_.LetEventsRun(); }
  void ReportFailure(std::string_view operation,
                     const qorcred::RuntimeError& failure) noexcept override {
    inner_.ReportFailure(operation, failure);
  }

 private:
  qorcred::Host& inner_;
  std::shared_ptr<std::vector<std::string>> lines_ = std::make_shared<std::vector<std::string>>();
};

/// How each operation of the database manager, and the unit status, are called in both screens.
namespace passing {
inline constexpr const char* kSelect = "ExecuteSelect variable variable back back";
inline constexpr const char* kScalar = "ExecuteScalar variable variable back back";
inline constexpr const char* kUpdate = "ExecuteUpdate variable variable value back back";
inline constexpr const char* kUpdateOfARow =
    "ExecuteUpdate variable variable value back back value value";
inline constexpr const char* kInsert = "ExecuteInsert variable variable value value back back";
inline constexpr const char* kDelete = "ExecuteDelete variable value variable back back";
inline constexpr const char* kQueryDelete = "ExecuteQueryDelete variable variable back back";
inline constexpr const char* kUnitStatus =
    "pbGetUnitStatus variable back variable variable variable back back back variable";
}  // namespace passing

}  // namespace qortest
