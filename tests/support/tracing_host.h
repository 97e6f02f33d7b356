// A host that writes a line for every service that a controller asks for.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "frame/host.h"
#include "tests/support/transcript_text.h"

namespace qortest {

/// Wraps a host, which must outlive it. Components made through it are traced until their last
/// reference goes; conversions of texts and dates are handed on without a line.
class TracingHost final : public qorcred::Host {
 public:
  TracingHost(qorcred::Host& inner, TranscriptSink sink);

  qorcred::ObjectRef CreateComponent(std::string_view programmaticId) override;
  qorcred::MessageButton ShowMessage(std::string_view text, qorcred::MessageStyle style,
                                     std::string_view title) override;
  qorcred::Date Now() override;
  void LetEventsRun() override;
  void ReportFailure(std::string_view operation,
                     const qorcred::RuntimeError& failure) noexcept override;
  std::string DateText(qorcred::Date date) override;
  std::vector<std::uint8_t> TextToAnsi(std::string_view text) override;
  std::string AnsiToText(std::span<const std::uint8_t> bytes) override;

 private:
  qorcred::Host& inner_;
  TranscriptSink sink_;
};

}  // namespace qortest
