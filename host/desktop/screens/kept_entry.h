// What a person entered into a screen, kept while the screen is filled again.
#pragma once

#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include "host/screens/screen_model.h"

namespace qorhost {

/// Texts, dates, numbers and states of some controls; of lists the entry that is selected, found
/// again by its number. What the filled screen does not take any more, it leaves out.
class KeptEntry {
 public:
  /// Keeps what the controls with these names hold.
  KeptEntry(ScreenModel& screen, std::span<const std::string_view> names);

  /// Enters it into a screen with these controls, perhaps another one.
  void PutInto(ScreenModel& screen) const;

 private:
  std::vector<std::function<void(ScreenModel& screen)>> entries_;
};

}  // namespace qorhost
