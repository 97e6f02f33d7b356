// Rows and facts as JSON.
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/files/table.h"

namespace qorhost {

/// An array of objects with numbers, true/false, null, dates as "2026-01-31T14:05:09" and texts.
/// Keys that come twice get _2, _3, ...
void PrintJson(std::ostream& out, const Table& table);

/// An object that is put together member by member, which keep their order.
class JsonObject {
 public:
  JsonObject& Add(std::string_view key, const qorcred::Value& value);
  /// An array of objects.
  JsonObject& Add(std::string_view key, const Table& rows);
  JsonObject& Add(std::string_view key, const JsonObject& object);
  JsonObject& Add(std::string_view key, const std::vector<double>& numbers);
  /// The members of another one behind these.
  JsonObject& Add(const JsonObject& more);

  /// On a line of its own.
  void Print(std::ostream& out) const;

 private:
  [[nodiscard]] std::string Text() const;

  std::vector<std::pair<std::string, std::string>> members_;  // keys and values as they are printed
};

/// One object, its members in the order given.
void PrintJsonObject(std::ostream& out,
                     const std::vector<std::pair<std::string, qorcred::Value>>& members);

}  // namespace qorhost
