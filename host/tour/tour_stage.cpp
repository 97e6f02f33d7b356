#include "host/tour/tour_stage.h"

#include <fmt/format.h>

#include <string>

#include "frame/text.h"
#include "host/desks/store_overview.h"

namespace qorhost {

void TourStage::ShowUnit(std::int32_t unit) const {
  const UnitStatus status = UnitStatusOf(session, unit);
  guide.Fact("Unit",
             fmt::format("{} \"{}\", {}: {} credentials and {} directory codes", unit, status.name,
                         status.type, status.credentials, status.directoryCodes));
}

void TourStage::ExpectMessage(std::string_view expected) const {
  bool shown = false;
  for (const std::string& message : guide.TakeMessages()) {
    shown = shown || qorcred::Contains(message, expected);
  }
  guide.Expect(shown, fmt::format("the message \"{}\"", expected));
}

}  // namespace qorhost
