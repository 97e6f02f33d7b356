// A host whose services a trace tells.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "frame/host.h"
#include "trace/tracer.h"

namespace qorcred::trace {

/// Writes what a controller asks the host for. The host must outlive it. Components come back
/// traced until their last reference goes.
class TracedHost final : public Host {
 public:
  TracedHost(Host& inner, std::shared_ptr<Tracer> tracer);

  ObjectRef CreateComponent(std::string_view programmaticId) override;
  MessageButton ShowMessage(std::string_view text, MessageStyle style,
                            std::string_view title) override;
  Date Now() override;
  void LetEventsRun() override;
  void ReportFailure(std::string_view operation, const RuntimeError& failure) noexcept override;
  std::string DateText(Date date) override;
  std::vector<std::uint8_t> TextToAnsi(std::string_view text) override;
  std::string AnsiToText(std::span<const std::uint8_t> bytes) override;

 private:
  Host& inner_;
  std::shared_ptr<Tracer> tracer_;
};

}  // namespace qorcred::trace
