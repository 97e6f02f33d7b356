#include "host/desks/credential_types.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "credentials/credential_type.h"
#include "frame/text.h"

namespace qorhost {

namespace {

constexpr std::int16_t kReportedOnly = 3;

constexpr std::array kTypes{
    CredentialTypeWords{qorcred::kCorvinCard, "card30", "Corvin 30 Bit card"},
    CredentialTypeWords{qorcred::kStandardCard, "card26", "Standard 26 Bit card"},
    CredentialTypeWords{qorcred::kTransmitter, "transmitter", "Transmitter"},
    CredentialTypeWords{kReportedOnly, "card35", "Corporate 1000 35-Bit Card"}};

bool SameName(std::string_view one, std::string_view other) {
  return qorcred::CompareIgnoringCase(qorcred::ReplaceAll(one, "-", " "),
                                      qorcred::ReplaceAll(other, "-", " ")) == 0;
}

/// What the entered types are called by one of their names.
template <typename NameOf>
std::string Entered(NameOf&& nameOf, std::string_view between, std::string_view last) {
  std::string list;
  for (const CredentialTypeWords& type : EnteredTypes()) {
    if (!list.empty()) {
      list += &type == &EnteredTypes().back() ? last : between;
    }
    list += nameOf(type);
  }
  return list;
}

}  // namespace

std::span<const CredentialTypeWords> CredentialTypes() {
  return kTypes;
}

std::span<const CredentialTypeWords> EnteredTypes() {
  return std::span(kTypes).first(qorcred::kCredentialTypes.size());
}

std::string EnteredWords(std::string_view between, std::string_view last) {
  return Entered([](const CredentialTypeWords& type) { return type.word; }, between, last);
}

std::string EnteredNames(std::string_view between, std::string_view last) {
  return Entered([](const CredentialTypeWords& type) { return TypeNameOf(type.type); }, between,
                 last);
}

const CredentialTypeWords* FindCredentialType(std::span<const CredentialTypeWords> types,
                                              std::string_view given) {
  const auto found =
      std::find_if(types.begin(), types.end(), [given](const CredentialTypeWords& known) {
        return SameName(known.word, given) || SameName(known.reportName, given);
      });
  return found == types.end() ? nullptr : &*found;
}

std::string_view ScreenLabelOf(double type) {
  for (const qorcred::CredentialTypeName& known : qorcred::kCredentialTypes) {
    if (known.type == type) {
      return known.label;
    }
  }
  return {};
}

std::string_view TypeNameOf(double type) {
  const std::string_view label = ScreenLabelOf(type);
  const auto reported = std::find_if(kTypes.begin(), kTypes.end(),
                                     [type](const auto& known) { return known.type == type; });
  return !label.empty() || reported == kTypes.end() ? label : reported->reportName;
}

std::string CardEntry(double type, std::string_view number) {
  const std::string_view label = ScreenLabelOf(type);
  return fmt::format("{}-{}", label.empty() ? "Credential" : label, number);
}

}  // namespace qorhost
