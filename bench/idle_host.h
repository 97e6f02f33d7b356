// A host that does nothing: what is left of a save's time is the library's own.
#pragma once

#include <cstdint>
#include <memory>

#include "frame/host.h"

namespace qorbench {

/// Counts what the idle database manager was asked for.
struct IdleCounts {
  std::int32_t inserts = 0;
  std::uint64_t statementBytes = 0;
};

/// Its manager finds no rows but the capacity, answers each insert with the next identity and looks
/// at no statement. The unit seems to hold -32768 codes, so that a range of 65535 fits the 16-bit
/// arithmetic of the capacity. Message boxes and failures end the program.
class IdleHost final : public qorcred::Host {
 public:
  IdleHost();

  qorcred::ObjectRef CreateComponent(std::string_view programmaticId) override;
  qorcred::MessageButton ShowMessage(std::string_view text, qorcred::MessageStyle style,
                                     std::string_view title) override;
  qorcred::Date Now() override { return {}; }
  void LetEventsRun() override {}
  void ReportFailure(std::string_view operation,
                     const qorcred::RuntimeError& failure) noexcept override;

  [[nodiscard]] const IdleCounts& counts() const { return *counts_; }

 private:
  std::shared_ptr<IdleCounts> counts_;
};

/// A connection whose transactions do nothing.
[[nodiscard]] qorcred::ObjectRef IdleConnection();

}  // namespace qorbench
