#include "case_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <string_view>

namespace qorhost::dialect::test {

namespace {

std::string Joined(const std::vector<std::string>& parts, std::string_view separator) {
  std::string text;
  for (const std::string& part : parts) {
    text.append(text.empty() ? std::string_view() : separator).append(part);
  }
  return text;
}

std::string PrintedRows(const Outcome& outcome) {
  std::vector<std::string> rows;
  for (const std::vector<std::string>& row : outcome.rows) {
    rows.push_back(Joined(row, ", "));
  }
  return rows.empty() ? "nothing" : Joined(rows, " ; ");
}

std::string PrintedType(const std::optional<ColumnType>& type) {
  if (!type) {
    return "?";
  }
  switch (*type) {
    case ColumnType::kIdentity:
      return "Identity";
    case ColumnType::kLong:
      return "Long";
    case ColumnType::kDouble:
      return "Double";
    case ColumnType::kBoolean:
      return "Boolean";
    case ColumnType::kDate:
      return "Date";
    case ColumnType::kText:
      return "Text";
  }
  return "";
}

std::string PrintedTypes(const Shape& shape) {
  std::vector<std::string> types;
  for (const std::optional<ColumnType>& type : shape.resultTypes) {
    types.push_back(PrintedType(type));
  }
  return Joined(types, " ");
}

std::string PrintedValues(const Translation& translation) {
  std::vector<std::string> values;
  for (const qorcred::Value& value : translation.parameters) {
    values.push_back(Printed(value));
  }
  return Joined(values, " | ");
}

// Judges the text of the translation, without running it.
void CheckTranslation(CaseDatabase& database, const Case& expected,
                      const std::optional<std::string>& printed, const std::string& sql) {
  const Translation translation = database.translator().Translate(sql, kNow);
  if (printed) {
    EXPECT_EQ(translation.shape->sql, *printed);
  }
  if (expected.values) {
    EXPECT_EQ(PrintedValues(translation), *expected.values);
  }
  if (expected.types) {
    EXPECT_EQ(PrintedTypes(*translation.shape), *expected.types);
  }
}

void CheckOutcome(CaseDatabase& database, const Case& expected, const std::string& sql) {
  const Outcome outcome = database.Run(sql);
  if (expected.gives) {
    EXPECT_EQ(PrintedRows(outcome), *expected.gives);
  }
  if (expected.changes) {
    EXPECT_EQ(std::to_string(outcome.changes), *expected.changes);
  }
}

void CheckRefusal(CaseDatabase& database, const Case& expected, const std::string& sql) {
  try {
    database.translator().Translate(sql, kNow);
    FAIL() << "translated";
  } catch (const SqlError& error) {
    EXPECT_EQ(std::string(error.what()), *expected.error);
  }
}

void CheckFailure(CaseDatabase& database, const Case& expected, const std::string& sql) {
  try {
    database.Run(sql);
    FAIL() << "ran";
  } catch (const SqlError& error) {
    FAIL() << "refused before it ran: " << error.what();
  } catch (const std::runtime_error& error) {
    EXPECT_THAT(error.what(), testing::HasSubstr(*expected.fails));
  }
}

}  // namespace

void RunCase(CaseDatabase& database, const Case& expected,
             const std::optional<std::string>& printed) {
  for (std::size_t index = 0; index + 1 < expected.desktop.size(); ++index) {
    database.Run(expected.desktop[index]);
  }
  const std::string& sql = expected.desktop.back();
  if (expected.error) {
    CheckRefusal(database, expected, sql);
  } else if (expected.fails) {
    CheckFailure(database, expected, sql);
  } else {
    CheckTranslation(database, expected, printed, sql);
    CheckOutcome(database, expected, sql);
  }
}

}  // namespace qorhost::dialect::test
