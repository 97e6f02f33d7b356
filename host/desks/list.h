// Lists that answer questions: which rows, in which order, with which columns, how many of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/value.h"
#include "host/desks/report_words.h"
#include "host/desks/session.h"
#include "host/files/table.h"

namespace qorhost {

/// What the questions are called in an InputFault; a condition is report_input::kCondition.
namespace list_input {
inline constexpr std::string_view kSort = "sort";
inline constexpr std::string_view kColumns = "columns";
}  // namespace list_input

/// A field of a list. Its cells are numbers, dates, Booleans or texts as the kind says, or Null;
/// a text field may have several texts in a cell.
struct ListField {
  std::string title;  ///< heads the column for people
  std::string key;    ///< names it for programs; questions may use either
  FieldKind kind = FieldKind::kText;
  TimeOf clock = TimeOf::kCalendar;
  bool isExtra = false;                   ///< a column that is there when it is asked for
  std::vector<std::string> names{};       ///< of schedules: those that a condition may name
  std::vector<std::string> otherNames{};  ///< that questions may use, too
  std::string yesWord{};  ///< of yes or no: what reports say instead, which conditions take, too
  std::string noWord{};
};

struct List {
  std::vector<ListField> fields;
  std::vector<std::vector<qorcred::Value>> rows;
  bool csvHasExtras = false;  ///< so that an import of the same takes it without a loss
  bool latestLast = false;    ///< a limit then means the last rows of those that were not sorted
  std::string title{};        ///< what its rows are: "Tenants"
};

/// What is asked of a list; what is left out changes nothing.
struct ListQuery {
  std::vector<std::string> conditions;  ///< "FIELD OPERATOR VALUE [AND VALUE2]": all must hold
  std::string sort;                     ///< "FIELD,-FIELD": the second downwards
  std::string columns;                  ///< "FIELD,FIELD", in that order
  std::optional<std::size_t> limit;     ///< the most rows

  /// Whether all rows have to be there before it is known which are meant.
  [[nodiscard]] bool LooksAtAll() const { return !conditions.empty() || !sort.empty(); }
};

/// The list as it is asked for, its extra fields gone unless they are. Numbers sort as numbers,
/// dates as dates, texts as people sort them
/// (TextOrder); rows without a value stand last. Raises InputFault.
[[nodiscard]] List Answer(List list, const ListQuery& query);

/// The fields as conditions know them.
[[nodiscard]] std::vector<ReportField> ConditionFields(const std::vector<ListField>& fields);

/// The same list with nothing extra about any field: every column is there.
[[nodiscard]] List WithExtras(List list);
/// The same list with its unit in a field of its own, in front.
[[nodiscard]] List WithUnit(List list, const UnitName& unit);
/// The rows of `more` behind those of `list`, which has the same fields or none yet.
void Append(List& list, List more);

/// As people read it: ShownText() in every cell that needs it.
[[nodiscard]] Table ForPeople(List list);
/// As programs read it: moments as texts with their offset, numbers that are shown with zeros in
/// front as numbers, everything else in its type.
[[nodiscard]] Table ForPrograms(List list);

}  // namespace qorhost
