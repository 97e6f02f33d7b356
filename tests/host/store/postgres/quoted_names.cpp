#include "quoted_names.h"

#include <cctype>
#include <functional>
#include <set>

#include "host/dialect/catalog.h"

namespace qorhost::postgres::test {

namespace {

const std::set<std::string, std::less<>>& Names() {
  static const std::set<std::string, std::less<>> names = [] {
    std::set<std::string, std::less<>> all{
        "AuditEntries", "AuditRows", "UnitVersions", "At",    "Who",   "Origin", "Previous",
        "What",         "Rows",      "Hash",         "Entry", "Piece", "Mark"};
    for (const dialect::Table& table : dialect::Tables()) {
      all.emplace(table.name);
      for (const dialect::Column& column : table.columns) {
        all.emplace(column.name);
      }
    }
    return all;
  }();
  return names;
}

}  // namespace

std::string WithQuotedNames(std::string_view sql) {
  std::string quoted;
  bool inText = false;
  for (std::size_t at = 0; at < sql.size();) {
    std::size_t end = at;
    while (!inText && end < sql.size() &&
           (std::isalnum(static_cast<unsigned char>(sql[end])) != 0 || sql[end] == '_')) {
      ++end;
    }
    const std::string_view word = sql.substr(at, end - at);
    if (word.empty()) {
      inText = inText != (sql[at] == '\'');
      quoted += sql[at++];
    } else {
      const bool isName = Names().count(word) > 0;
      quoted.append(isName ? "\"" : "").append(word).append(isName ? "\"" : "");
      at = end;
    }
  }
  return quoted;
}

}  // namespace qorhost::postgres::test
