#include "dialect_database.h"

#include <array>
#include <charconv>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "frame/convert.h"
#include "host/dialect/catalog.h"
#include "host/store/postgres/sql_functions.h"
#include "host/store/postgres/table_text.h"
#include "test_server.h"

namespace qorhost::postgres::test {

namespace {

// The server's numbers of types.
constexpr std::uint32_t kLong = 20;
constexpr std::uint32_t kInteger = 23;
constexpr std::uint32_t kDouble = 701;
constexpr std::uint32_t kJson = 3802;

Connection& SharedConnection() {
  static Connection connection = [] {
    Connection made(TestServer::Shared().Create("dialect"));
    made.RunAll(CreateFunctionsText());
    for (const dialect::Table& table : dialect::Tables()) {
      made.RunAll(CreateTableText(table));
    }
    return made;
  }();
  return connection;
}

std::string NumberCell(std::string_view text) {
  double number = 0.0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return qorcred::NumberText(number);
}

/// A value of which only the row tells what it is.
std::string JsonCell(std::string_view text) {
  const nlohmann::json value = nlohmann::json::parse(text);
  return value.is_string() ? "'" + value.get<std::string>() + "'" : NumberCell(text);
}

std::string CellOf(const Result& result, int row, int column) {
  if (result.IsNull(row, column)) {
    return "Null";
  }
  const std::string_view text = result.Text(row, column);
  switch (result.TypeOf(column)) {
    case kLong:
    case kInteger:
      return std::string(text);
    case kDouble:
      return NumberCell(text);
    case kJson:
      return JsonCell(text);
    default:
      return "'" + std::string(text) + "'";
  }
}

/// A value as the server reads it: numbers with all their digits.
std::string SentText(const qorcred::Value& value) {
  if (const auto* number = value.As<double>()) {
    std::array<char, 32> buffer;
    return {buffer.data(),
            std::to_chars(buffer.data(), buffer.data() + buffer.size(), *number).ptr};
  }
  return qorcred::ToText(value);
}

}  // namespace

// Rows that were changed come back with the end of the transaction, identities that were given do
// not.
DialectDatabase::DialectDatabase() : connection_(SharedConnection()) {
  static const std::string begin = [this] {
    connection_.RunAll("BEGIN");
    dialect::test::RunSeed(*this);
    connection_.RunAll("COMMIT");
    return std::string(
        connection_
            .Run("SELECT 'BEGIN; SELECT ' || string_agg(format('setval(%L, %s, %L)', "
                 "format('%I.%I', schemaname, sequencename), "
                 "coalesce(last_value, 1), last_value IS NOT NULL), ', ') "
                 "FROM pg_sequences")
            .Text(0, 0));
  }();
  connection_.RunAll(begin);
}

DialectDatabase::~DialectDatabase() {
  connection_.RunAll("ROLLBACK");
}

dialect::test::Outcome DialectDatabase::Run(std::string_view sql) {
  const dialect::Translation translation = translator_.Translate(sql, dialect::test::kNow);
  std::vector<std::string> texts;
  for (const qorcred::Value& value : translation.parameters) {
    texts.push_back(SentText(value));
  }
  const std::vector<Sent> sent(texts.begin(), texts.end());
  const Result result = connection_.Run(translation.shape->sql, sent);
  dialect::test::Outcome outcome;
  outcome.changes = static_cast<int>(result.affected());
  if (translation.shape->kind != dialect::StatementKind::kSelect) {
    return outcome;
  }
  for (int row = 0; row < result.rows(); ++row) {
    std::vector<std::string>& cells = outcome.rows.emplace_back();
    for (int column = 0; column < result.columns(); ++column) {
      cells.push_back(CellOf(result, row, column));
    }
  }
  return outcome;
}

}  // namespace qorhost::postgres::test
