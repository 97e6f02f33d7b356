#include "host/desks/outcome.h"

#include <fmt/format.h>

#include "host/store/store_error.h"

namespace qorhost {

Ending EndingBy(const std::exception& failure) noexcept {
  const auto* const store = dynamic_cast<const StoreError*>(&failure);
  return store != nullptr && store->fault() == StoreFault::kUnknown ? Ending::kUnknown
                                                                    : Ending::kFailed;
}

std::string StaleReason(StaleCause cause, std::string_view what) {
  switch (cause) {
    case StaleCause::kRowChanged:
      return fmt::format("someone else has changed the {} meanwhile", what);
    case StaleCause::kRowDeleted:
      return fmt::format("someone else has deleted the {} meanwhile", what);
    case StaleCause::kHolderChanged:
      return fmt::format("someone else has changed the holder of the {} meanwhile", what);
    case StaleCause::kTakerChanged:
      return fmt::format("someone else has changed the tenant who was to get the {} meanwhile",
                         what);
    case StaleCause::kNewQuestion:
      return "what someone else has done meanwhile calls for a question";
    case StaleCause::kStoreReplaced:
      return "the store was moved or replaced meanwhile and has to be opened again";
    case StaleCause::kUnknown:
      break;
  }
  return fmt::format("someone else has changed or deleted the {} meanwhile", what);
}

}  // namespace qorhost
