#include "host/desks/credential_number.h"

#include <fmt/format.h>

#include "credentials/credential_type.h"
#include "host/desks/credential_fields.h"
#include "host/desks/input_fault.h"
#include "host/desks/whole_number.h"

namespace qorhost {

CredentialNumber::CredentialNumber(std::string_view typed) {
  constexpr NumberRange kTyped{0, qorcred::kHighestCredentialNumber};  // 0 is the controller's
  const auto number = WholeNumberIn(typed, kTyped);
  if (!number) {
    throw InputFault(credential_field::kNewNumber, typed,
                     fmt::format("{{field}} '{{value}}' must be a whole number from 1 to {}, in "
                                 "digits alone",
                                 qorcred::kHighestCredentialNumber));
  }
  value_ = static_cast<std::int32_t>(*number);
}

}  // namespace qorhost
