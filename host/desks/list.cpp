#include "host/desks/list.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <utility>

#include "frame/convert.h"
#include "frame/text.h"
#include "host/desks/input_fault.h"
#include "host/desks/list_condition.h"
#include "host/desks/local_time.h"
#include "host/desks/name_words.h"
#include "host/desks/near_words.h"
#include "host/desks/shown_value.h"
#include "host/unit/unit_code.h"

namespace qorhost {

namespace {

using qorcred::Value;
using Row = std::vector<Value>;

bool IsCalled(const ListField& field, std::string_view name) {
  const auto isName = [name](std::string_view one) {
    return qorcred::CompareIgnoringCase(one, name) == 0;
  };
  return isName(field.key) || isName(field.title) ||
         std::any_of(field.otherNames.begin(), field.otherNames.end(), isName);
}

std::size_t FieldCalled(const std::vector<ListField>& fields, std::string_view name,
                        std::string_view input) {
  const auto found = std::find_if(fields.begin(), fields.end(),
                                  [name](const ListField& field) { return IsCalled(field, name); });
  if (found == fields.end()) {
    std::vector<std::string> keys;
    for (const ListField& field : fields) {
      keys.emplace_back(field.key);
    }
    const std::string meant = MostLike(name, keys);
    throw InputFault(input, name,
                     fmt::format("{{field}}: '{{value}}' is no field of this list{}: {}",
                                 meant.empty() ? "" : fmt::format(", did you mean '{}'?", meant),
                                 InReason(fmt::format("{}", fmt::join(keys, ", ")))));
  }
  return static_cast<std::size_t>(found - fields.begin());
}

/// The parts between commas, without blanks around them.
std::vector<std::string_view> PartsOf(std::string_view text) {
  std::vector<std::string_view> parts;
  while (true) {
    const std::size_t comma = std::min(text.find(','), text.size());
    parts.push_back(qorcred::Trim(text.substr(0, comma)));
    if (comma == text.size()) {
      return parts;
    }
    text.remove_prefix(comma + 1);
  }
}

void Filter(List& list, const std::vector<std::string>& asked) {
  if (asked.empty()) {
    return;
  }
  const std::vector<ReportField> fields = ConditionFields(list.fields);
  std::vector<ListCondition> conditions;
  for (const std::string& condition : asked) {
    conditions.emplace_back(condition, fields);
  }
  std::erase_if(list.rows, [&conditions](const Row& row) {
    return !std::all_of(conditions.begin(), conditions.end(),
                        [&row](const ListCondition& condition) {
                          return condition.IsMetBy(row[condition.field()]);
                        });
  });
}

/// What a cell is sorted by.
struct SortKey {
  enum Rank : std::uint8_t { kNumber, kText, kNothing };
  Rank rank = kNothing;
  double number = 0;
  TextOrder text;
};

SortKey KeyOf(const Value& cell, FieldKind kind) {
  if (const auto* date = cell.As<qorcred::Date>()) {
    return {SortKey::kNumber, date->serial, {}};
  }
  if (const bool* flag = cell.As<bool>()) {
    return {SortKey::kNumber, *flag ? 1.0 : 0.0, {}};
  }
  if (kind == FieldKind::kNumber || kind == FieldKind::kNumberText) {
    if (const auto number = NumberOf(cell)) {
      return {SortKey::kNumber, *number, {}};
    }
  }
  const std::string text = ShownText(cell);
  return text.empty() ? SortKey() : SortKey{SortKey::kText, 0, TextOrder(text)};
}

/// Negative, zero or positive; what there is stands before what is missing in either direction.
int Compare(const SortKey& one, const SortKey& other, bool downwards) {
  if (one.rank != other.rank) {
    const bool isMissing = one.rank == SortKey::kNothing || other.rank == SortKey::kNothing;
    return (one.rank < other.rank) == (isMissing || !downwards) ? -1 : 1;
  }
  if (one.number != other.number) {
    return (one.number < other.number) == downwards ? 1 : -1;
  }
  if (one.text == other.text) {
    return 0;
  }
  return (one.text < other.text) == downwards ? 1 : -1;
}

void Sort(List& list, std::string_view asked) {
  if (asked.empty()) {
    return;
  }
  struct Order {
    std::vector<SortKey> keys;  // of the rows
    bool downwards = false;
  };
  std::vector<Order> orders;
  for (std::string_view part : PartsOf(asked)) {
    Order& order = orders.emplace_back();
    order.downwards = part.starts_with('-');
    part.remove_prefix(order.downwards ? 1 : 0);
    const std::size_t field = FieldCalled(list.fields, qorcred::Trim(part), list_input::kSort);
    order.keys.reserve(list.rows.size());
    for (const Row& row : list.rows) {
      order.keys.push_back(KeyOf(row[field], list.fields[field].kind));
    }
  }
  std::vector<std::size_t> places(list.rows.size());
  std::iota(places.begin(), places.end(), std::size_t{0});
  std::stable_sort(places.begin(), places.end(), [&orders](std::size_t one, std::size_t other) {
    for (const Order& order : orders) {
      const int compared = Compare(order.keys[one], order.keys[other], order.downwards);
      if (compared != 0) {
        return compared < 0;
      }
    }
    return false;
  });
  std::vector<Row> sorted;
  sorted.reserve(list.rows.size());
  for (const std::size_t place : places) {
    sorted.push_back(std::move(list.rows[place]));
  }
  list.rows = std::move(sorted);
}

void Limit(List& list, const ListQuery& query) {
  if (!query.limit || *query.limit >= list.rows.size()) {
    return;
  }
  const auto most = static_cast<std::ptrdiff_t>(*query.limit);
  if (list.latestLast && query.sort.empty()) {
    list.rows.erase(list.rows.begin(), list.rows.end() - most);
  } else {
    list.rows.erase(list.rows.begin() + most, list.rows.end());
  }
}

std::vector<std::size_t> ColumnsMeant(const List& list, std::string_view asked) {
  std::vector<std::size_t> columns;
  if (!asked.empty()) {
    for (const std::string_view part : PartsOf(asked)) {
      columns.push_back(FieldCalled(list.fields, part, list_input::kColumns));
    }
    return columns;
  }
  for (std::size_t at = 0; at < list.fields.size(); ++at) {
    if (!list.fields[at].isExtra) {
      columns.push_back(at);
    }
  }
  return columns;
}

void Choose(List& list, const std::vector<std::size_t>& columns) {
  std::vector<ListField> fields;
  for (const std::size_t column : columns) {
    fields.push_back(list.fields[column]);
    fields.back().isExtra = false;
  }
  list.fields = std::move(fields);
  for (Row& row : list.rows) {
    Row chosen;
    chosen.reserve(columns.size());
    for (const std::size_t column : columns) {
      chosen.push_back(row[column]);
    }
    row = std::move(chosen);
  }
}

/// A moment with its offset; any other cell as it is.
Value WithItsOffset(Value cell, TimeOf clock) {
  const auto* date = cell.As<qorcred::Date>();
  if (date == nullptr || clock == TimeOf::kCalendar) {
    return cell;
  }
  return clock == TimeOf::kUtc ? WithUtcOffset(*date) : WithOffset(cell);
}

Value CellForPeople(Value cell, const ListField& field) {
  return ShownCell(WithItsOffset(std::move(cell), field.clock));
}

Value CellForPrograms(Value cell, const ListField& field) {
  if (field.kind == FieldKind::kNumber && cell.As<std::string>() != nullptr) {
    const std::optional<double> number = NumberOf(cell);
    return number ? Value(*number) : std::move(cell);
  }
  return WithItsOffset(std::move(cell), field.clock);
}

Table TableOf(List list, Value (*shown)(Value, const ListField&)) {
  Table table;
  for (const ListField& field : list.fields) {
    table.columns.push_back({field.title, field.key});
  }
  table.rows = std::move(list.rows);
  for (Row& row : table.rows) {
    for (std::size_t at = 0; at < row.size(); ++at) {
      row[at] = shown(std::move(row[at]), list.fields[at]);
    }
  }
  return table;
}

}  // namespace

List Answer(List list, const ListQuery& query) {
  // What cannot be shown is told whatever the rows are.
  const std::vector<std::size_t> columns = ColumnsMeant(list, query.columns);
  Filter(list, query.conditions);
  Sort(list, query.sort);
  Limit(list, query);
  Choose(list, columns);
  return list;
}

std::vector<ReportField> ConditionFields(const std::vector<ListField>& fields) {
  std::vector<ReportField> known;
  for (const ListField& field : fields) {
    ReportField& one = known.emplace_back();
    one.name = field.key;
    one.alsoCalled = field.otherNames;
    one.alsoCalled.push_back(field.title);
    one.kind = field.kind;
    one.mayBeUnset = true;
    one.takesTimes = true;
    one.clock = field.clock;
    one.range = {0, kLargestUnitCode};
    one.names = field.names;
    one.yesWord = field.yesWord;
    one.noWord = field.noWord;
  }
  return known;
}

List WithExtras(List list) {
  for (ListField& field : list.fields) {
    field.isExtra = false;
  }
  return list;
}

List WithUnit(List list, const UnitName& unit) {
  list.fields.insert(list.fields.begin(), ListField{"Unit", "unit", FieldKind::kNumber});
  for (Row& row : list.rows) {
    row.insert(row.begin(), Value(unit.key));
  }
  return list;
}

void Append(List& list, List more) {
  if (list.fields.empty()) {
    list = std::move(more);
    return;
  }
  for (std::size_t at = 0; at < list.fields.size(); ++at) {
    std::vector<std::string>& names = list.fields[at].names;
    names.insert(names.end(), more.fields[at].names.begin(), more.fields[at].names.end());
  }
  list.rows.insert(list.rows.end(), std::make_move_iterator(more.rows.begin()),
                   std::make_move_iterator(more.rows.end()));
}

Table ForPeople(List list) {
  return TableOf(std::move(list), CellForPeople);
}

Table ForPrograms(List list) {
  return TableOf(std::move(list), CellForPrograms);
}

}  // namespace qorhost
