// The screens of the program: a line for each.
#pragma once

#include <memory>
#include <span>

#include "host/desktop/screens/screen_page.h"

namespace qorhost {

struct ScreenEntry {
  const char* key;    ///< names it in the settings; never changes
  const char* title;  ///< in English, translated in the context "Screens"
  const char* shortcut;
  bool needsUnit;  ///< whether it shows one unit, not the whole store
  /// Opens it for the workplace's unit; raises what the desk raises.
  std::unique_ptr<ScreenPage> (*make)(Workplace& place);
};

/// In the order in which they are offered.
[[nodiscard]] std::span<const ScreenEntry> Screens();

/// Its title in the language of the program.
[[nodiscard]] QString TitleOf(const ScreenEntry& screen);

}  // namespace qorhost
