#include "host/desks/tenant_entry.h"

#include <fmt/format.h>

#include <algorithm>

#include "frame/convert.h"
#include "frame/text.h"
#include "host/desks/door_schedules.h"
#include "host/desks/input_fault.h"
#include "host/desks/list_entries.h"
#include "host/desks/row_names.h"
#include "host/desks/shown_value.h"
#include "host/desks/tenant_fields.h"
#include "host/desks/tenant_groups.h"
#include "host/desks/typed_input.h"
#include "host/desks/words.h"

namespace qorhost {

namespace {

/// Without blanks around it; short enough.
std::optional<std::string> ReadName(std::string_view name, const std::optional<std::string>& given,
                                    std::size_t longest) {
  if (!given) {
    return std::nullopt;
  }
  const std::string_view text = qorcred::Trim(TypedText(name, *given));
  const std::size_t length = qorcred::Utf16Length(text);
  if (length > longest) {
    throw InputFault(name, text,
                     fmt::format("{{field}} '{{value}}' has {} characters, and takes {} at most",
                                 length, longest));
  }
  return std::string(text);
}

std::optional<bool> ReadAnswer(std::string_view name, const std::optional<std::string>& given) {
  if (!given) {
    return std::nullopt;
  }
  const std::optional<bool> answer = YesOrNo(qorcred::Trim(*given));
  if (!answer) {
    throw InputFault(name, *given, "{field}: '{value}' is neither yes nor no");
  }
  return answer;
}

std::optional<qorcred::Date> ReadDay(std::string_view name, const std::string& given, bool isEnd) {
  if (SaysNone(given)) {
    return std::nullopt;
  }
  const GivenDate date = ReadDate(name, given);
  if (!isEnd || date.hasTime) {
    return date.date;
  }
  qorcred::CivilTime time = qorcred::ToCivil(date.date);
  time.hour = 23;
  time.minute = 59;
  time.second = 59;
  return qorcred::FromCivil(time);
}

std::int32_t FindCode(const TenantLinks& links, const std::string& given) {
  if (SaysNone(given)) {
    return 0;
  }
  const auto rid = RowNamed(tenant_field::kCode, qorcred::Trim(given));
  const TakenNumber number = NumberTaken(qorcred::Trim(given));
  std::vector<std::int32_t> found;
  for (const auto& [row, code] : links.codes) {
    const bool isMeant = rid ? row == *rid : number.isAll && code.number == *number.value;
    if (code.listed && isMeant) {
      found.push_back(row);
    }
  }
  if (found.empty()) {
    throw InputFault(tenant_field::kCode, given,
                     "{field}: this unit has no directory code '{value}'",
                     InputFault::Kind::kSeeList);
  }
  if (found.size() > 1) {
    std::sort(found.begin(), found.end());
    throw InputFault(tenant_field::kCode, given,
                     fmt::format("{{field}}: {} rows have the directory code '{{value}}': name a "
                                 "row instead (rid:{})",
                                 found.size(), fmt::join(found, ", rid:")));
  }
  return found.front();
}

std::int32_t FindGroup(DeskSession& session, std::int32_t unitKey, const std::string& given) {
  const std::string_view wanted = qorcred::Trim(given);
  const bool isZero = qorcred::CompareIgnoringCase(wanted, "zero") == 0;
  const std::optional<std::int32_t> rid = WholeNumber(wanted);
  std::vector<std::string> names;
  bool hasZero = false;
  for (const TenantGroup& group : ReadTenantGroups(session, unitKey)) {
    if (isZero ? group.isZero : rid == group.rid) {
      return group.rid;
    }
    hasZero = hasZero || group.isZero;
    names.push_back(group.isZero ? fmt::format("{} (zero)", group.rid) : std::to_string(group.rid));
  }
  if (!hasZero && (isZero || rid == kNoGroup)) {
    return kNoGroup;
  }
  throw InputFault(
      tenant_field::kGroup, given,
      fmt::format("{{field}}: '{{value}}' is none of the unit's groups: {}",
                  names.empty() ? "it has none" : fmt::format("{}", fmt::join(names, ", "))));
}

/// The name that a unit shows unless another one is given: it takes no more.
std::string NameAtUnitOf(const TenantRow& row) {
  const std::string name = row.SpokenName();
  return std::string(qorcred::Trim(qorcred::LeftUtf16(name, tenant_bound::kName)));
}

}  // namespace

std::int32_t FindSchedule(const TenantLinks& links, std::string_view field,
                          const std::string& given) {
  const std::string_view wanted = qorcred::Trim(given);
  if (const auto id = WholeNumber(wanted); id && links.offered.contains(std::to_string(*id))) {
    return *id;
  }
  std::vector<std::int32_t> found;
  std::vector<std::string> names;
  for (const auto& [id, name] : links.schedules) {
    if (!links.offered.contains(std::to_string(id))) {
      continue;
    }
    names.push_back(name);
    if (qorcred::CompareIgnoringCase(qorcred::Trim(name), wanted) == 0) {
      found.push_back(id);
    }
  }
  if (found.empty()) {
    throw InputFault(field, given,
                     fmt::format("{{field}}: '{{value}}' is none of the unit's schedules: {}",
                                 InReason(fmt::format("{}", fmt::join(names, ", ")))));
  }
  if (found.size() > 1) {
    throw InputFault(field, given,
                     fmt::format("{{field}}: {} schedules are called '{{value}}': give the id "
                                 "instead ({})",
                                 found.size(), fmt::join(found, ", ")));
  }
  return found.front();
}

void TenantEntry::SetSchedules(const std::string& given) {
  ForEachDoor(tenant_field::kSchedules, given, [this](std::size_t door, std::string_view schedule) {
    if (!schedules[door]) {
      schedules[door] = std::string(schedule);
      scheduleInputs[door] = tenant_field::kSchedules;
    }
  });
}

bool TenantEntry::IsEmpty() const {
  return !lastName && !firstName && !initial && !nameAtUnit && !group && !active && !from && !to &&
         cards.empty() && !code && !resident &&
         std::none_of(schedules.begin(), schedules.end(),
                      [](const auto& schedule) { return schedule.has_value(); });
}

TenantValues::TenantValues(DeskSession& session, std::int32_t unitKey, const TenantEntry& entry,
                           const TenantLinks& links, std::optional<std::vector<std::int32_t>> cards)
    : active_(ReadAnswer(tenant_field::kActive, entry.active)),
      cards_(std::move(cards)),
      resident_(ReadAnswer(tenant_field::kResident, entry.resident)) {
  ReadNames(entry);
  if (entry.from) {
    start_ = ReadDay(tenant_field::kStart, *entry.from, false);
  }
  if (entry.to) {
    end_ = ReadDay(tenant_field::kEnd, *entry.to, true);
  }
  typed_.from = entry.from;
  typed_.to = entry.to;
  ReadLinks(session, unitKey, entry, links);
}

void TenantValues::ReadNames(const TenantEntry& entry) {
  typed_.lastName = ReadName(tenant_field::kLastName, entry.lastName, tenant_bound::kName);
  typed_.firstName = ReadName(tenant_field::kFirstName, entry.firstName, tenant_bound::kName);
  typed_.initial = ReadName(tenant_field::kInitial, entry.initial, tenant_bound::kInitial);
  typed_.nameAtUnit = ReadName(tenant_field::kNameAtUnit, entry.nameAtUnit, tenant_bound::kName);
  if (typed_.lastName && typed_.lastName->empty()) {
    throw InputFault(tenant_field::kLastName, *entry.lastName,
                     "{field} '{value}' is empty: lists show tenants by it");
  }
}

void TenantValues::ReadLinks(DeskSession& session, std::int32_t unitKey, const TenantEntry& entry,
                             const TenantLinks& links) {
  if (entry.group) {
    group_ = FindGroup(session, unitKey, *entry.group);
  }
  for (std::size_t door = 0; door < kTenantDoors; ++door) {
    if (entry.schedules[door]) {
      schedules_[door] = FindSchedule(links, entry.scheduleInputs[door], *entry.schedules[door]);
    }
  }
  if (entry.code) {
    code_ = FindCode(links, *entry.code);
  }
}

/// Those that are kept stay in their slots.
std::array<std::int32_t, kTenantCards> TenantValues::Slots(const TenantRow& before,
                                                           const std::vector<std::int32_t>& cards) {
  std::array<std::int32_t, kTenantCards> slots{};
  const auto isIn = [](const auto& all, std::int32_t rid) {
    return std::find(all.begin(), all.end(), rid) != all.end();
  };
  for (std::size_t slot = 0; slot < kTenantCards; ++slot) {
    if (isIn(cards, before.cards[slot]) && !isIn(slots, before.cards[slot])) {
      slots[slot] = before.cards[slot];
    }
  }
  for (const std::int32_t card : cards) {
    auto* free = std::find(slots.begin(), slots.end(), 0);
    if (!isIn(slots, card) && free != slots.end()) {
      *free = card;
    }
  }
  return slots;
}

TenantRow TenantValues::AppliedTo(const TenantRow& before) const {
  TenantRow row = before;
  row.lastName = typed_.lastName.value_or(row.lastName);
  row.firstName = typed_.firstName.value_or(row.firstName);
  row.initial = typed_.initial.value_or(row.initial);
  const bool isNamed = typed_.lastName || typed_.firstName;
  if (typed_.nameAtUnit) {
    row.nameAtUnit = *typed_.nameAtUnit;
  } else if (isNamed && (row.nameAtUnit.empty() || row.nameAtUnit == NameAtUnitOf(before))) {
    row.nameAtUnit = NameAtUnitOf(row);
  }
  row.group = group_.value_or(row.group);
  row.start = start_.value_or(row.start);
  row.end = end_.value_or(row.end);
  if (start_ || end_) {
    row.active = row.start || row.end;
  }
  row.active = active_.value_or(row.active);
  for (std::size_t door = 0; door < kTenantDoors; ++door) {
    row.schedules[door] = schedules_[door].value_or(row.schedules[door]);
  }
  row.cards = cards_ ? Slots(before, *cards_) : row.cards;
  row.code = code_.value_or(row.code);
  row.resident = resident_.value_or(row.resident);

  if ((start_ || end_) && row.start && row.end &&
      qorcred::SecondsBetween(*row.start, *row.end) < 0) {
    throw InputFault(end_ ? tenant_field::kEnd : tenant_field::kStart,
                     (end_ ? typed_.to : typed_.from).value_or(""),
                     fmt::format("{{field}} '{{value}}': the period of {} would end before it "
                                 "begins, on {}",
                                 InReason(row.Name()), ShownText(*row.start)));
  }
  return row;
}

}  // namespace qorhost
