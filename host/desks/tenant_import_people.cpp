#include "host/desks/tenant_import_people.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "frame/convert.h"
#include "frame/text.h"
#include "host/desks/input_fault.h"
#include "host/desks/name_words.h"
#include "host/desks/tenant_fields.h"
#include "host/desks/tenant_file.h"

namespace qorhost {

namespace {

namespace file_column = tenant_file_column;

/// Whether somebody has added the lines up below them.
bool SaysTotal(std::string_view name) {
  constexpr std::array<std::string_view, 10> kWords{"total",       "totals",   "sum",   "count",
                                                    "grand total", "subtotal", "summe", "gesamt",
                                                    "gesamtsumme", "anzahl"};
  name.remove_suffix(name.ends_with(':') ? 1 : 0);
  return std::any_of(kWords.begin(), kWords.end(), [name](std::string_view word) {
    return qorcred::CompareIgnoringCase(name, word) == 0;
  });
}

/// The last word without its dot, when it is one letter.
std::string TakeInitial(std::string_view& names) {
  const std::size_t blank = names.rfind(' ');
  if (blank == std::string_view::npos) {
    return {};
  }
  std::string_view last = names.substr(blank + 1);
  last.remove_suffix(last.ends_with('.') ? 1 : 0);
  if (qorcred::Utf16Length(last) != 1) {
    return {};
  }
  names = qorcred::Trim(names.substr(0, blank));
  return std::string(last);
}

/// "Tanaka, Xenia M" or "Xenia M Tanaka"
LineName Divided(std::string_view whole) {
  LineName name;
  const std::size_t comma = whole.find(',');
  std::string_view given;
  if (comma != std::string_view::npos) {
    name.last = qorcred::Trim(whole.substr(0, comma));
    given = qorcred::Trim(whole.substr(comma + 1));
  } else {
    const std::size_t blank = whole.rfind(' ');
    const bool isOneWord = blank == std::string_view::npos;
    name.last = isOneWord ? whole : whole.substr(blank + 1);
    given = isOneWord ? std::string_view() : qorcred::Trim(whole.substr(0, blank));
  }
  name.initial = TakeInitial(given);
  name.first = given;
  return name;
}

/// Whether the whole name is what lists make of its parts.
bool IsJoinedOf(const LineName& parts, std::string_view whole) {
  TenantRow row;
  row.lastName = parts.last;
  row.firstName = parts.first;
  row.initial = parts.initial;
  return !whole.empty() && row.Name() == whole;
}

std::string KeyOf(std::string_view last, std::string_view first, std::string_view initial) {
  constexpr char kBetween = '\n';
  return Plain(last) + kBetween + Plain(first) + kBetween + Plain(initial);
}

}  // namespace

std::optional<LineName> NameIn(const ImportLine& line, const ImportFile& file) {
  const std::string_view whole = line.Trimmed(file_column::kName);
  const std::string_view last = line.Trimmed(file_column::kLastName);
  const std::string_view heading = file.HeadingOf(
      file.HasColumn(file_column::kName) ? file_column::kName : file_column::kLastName);
  const LineName parts{std::string(last), std::string(line.Trimmed(file_column::kFirstName)),
                       std::string(line.Trimmed(file_column::kInitial))};
  if (!last.empty() && IsJoinedOf(parts, whole)) {
    return parts;  // as a list of tenants has both
  }
  if (!whole.empty() && !last.empty()) {
    throw InputFault(heading, whole,
                     fmt::format("{{field}} '{{value}}' and {} '{}' stand in one line: leave one "
                                 "of them empty",
                                 InReason(file.HeadingOf(file_column::kLastName)), InReason(last)));
  }
  const std::string_view name = whole.empty() ? last : whole;
  if (name.empty()) {
    throw InputFault(heading, "",
                     fmt::format("{{field}} is empty: lists show tenants by it; {} stands for "
                                 "nobody",
                                 kNobody));
  }
  if (SaysNobody(name)) {
    return std::nullopt;
  }
  const bool isAlone = line.Trimmed(file_column::kFirstName).empty();
  if (isAlone && SaysTotal(name)) {
    throw InputFault(heading, name,
                     "{field} '{value}' is no name: the line seems to add the others up");
  }
  if (!whole.empty()) {
    return Divided(whole);
  }
  return parts;
}

std::vector<ColumnField> TenantFields(const ImportFile& file) {
  namespace field = tenant_field;
  const std::size_t lastName =
      file.HasColumn(file_column::kName) ? file_column::kName : file_column::kLastName;
  const std::size_t firstName =
      file.HasColumn(file_column::kFirstName) ? file_column::kFirstName : lastName;
  return {
      {field::kLastName, lastName},
      {field::kFirstName, firstName},
      {field::kInitial, file.HasColumn(file_column::kInitial) ? file_column::kInitial : lastName},
      {field::kNameAtUnit, file_column::kNameAtUnit},
      {field::kGroup, file_column::kGroup},
      {field::kActive, file_column::kActive},
      {field::kStart, file_column::kStart},
      {field::kEnd, file_column::kEnd},
      {field::kSchedules, file_column::kSchedules},
      {field::kDoorSchedules[0], file_column::kSchedule1},
      {field::kDoorSchedules[1], file_column::kSchedule1 + 1},
      {field::kDoorSchedules[2], file_column::kSchedule1 + 2},
      {field::kDoorSchedules[3], file_column::kSchedule1 + 3},
      {field::kResident, file_column::kResident}};
}

std::string KnownTenant::Described() const {
  return line == 0 ? row.NameWithRid() : fmt::format("{} (line {})", row.Name(), line);
}

TenantImportPeople::TenantImportPeople(const std::vector<TenantRow>& tenants,
                                       const TenantLinks& links, std::size_t more) {
  byName_.reserve(tenants.size() + more);
  for (const TenantRow& tenant : tenants) {
    const auto code = links.codes.find(tenant.code);
    Add({tenant, code == links.codes.end() ? -1 : code->second.number, 0, {}});
  }
}

void TenantImportPeople::Add(KnownTenant tenant) {
  const TenantRow& row = tenant.row;
  byName_[KeyOf(row.lastName, row.firstName, row.initial)].push_back(std::move(tenant));
}

TenantImportPeople::Match TenantImportPeople::Find(const LineName& name, double code,
                                                   std::string_view tenantId) {
  Match match;
  const auto known = byName_.find(KeyOf(name.last, name.first, name.initial));
  if (known == byName_.end()) {
    return match;
  }
  for (KnownTenant& one : known->second) {
    const bool wasThere = one.line == 0;
    if (wasThere && tenantId == std::to_string(one.row.tenantId)) {
      return {&one, nullptr, false};
    }
    const bool otherId =
        !wasThere && !tenantId.empty() && !one.tenantId.empty() && tenantId != one.tenantId;
    const bool otherCode = code >= 0 && one.code >= 0 && code != one.code;
    if (otherId || otherCode) {
      match.other = &one;
    } else {
      match.isDoubtful = match.same != nullptr;
      match.same = &one;
    }
  }
  return match;
}

}  // namespace qorhost
