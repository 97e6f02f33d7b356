#include "tests/host/end_to_end/report_credential_oracle.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace qortest {

namespace {

using qorcred::Null;
using qorcred::Value;

constexpr std::int32_t kTypeField = 0;
constexpr std::int32_t kNameField = 3;
constexpr std::int32_t kTransmitter = 2;

std::string TextOr(const Value& cell) {
  const auto* text = cell.As<std::string>();
  return text == nullptr ? std::string() : *text;
}

std::string NameOf(const TenantRow& tenant) {
  return TextOr(tenant.lastName) + " " + TextOr(tenant.firstName) + " " +
         TextOr(tenant.middleInitial);
}

bool IsRange(const CredentialCondition& condition) {
  return condition.word.find("between") != std::string_view::npos;
}

Truth MatchesNumber(const Value& cell, const CredentialCondition& condition) {
  if (!condition.number) return true;
  const std::optional<int> order = OrderOfNumbers(cell, *condition.number);
  if (IsRange(condition)) {
    if (!condition.secondNumber) return true;
    if (!order) return std::nullopt;
    const bool inside = *order >= 0 && OrderOfNumbers(cell, *condition.secondNumber) <= 0;
    return inside == (condition.operation == 6);
  }
  if (!order) return std::nullopt;
  const bool outcomes[] = {*order == 0, *order != 0, *order > 0,
                           *order >= 0, *order < 0,  *order <= 0};
  return outcomes[condition.operation];
}

Truth MatchesName(const Value& name, const CredentialCondition& condition) {
  const std::u32string text = Plain(condition.text);
  Truth found;
  switch (condition.operation / 2) {
    case 0:
      found = EqualTexts(name, text);
      break;
    case 1:
      found = MatchesText(name, text + U"%");
      break;
    case 2:
      found = MatchesText(name, U"%" + text);
      break;
    default:
      found = MatchesText(name, U"%" + text + U"%");
      break;
  }
  return condition.operation % 2 == 0 ? found : Not(found);
}

// Whether a credential passes the conditions that do not ask for its holder.
bool Passes(const CredentialRow& credential, const std::vector<CredentialCondition>& conditions) {
  return std::all_of(
      conditions.begin(), conditions.end(), [&credential](const CredentialCondition& condition) {
        switch (condition.field) {
          case kTypeField:
            return OrderOfNumbers(credential.type, condition.type) == 0;
          case kNameField:
            return true;
          default:
            return Holds(MatchesNumber(
                condition.field == 1 ? credential.number : credential.facility, condition));
        }
      });
}

Value TypeName(const Value& type) {
  const auto* number = type.As<std::int32_t>();
  if (number == nullptr) return "Corporate 1000 35-Bit Card";
  switch (*number) {
    case 0:
      return "Corvin 30 Bit card";
    case 1:
      return "Standard 26 Bit card";
    case 2:
      return "Transmitter";
    default:
      return "Corporate 1000 35-Bit Card";
  }
}

CredentialLine LineOf(const CredentialRow& credential, const Value& holder,
                      std::int32_t holderRid) {
  // The numbers of transmitters alone are shown, and those of credentials without a type.
  const auto* type = credential.type.As<std::int32_t>();
  const bool shown = type == nullptr || *type == kTransmitter;
  const auto number = [shown](const Value& cell) { return shown ? cell : Value(Null{}); };
  return {TypeName(credential.type),
          credential.number,
          credential.facility,
          number(credential.idCode),
          number(credential.sequence),
          number(credential.button),
          holder,
          credential.type,
          credential.rid,
          holderRid};
}

struct Restriction {
  bool toHeld = false;
  bool toFree = false;
  bool hasName = false;
};

Restriction RestrictionOf(const std::vector<CredentialCondition>& conditions) {
  bool held = false;
  bool free = false;
  Restriction restriction;
  for (const CredentialCondition& condition : conditions) {
    if (condition.field != kNameField) continue;
    const bool positive = condition.operation % 2 == 0;
    restriction.hasName = restriction.hasName || !condition.text.empty();
    held = held || !condition.text.empty() || !positive;
    free = free || (condition.text.empty() && positive);
  }
  restriction.toHeld = held && !free;
  restriction.toFree = free && !held;
  return restriction;
}

// The tenants that hold each credential.
using Holders = std::map<std::int32_t, std::set<const TenantRow*>>;

Holders HoldersIn(const Population& population) {
  Holders holders;
  for (const TenantRow& tenant : population.tenants) {
    for (const Value* held : {&tenant.credential1, &tenant.credential2}) {
      if (const auto* rid = held->As<std::int32_t>()) holders[*rid].insert(&tenant);
    }
  }
  return holders;
}

}  // namespace

std::optional<std::vector<CredentialLine>> CredentialLines(
    const Population& population, std::int32_t unit,
    const std::vector<CredentialCondition>& conditions) {
  const Restriction restriction = RestrictionOf(conditions);
  // A name is asked for where no tenants are.
  if (restriction.hasName && !restriction.toHeld) return std::nullopt;

  Holders holders = HoldersIn(population);
  std::vector<CredentialLine> lines;
  for (const CredentialRow& credential : population.credentials) {
    if (credential.unit != unit || !Passes(credential, conditions)) continue;
    bool isFree = true;
    for (const TenantRow* holder : holders[credential.rid]) {
      const TenantRow& tenant = *holder;
      // Somebody else's tenants hold nothing, as far as free credentials go; residents likewise.
      if (tenant.unit == unit && OrderOfNumbers(tenant.resident, 0) == 0) isFree = false;
      const Value name = NameOf(tenant);
      const bool named = std::all_of(
          conditions.begin(), conditions.end(), [&name](const CredentialCondition& condition) {
            return condition.field != kNameField || condition.text.empty() ||
                   Holds(MatchesName(name, condition));
          });
      if (named && !restriction.toFree) lines.push_back(LineOf(credential, name, tenant.rid));
    }
    if (isFree && !restriction.toHeld) lines.push_back(LineOf(credential, "Unassigned", -1));
  }
  return lines;
}

}  // namespace qortest
