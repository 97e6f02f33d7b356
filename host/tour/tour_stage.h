// What every part of the tour works with.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/desks/session.h"
#include "host/tour/tour_guide.h"

namespace qorhost {

/// The guide who tells and the store that is shown.
struct TourStage {
  TourGuide& guide;
  DeskSession& session;

  /// Tells a unit's name, type and codes in use.
  void ShowUnit(std::int32_t unit) const;
  /// A message that contains `expected` must have been shown since the last look.
  void ExpectMessage(std::string_view expected) const;
};

/// The credential screen: entries refused and saved, assignments, renumberings, deletions.
void TourCredentials(const TourStage& stage);
/// The directory-code screen, and the merge with a unit.
void TourDirCodes(const TourStage& stage);
/// Both reports, and a deletion from one.
void TourReports(const TourStage& stage);

}  // namespace qorhost
