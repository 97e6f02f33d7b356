#include "host/desks/credential_types.h"

#include <algorithm>
#include <array>

#include "credentials/credential_type.h"
#include "frame/text.h"

namespace qorhost {

namespace {

constexpr std::array kTypes{
    CredentialTypeWords{qorcred::kCorvinCard, "card30", "Corvin 30 Bit card"},
    CredentialTypeWords{qorcred::kStandardCard, "card26", "Standard 26 Bit card"},
    CredentialTypeWords{qorcred::kTransmitter, "transmitter", "Transmitter"},
    CredentialTypeWords{kReportedTypesOnly, "card35", "Corporate 1000 35-Bit Card"}};

bool SameName(std::string_view one, std::string_view other) {
  return qorcred::CompareIgnoringCase(qorcred::ReplaceAll(one, "-", " "),
                                      qorcred::ReplaceAll(other, "-", " ")) == 0;
}

}  // namespace

std::span<const CredentialTypeWords> CredentialTypes() {
  return kTypes;
}

const CredentialTypeWords* FindCredentialType(std::string_view given) {
  const auto* const found =
      std::find_if(kTypes.begin(), kTypes.end(), [given](const CredentialTypeWords& known) {
        return SameName(known.word, given) || SameName(known.reportName, given);
      });
  return found == kTypes.end() ? nullptr : &*found;
}

std::string_view ScreenLabelOf(double type) {
  for (const qorcred::CredentialTypeName& known : qorcred::kCredentialTypes) {
    if (known.type == type) {
      return known.label;
    }
  }
  return {};
}

}  // namespace qorhost
