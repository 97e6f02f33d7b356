#include "tests/host/end_to_end/report_code_oracle.h"

#include <algorithm>
#include <set>

namespace qortest {

namespace {

using qorcred::Value;

using Meaning = std::function<Truth(const CodeRow&)>;

constexpr std::int32_t kNameField = 65;
constexpr std::int32_t kRepeatDelayField = 61;

enum class Group : std::uint8_t { kText, kNumber, kYesNo, kSchedule, kDate, kOther, kUnknown };

struct Field {
  std::int32_t id;
  CodeColumn column;
  Group group;
};

constexpr Field kFields[] = {
    {51, CodeColumn::kCode, Group::kNumber},    {52, CodeColumn::kPhone, Group::kText},
    {53, CodeColumn::kExtension, Group::kText}, {54, CodeColumn::kDelay, Group::kNumber},
    {55, CodeColumn::kIsDnd, Group::kYesNo},    {56, CodeColumn::kDndSchedule, Group::kSchedule},
    {57, CodeColumn::kIsCf, Group::kYesNo},     {58, CodeColumn::kCfSchedule, Group::kSchedule},
    {59, CodeColumn::kCfPhone, Group::kText},   {60, CodeColumn::kCfExtension, Group::kText},
    {61, CodeColumn::kCfDelay, Group::kNumber}, {62, CodeColumn::kActive, Group::kYesNo},
    {63, CodeColumn::kStart, Group::kDate},     {64, CodeColumn::kEnd, Group::kDate},
    {65, CodeColumn::kName, Group::kText},      {66, CodeColumn::kShowName, Group::kOther},
    {67, CodeColumn::kShowCode, Group::kOther}, {68, CodeColumn::kState, Group::kOther},
    {80, CodeColumn::kOldCode, Group::kOther},
};

Field FieldOf(std::int32_t id) {
  for (const Field& field : kFields) {
    if (field.id == id) return field;
  }
  return {id, CodeColumn::kRid, Group::kUnknown};
}

// Numbers of rows that a NOT IN or IN looks through, with the Nulls among them.
struct NumberSet {
  std::set<double> numbers;
  bool hasNull = false;

  void Add(const Value& cell) {
    const std::optional<double> number = NumberIn(cell);
    hasNull = hasNull || !number;
    if (number) numbers.insert(*number);
  }
  // A Null is in no set and out of none but the empty one; a text that is no number is out of all.
  [[nodiscard]] Truth Has(const Value& cell) const {
    if (numbers.empty() && !hasNull) return false;
    if (IsNull(cell)) return std::nullopt;
    const std::optional<double> number = NumberIn(cell);
    if (number && numbers.count(*number) != 0) return true;
    return hasNull ? Truth() : Truth(false);
  }
};

bool IsEmpty(const Value& cell) {
  return Holds(EqualTexts(cell, U""));
}

std::u32string Pattern(std::int32_t operation, const std::u32string& text) {
  switch (operation / 2) {
    case 1:
      return text + U"%";
    case 2:
      return U"%" + text;
    default:
      return U"%" + text + U"%";
  }
}

class Oracle {
 public:
  Oracle(const Population& population, std::int32_t unit) : population_(population), unit_(unit) {}

  // Null pointer when the condition adds nothing; `refused` when the store must refuse it.
  [[nodiscard]] Meaning MeaningOf(const CodeCondition& condition, bool& refused) const {
    const Field field = FieldOf(condition.field);
    const std::int32_t operation = condition.operation;
    switch (field.group) {
      case Group::kText:
        if (condition.field == kNameField && operation == 7) return BySchedule(field, condition, 7);
        return ByText(field, condition, Plain(condition.text));
      case Group::kNumber:
        if (condition.field == kRepeatDelayField && operation >= 2) {
          return ByText(field, condition, Plain(condition.number ? condition.digits : "NULL"));
        }
        return ByNumber(field, condition);
      case Group::kYesNo:
        return ByAnswer(field, condition);
      case Group::kSchedule:
        return BySchedule(field, condition, operation);
      case Group::kDate:
        return ByDate(field, condition);
      case Group::kOther:
        if (operation == 3 && condition.field <= 69) return BySchedule(field, condition, 2);
        return operation < 2 ? ByPlainEquality(field, condition) : nullptr;
      case Group::kUnknown:
        refused = operation < 2 || (operation == 3 && condition.field == 69);
        return nullptr;
    }
    return nullptr;
  }

 private:
  // Rows of the unit whose codes are not among those of the rows that `found` holds for.
  [[nodiscard]] Meaning ButCodesOf(const Meaning& found) const {
    NumberSet codes;
    for (const CodeRow& row : population_.codes) {
      if (row.unit == unit_ && Holds(found(row))) codes.Add(row[CodeColumn::kCode]);
    }
    return [codes](const CodeRow& row) { return Not(codes.Has(row[CodeColumn::kCode])); };
  }

  [[nodiscard]] Meaning ByText(const Field& field, const CodeCondition& condition,
                               const std::u32string& text) const {
    const CodeColumn column = field.column;
    const std::int32_t operation = condition.operation;
    if (text.empty() && operation != 1) {
      const bool wantsEmpty = operation % 2 == 0;
      return [column, wantsEmpty](const CodeRow& row) -> Truth {
        return wantsEmpty ? IsNull(row[column]) || IsEmpty(row[column]) : !IsNull(row[column]);
      };
    }
    if (operation < 2) {
      return [column, text, operation](const CodeRow& row) {
        const Truth equal = EqualTexts(row[column], text);
        return operation == 0 ? equal : Not(equal);
      };
    }
    const std::u32string pattern = Pattern(operation, text);
    const Meaning matches = [column, pattern](const CodeRow& row) {
      return MatchesText(row[column], pattern);
    };
    if (operation == 7) return [matches](const CodeRow& row) { return Not(matches(row)); };
    return operation % 2 == 0 ? matches : ButCodesOf(matches);
  }

  [[nodiscard]] static Meaning ByNumber(const Field& field, const CodeCondition& condition) {
    const CodeColumn column = field.column;
    const std::int32_t operation = condition.operation;
    if (operation > 5) return nullptr;  // a range of numbers
    if (!condition.number) {
      return [column, operation](const CodeRow& row) -> Truth {
        if (operation > 1) return std::nullopt;  // nothing lies above or below Null
        return IsNull(row[column]) == (operation == 0);
      };
    }
    return [column, operation, number = *condition.number](const CodeRow& row) -> Truth {
      const std::optional<int> order = OrderOfNumbers(row[column], number);
      if (!order) return std::nullopt;
      const bool outcomes[] = {*order == 0, *order != 0, *order > 0,
                               *order >= 0, *order < 0,  *order <= 0};
      return outcomes[operation];
    };
  }

  [[nodiscard]] static Meaning ByAnswer(const Field& field, const CodeCondition& condition) {
    if (condition.operation > 1) return nullptr;
    return [column = field.column,
            wanted = condition.checked == (condition.operation == 0)](const CodeRow& row) -> Truth {
      const auto* flag = row[column].As<bool>();
      return flag == nullptr ? Truth() : Truth(*flag == wanted);
    };
  }

  [[nodiscard]] Meaning BySchedule(const Field& field, const CodeCondition& condition,
                                   std::int32_t operation) const {
    const std::u32string text = Plain(condition.text);
    const std::u32string pattern = Pattern(operation, text);
    NumberSet ids;
    for (const ScheduleRow& schedule : population_.schedules) {
      const Truth named =
          operation < 2 ? EqualTexts(schedule.name, text) : MatchesText(schedule.name, pattern);
      if (schedule.unit == unit_ && Holds(named)) ids.Add(schedule.id);
    }
    return [column = field.column, ids, operation](const CodeRow& row) {
      const Truth has = ids.Has(row[column]);
      return operation % 2 == 0 ? has : Not(has);
    };
  }

  [[nodiscard]] Meaning ByDate(const Field& field, const CodeCondition& condition) const {
    const CodeColumn column = field.column;
    const std::int32_t operation = condition.operation;
    const std::int64_t from = DayNumber(condition.from);
    const std::int64_t to = DayNumber(condition.to);
    if (operation < 2) {
      // A missing date is another day than every day.
      return [column, from, operation](const CodeRow& row) -> Truth {
        const auto* date = row[column].As<qorcred::Date>();
        return (date != nullptr && DayNumber(*date) == from) == (operation == 0);
      };
    }
    const Meaning inside = [column, from, to, operation](const CodeRow& row) -> Truth {
      const auto* date = row[column].As<qorcred::Date>();
      if (date == nullptr) return std::nullopt;
      const std::int64_t day = DayNumber(*date);
      const bool outcomes[] = {day > from, day >= from, day < from, day <= from};
      return operation < 6 ? outcomes[operation - 2] : day >= from && day <= to;
    };
    return operation == 7 ? ButCodesOf(inside) : inside;
  }

  // Fields that the report knows only by their column: a text beside a number or a Boolean.
  [[nodiscard]] static Meaning ByPlainEquality(const Field& field, const CodeCondition& condition) {
    const CodeColumn column = field.column;
    const std::optional<double> number = NumberOfText(
        condition.text, field.column != CodeColumn::kOldCode && field.column != CodeColumn::kState);
    if (condition.operation == 0 && condition.text.empty()) {
      return [column](const CodeRow& row) -> Truth { return IsNull(row[column]); };
    }
    return [column, number, operation = condition.operation](const CodeRow& row) -> Truth {
      if (IsNull(row[column])) return std::nullopt;
      const bool equal = number && OrderOfNumbers(row[column], *number) == 0;
      return equal == (operation == 0);
    };
  }

  [[nodiscard]] static std::optional<double> NumberOfText(const std::string& text, bool isBoolean) {
    const std::u32string word = Plain(text);
    if (isBoolean && (word == U"yes" || word == U"true")) return -1.0;
    if (isBoolean && (word == U"no" || word == U"false")) return 0.0;
    if (text == "-1") return -1.0;
    return NumberIn(Value(text));
  }

  const Population& population_;
  std::int32_t unit_;
};

}  // namespace

std::optional<std::vector<const CodeRow*>> SelectedCodes(
    const Population& population, std::int32_t unit, const std::vector<CodeCondition>& conditions) {
  const Oracle oracle(population, unit);
  std::vector<Meaning> meanings;
  bool refused = false;
  for (const CodeCondition& condition : conditions) {
    bool refusedHere = false;
    if (Meaning meaning = oracle.MeaningOf(condition, refusedHere)) meanings.push_back(meaning);
    refused = refused || refusedHere;
  }
  if (refused) return std::nullopt;

  std::vector<const CodeRow*> selected;
  for (const CodeRow& row : population.codes) {
    const std::optional<int> order = OrderOfNumbers(row[CodeColumn::kCode], 0);
    const bool holds = row.unit == unit && order && *order >= 0 &&
                       std::all_of(meanings.begin(), meanings.end(),
                                   [&row](const Meaning& meaning) { return Holds(meaning(row)); });
    if (holds) selected.push_back(&row);
  }
  return selected;
}

}  // namespace qortest
