// The surroundings of controllers that live in a Windows host.
#pragma once

#include "frame/host.h"

namespace qorcred::com {

/// Components come from the system by ProgID, message boxes are the system's modal ones and belong
/// to the thread's active window, dates have the user's default form, and the ANSI code page is the
/// system's. Trapped failures go to the debugger's output. Keeps no state.
class WindowsHost final : public Host {
 public:
  ObjectRef CreateComponent(std::string_view programmaticId) override;
  MessageButton ShowMessage(std::string_view text, MessageStyle style,
                            std::string_view title) override;
  Date Now() override;
  void LetEventsRun() override;
  void ReportFailure(std::string_view operation, const RuntimeError& failure) noexcept override;
  std::string DateText(Date date) override;
  std::vector<std::uint8_t> TextToAnsi(std::string_view text) override;
  std::string AnsiToText(std::span<const std::uint8_t> bytes) override;
};

/// The one that all controllers share.
[[nodiscard]] WindowsHost& TheHost();

}  // namespace qorcred::com
