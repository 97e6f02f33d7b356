// Copies a store, or units of it, into another one: from files to servers and back.
#pragma once

#include <filesystem>
#include <string_view>
#include <utility>
#include <vector>

#include "host/desks/copied_units.h"
#include "host/desks/progress.h"
#include "host/desks/trial.h"
#include "host/store/patience.h"
#include "host/store/time_stamp.h"
#include "host/store/unit_of_work.h"

namespace qorhost {

struct CopyOrder {
  std::filesystem::path from;
  std::filesystem::path to;  ///< is made where there is none
  UnitKeys units;            ///< none: all that the store holds
  Clock clock;
  Author author;  ///< signs what is stored
  Patience patience;
  Trial trial = Trial::kNo;
  Progress progress;
};

struct StoreCopy {
  bool isNewStore = false;  ///< there was none
  bool isWhole = false;     ///< identities and history went along
  CopiedUnits copied;
};

/// A whole store that comes into none, or into a new one, keeps its identities and its history;
/// else CopyUnits() copies the units. Either is compared before it is stored, and stored whole or
/// not at all. Raises what OpenStoreFile(), PutStore(), CarryStore() and CopyUnits() raise.
StoreCopy CopyStore(const CopyOrder& order);

}  // namespace qorhost
