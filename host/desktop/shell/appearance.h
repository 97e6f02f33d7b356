// How the program looks: light or dark, and how large its text is.
#pragma once

#include <QApplication>
#include <QPalette>

namespace qorhost {

enum class Theme : int { kLight, kDark };

inline constexpr int kUsualTextPercent = 100;
inline constexpr int kLargestTextPercent = 200;

struct Appearance {
  Theme theme = Theme::kLight;
  int textPercent = kUsualTextPercent;  ///< of the system's, 100 to 200
};

[[nodiscard]] QPalette PaletteOf(Theme theme);

/// Gives all windows this look, on the Fusion style. The first call notes the system's font, from
/// which sizes are taken.
void Apply(const Appearance& appearance);

}  // namespace qorhost
