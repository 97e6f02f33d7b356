#include "host/desks/moving_in/settled_cell.h"

namespace qorhost {

std::string_view WordFor(Settlement settlement) {
  switch (settlement) {
    case Settlement::kRefused:
      return "refused";
    case Settlement::kAdjusted:
      return "adjusted";
    case Settlement::kKept:
      return "kept";
  }
  return "";
}

}  // namespace qorhost
