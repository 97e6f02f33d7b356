#include "host/files/json_writer.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

#include "frame/control_characters.h"
#include "frame/utf8.h"
#include "host/dialect/canonical_date.h"

namespace qorhost {

namespace {

using nlohmann::ordered_json;
using qorcred::Value;
using qorcred::ValueType;

/// The canonical text with a T between day and time.
std::string IsoText(qorcred::Date date) {
  std::string text = dialect::CanonicalDate(date);
  text.replace(text.find(' '), 1, "T");
  return text;
}

/// A whole number without a point, so that counts read as counts.
ordered_json NumberJson(double number) {
  constexpr double kExactlyWhole = 9007199254740992.0;  // beyond it doubles skip whole numbers
  if (std::abs(number) <= kExactlyWhole && std::trunc(number) == number) {
    return static_cast<std::int64_t>(number);
  }
  return number;
}

ordered_json JsonOf(const Value& value) {
  switch (value.type()) {
    case ValueType::kBoolean:
      return *value.As<bool>();
    case ValueType::kInteger:
      return *value.As<std::int16_t>();
    case ValueType::kLong:
      return *value.As<std::int32_t>();
    case ValueType::kDouble:
      return NumberJson(*value.As<double>());
    case ValueType::kDate:
      return IsoText(*value.As<qorcred::Date>());
    case ValueType::kString:
      return *value.As<std::string>();
    case ValueType::kStringArray:
      return *value.As<qorcred::StringArray>();
    default:
      return nullptr;
  }
}

/// Every character that could steer a terminal as \u and its number. Ends of lines stay.
std::string EscapedJson(std::string_view json) {
  std::string escaped;
  escaped.reserve(json.size());
  for (std::size_t position = 0; position < json.size();) {
    const qorcred::Utf8Character character = qorcred::ReadUtf8(json, position);
    const char32_t code = character.codePoint;
    if (code != U'\n' && code < qorcred::kInvalidByte && qorcred::SteersDisplay(code)) {
      escaped += fmt::format("\\u{:04x}", static_cast<std::uint32_t>(code));
    } else {
      escaped += json.substr(position, character.length);
    }
    position += character.length;
  }
  return escaped;
}

std::string JsonText(const ordered_json& json) {
  constexpr int kOnOneLine = -1;
  // A text that is not UTF-8 must not stop the output of everything else.
  return EscapedJson(json.dump(kOnOneLine, ' ', false, ordered_json::error_handler_t::replace));
}

std::vector<std::string> UniqueKeys(const std::vector<TableColumn>& columns) {
  std::vector<std::string> keys;
  std::set<std::string> taken;
  for (const TableColumn& column : columns) {
    std::string key = column.key;
    for (int number = 2; !taken.insert(key).second; ++number) {
      key = fmt::format("{}_{}", column.key, number);
    }
    keys.push_back(std::move(key));
  }
  return keys;
}

ordered_json RowJson(const std::vector<std::string>& keys, const std::vector<Value>& cells) {
  ordered_json object = ordered_json::object();
  for (std::size_t at = 0; at < keys.size(); ++at) {
    object[keys[at]] = JsonOf(cells[at]);
  }
  return object;
}

ordered_json ObjectJson(const std::vector<std::pair<std::string, Value>>& members) {
  ordered_json object = ordered_json::object();
  for (const auto& [key, value] : members) {
    object[key] = JsonOf(value);
  }
  return object;
}

}  // namespace

void PrintJson(std::ostream& out, const Table& table) {
  const std::vector<std::string> keys = UniqueKeys(table.columns);
  out << '[';
  for (std::size_t number = 0; number < table.rows.size(); ++number) {
    out << (number == 0 ? "\n  " : ",\n  ") << JsonText(RowJson(keys, table.rows[number]));
  }
  out << (table.rows.empty() ? "]\n" : "\n]\n");
}

JsonObject& JsonObject::Add(std::string_view key, const Value& value) {
  members_.emplace_back(key, JsonText(JsonOf(value)));
  return *this;
}

JsonObject& JsonObject::Add(std::string_view key, const Table& rows) {
  const std::vector<std::string> keys = UniqueKeys(rows.columns);
  std::string text = "[";
  for (const std::vector<Value>& row : rows.rows) {
    text += (text.size() == 1 ? "" : ",") + JsonText(RowJson(keys, row));
  }
  members_.emplace_back(key, text + "]");
  return *this;
}

JsonObject& JsonObject::Add(std::string_view key, const JsonObject& object) {
  members_.emplace_back(key, object.Text());
  return *this;
}

JsonObject& JsonObject::Add(std::string_view key, const std::vector<double>& numbers) {
  ordered_json array = ordered_json::array();
  for (const double number : numbers) {
    array.push_back(NumberJson(number));
  }
  members_.emplace_back(key, JsonText(array));
  return *this;
}

JsonObject& JsonObject::Add(const JsonObject& more) {
  members_.insert(members_.end(), more.members_.begin(), more.members_.end());
  return *this;
}

void JsonObject::Print(std::ostream& out) const {
  out << Text() << '\n';
}

std::string JsonObject::Text() const {
  std::string text = "{";
  for (const auto& [key, value] : members_) {
    text += fmt::format("{}{}:{}", text.size() == 1 ? "" : ",", JsonText(key), value);
  }
  return text + "}";
}

void PrintJsonObject(std::ostream& out, const std::vector<std::pair<std::string, Value>>& members) {
  out << JsonText(ObjectJson(members)) << '\n';
}

}  // namespace qorhost
