// The message boxes of the controllers: one title, three styles.
#pragma once

#include <string_view>

#include "frame/host.h"
#include "frame/schema.h"

namespace qorcred {

/// Information icon: a notice, a refused entry, a duplicate.
inline void Notify(Host& host, std::string_view text) {
  host.ShowMessage(text, MessageStyle::kNotice, kMessageTitle);
}

/// Exclamation icon: refused input.
inline void Refuse(Host& host, std::string_view text) {
  host.ShowMessage(text, MessageStyle::kRefusal, kMessageTitle);
}

/// Exclamation icon with Yes and No; true only for Yes.
[[nodiscard]] inline bool Ask(Host& host, std::string_view text) {
  return host.ShowMessage(text, MessageStyle::kQuestion, kMessageTitle) == MessageButton::kYes;
}

}  // namespace qorcred
