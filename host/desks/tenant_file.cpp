#include "host/desks/tenant_file.h"

#include <algorithm>
#include <array>

#include "frame/text.h"
#include "host/desks/credential_types.h"

namespace qorhost {

namespace {

// The columns by their bare names.
namespace file_column = tenant_file_column;

constexpr std::array<ImportColumn, file_column::kCode> kOwnColumns{{
    {"Tenant ID", false, "not looked at, but that two lines with different ones are two people"},
    {"Name", false, "the whole name, as 'Tanaka, Xenia M' or 'Xenia Tanaka'"},
    {"Last Name", false, "the last name; <Unassigned>: the card or code is nobody's"},
    {"First Name", false, "the first name"},
    {"Initial", false, "the middle initial"},
    {"Name at Unit", false, "empty: first and last name; <None>: none"},
    {"Apartment", false, "stands for the directory code where that is empty", "Flat"},
    {"Group", false, "a group's RID, zero, or empty for zero"},
    {"Active", false, "yes or no; empty: yes with a period"},
    {"Start", false,
     "first day, as 2026-12-31 or 31 Dec 2026; empty: none; without the column: the unit's own"},
    {"End", false, "last day; empty: none; without the column: the unit's own"},
    {"Schedules", false, "those at the four doors with commas between them; empty: Full Access"},
    {"Schedule 1", false, "the schedule at door 1, by id or name; empty: Full Access"},
    {"Schedule 2", false, "at door 2"},
    {"Schedule 3", false, "at door 3"},
    {"Schedule 4", false, "at door 4"},
    {"Resident", false, "yes or no, also empty"},
    {"Card Type", false, {}, "Credential Type"},  // its help names the types
    {"Card Number", false, "the number on a card or transmitter; one that is not stored is issued"},
    {"Facility Code", false, "empty: that of the stored one, or of a new one 0"},
    {"ID Code", false, "of a transmitter"},
    {"Sequence Number", false, "of a transmitter"},
    {"Button Number", false, "of a transmitter"},
    {"Card Door", false, "the door that a card opens, by number or name; none; empty: as it is"},
    {"Card 2 Type", false, "the second one, as above"},
    {"Card 2 Number", false, {}},
    {"Card 2 Facility Code", false, {}},
    {"Card 2 ID Code", false, {}},
    {"Card 2 Sequence Number", false, {}},
    {"Card 2 Button Number", false, {}},
    {"Card 2 Door", false, {}},
}};

}  // namespace

std::span<const ImportColumn> TenantFileColumns() {
  static const std::string kTypes =
      EnteredNames(", ", " or ") + "; also " + EnteredWords(", ", ", ");
  static const auto kColumns = [] {
    std::array<ImportColumn, file_column::kCount> columns{};
    std::copy(kOwnColumns.begin(), kOwnColumns.end(), columns.begin());
    columns[file_column::kCard1].help = kTypes;
    const auto codes = DirCodeColumns();
    std::copy(codes.begin(), codes.end(), columns.begin() + file_column::kCode);
    constexpr std::string_view kEntry =
        "a stored card or transmitter as lists call it, as Transmitter-301";
    columns[file_column::kEntry1] = {"Card 1", false, kEntry};
    columns[file_column::kEntry2] = {"Card 2", false, kEntry};
    columns[file_column::kRid] = {"RID", false, {}, {}, true};
    columns[file_column::kUnit] = {"Unit", false, {}, {}, true};
    columns[file_column::kCardNumbers] = {"Card", false, {}, {}, true};
    const std::span code(columns.begin() + file_column::kCode, dir_code_column::kCount);
    // A tenant's line needs no code, and codes are shared: the first line says what a code has.
    for (ImportColumn& one : code) {
      one.needed = false;
    }
    code[dir_code_column::kCode].help =
        "the code that a visitor dials; one that is not stored is added";
    code[dir_code_column::kPhone].alias = "Phone";
    code[dir_code_column::kDisplayName].help =
        "the name that the unit shows; without the column: the tenant's name at the unit";
    return columns;
  }();
  return kColumns;
}

bool SaysNobody(std::string_view cell) {
  const std::string_view bare = kNobody.substr(1, kNobody.size() - 2);
  return qorcred::CompareIgnoringCase(cell, kNobody) == 0 ||
         qorcred::CompareIgnoringCase(cell, bare) == 0;
}

}  // namespace qorhost
