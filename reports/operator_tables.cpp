#include "reports/operator_tables.h"

#include <cstddef>
#include <string_view>

namespace qorcred {

namespace {

// The blanks at the ends of the pieces differ from entry to entry; hosts rely on every one.
constexpr std::string_view kNumeric = "=|<>|>|>=|<|<=|Between ^1 And ^2|Not Between ^1 And ^2";
constexpr std::string_view kDate =
    " = #^# | <> #^# | > #^# | >=#^# | < #^# | <= #^# | Between #^1# And #^2# "
    "| Not Between #^1# And #^2#";
constexpr std::string_view kText =
    "= '^'| <> '^'| Like '^%'| Not Like '^%'| Like '%^' | Not Like '%^' | Like '%^%' "
    "| Not Like '%^%' ";
constexpr std::string_view kField =
    "a.CredentialType|a.PINNo|a.FacilityCode|b.LastName & ' ' & b.FirstName & ' ' & "
    "b.MiddleInitial";

std::vector<std::string> Pieces(std::string_view text) {
  std::vector<std::string> pieces;
  std::size_t start = 0;
  for (std::size_t bar = text.find('|'); bar != std::string_view::npos;
       bar = text.find('|', start)) {
    pieces.emplace_back(text.substr(start, bar - start));
    start = bar + 1;
  }
  pieces.emplace_back(text.substr(start));
  return pieces;
}

}  // namespace

const OperatorTables& FilledOperatorTables() {
  static const OperatorTables tables{.numeric = Pieces(kNumeric),
                                     .date = Pieces(kDate),
                                     .text = Pieces(kText),
                                     .field = Pieces(kField)};
  return tables;
}

const OperatorTables& EmptyOperatorTables() {
  static const OperatorTables tables;
  return tables;
}

}  // namespace qorcred
