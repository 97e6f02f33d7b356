#include "host/store/method_table.h"

#include <fmt/format.h>

#include <new>

#include "frame/runtime_error.h"
#include "host/dialect/translator.h"
#include "host/store/store_error.h"

namespace qorhost {

using qorcred::ErrorNumber;
using qorcred::RuntimeError;

void RaiseUnknownMember(std::string_view object, std::string_view member) {
  throw RuntimeError(ErrorNumber::kUnknownMember,
                     fmt::format("{} has no method '{}'", object, member));
}

void CheckArgumentCount(std::string_view member, std::size_t count, std::size_t fewest,
                        std::size_t most) {
  if (count >= fewest && count <= most) {
    return;
  }
  const std::string wanted =
      fewest == most ? fmt::format("{}", most) : fmt::format("{} to {}", fewest, most);
  throw RuntimeError(ErrorNumber::kWrongArgumentCount,
                     fmt::format("{} takes {} arguments and was given {}", member, wanted, count));
}

void RaiseAsRuntimeError() {
  try {
    throw;
  } catch (const RuntimeError&) {
    throw;
  } catch (const StoreError& failure) {
    throw RuntimeError(ErrorNumber::kApplicationDefined, failure.what());
  } catch (const dialect::SqlError& failure) {
    throw RuntimeError(ErrorNumber::kApplicationDefined, failure.what());
  } catch (...) {
    throw qorcred::CurrentFailure();
  }
}

}  // namespace qorhost
