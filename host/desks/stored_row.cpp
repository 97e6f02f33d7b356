#include "host/desks/stored_row.h"

#include <fmt/format.h>

#include "frame/convert.h"
#include "frame/date.h"
#include "frame/text.h"

namespace qorhost {

namespace {

/// Whether both are the same in the store.
bool AreSame(const qorcred::Value& stored, const qorcred::Value& wanted) {
  if (const auto* flag = wanted.As<bool>()) {
    const auto* storedFlag = stored.As<bool>();
    return storedFlag != nullptr && *storedFlag == *flag;
  }
  const bool isText = wanted.As<std::string>() != nullptr;
  if (!isText && qorcred::IsNumeric(stored) && qorcred::IsNumeric(wanted)) {
    return qorcred::NumericValue(stored) == qorcred::NumericValue(wanted);
  }
  return qorcred::TextOrEmpty(stored) == qorcred::TextOrEmpty(wanted);
}

}  // namespace

std::int32_t StoredNumber(const qorcred::Value& cell) {
  return qorcred::RoundToLong(qorcred::NumericValue(cell));
}

std::string LiteralOf(const qorcred::Value& value) {
  if (value.As<qorcred::Null>() != nullptr) {
    return "NULL";
  }
  if (const auto* date = value.As<qorcred::Date>()) {
    const qorcred::CivilTime civil = qorcred::ToCivil(*date);
    return fmt::format("#{}/{}/{} {:02}:{:02}:{:02}#", civil.month, civil.day, civil.year,
                       civil.hour, civil.minute, civil.second);
  }
  if (const auto* flag = value.As<bool>()) {
    return *flag ? "True" : "False";
  }
  if (const auto* text = value.As<std::string>()) {
    return fmt::format("'{}'", qorcred::ReplaceAll(*text, "'", "''"));
  }
  return qorcred::TextOrEmpty(value);
}

std::size_t WriteChanged(DeskSession& session, std::string_view table, std::string_view condition,
                         std::span<const Field> fields) {
  std::string assignments;
  std::size_t changed = 0;
  for (const Field& field : fields) {
    const qorcred::Value stored = session.sql().Scalar(
        fmt::format("SELECT {} FROM {} WHERE {}", field.column, table, condition));
    if (AreSame(stored, field.value)) {
      continue;
    }
    assignments +=
        fmt::format("{}{}={}", changed == 0 ? "" : ", ", field.column, LiteralOf(field.value));
    ++changed;
  }
  if (changed > 0) {
    (void)session.sql().Change(
        fmt::format("UPDATE {} SET {} WHERE {}", table, assignments, condition),
        dialect::StatementKind::kUpdate);
  }
  return changed;
}

std::size_t RowsWhere(DeskSession& session, std::string_view table, const std::string& condition) {
  return static_cast<std::size_t>(qorcred::NumericValue(
      session.sql().Scalar(fmt::format("SELECT COUNT(*) FROM {} WHERE {}", table, condition))));
}

}  // namespace qorhost
