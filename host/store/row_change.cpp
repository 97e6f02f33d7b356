#include "host/store/row_change.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <nlohmann/json.hpp>

#include "frame/utf8.h"
#include "host/store/store_error.h"

namespace qorhost {

namespace {

using nlohmann::ordered_json;
using qorcred::Value;

constexpr const char* kTable = "table";
constexpr const char* kRow = "row";
constexpr const char* kBefore = "before";
constexpr const char* kAfter = "after";
constexpr const char* kHex = "hex";

const char* WordOf(RowChangeKind kind) {
  switch (kind) {
    case RowChangeKind::kInserted:
      return "inserted";
    case RowChangeKind::kUpdated:
      return "updated";
    case RowChangeKind::kDeleted:
      break;
  }
  return "deleted";
}

std::string HexOf(std::string_view bytes) {
  std::string hex;
  for (const char byte : bytes) {
    hex += fmt::format("{:02x}", static_cast<unsigned char>(byte));
  }
  return hex;
}

std::string BytesOf(std::string_view hex) {
  std::string bytes;
  for (std::size_t at = 0; at + 1 < hex.size(); at += 2) {
    unsigned byte = 0;
    constexpr int kHexadecimal = 16;
    const char* const first = hex.data() + at;
    if (std::from_chars(first, first + 2, byte, kHexadecimal).ptr != first + 2) {
      throw StoreError("The audit holds a text that cannot be read");
    }
    bytes += static_cast<char>(byte);
  }
  return bytes;
}

ordered_json JsonOf(const Value& value) {
  if (const auto* number = value.As<std::int32_t>()) {
    return *number;
  }
  if (const auto* number = value.As<double>()) {
    return *number;
  }
  const auto* text = value.As<std::string>();
  if (text == nullptr) {
    return nullptr;
  }
  return qorcred::IsUtf8(*text) ? ordered_json(*text) : ordered_json{{kHex, HexOf(*text)}};
}

Value ValueOf(const ordered_json& json) {
  if (json.is_number_integer()) {
    return {json.get<std::int32_t>()};
  }
  if (json.is_number()) {
    return {json.get<double>()};
  }
  if (json.is_string()) {
    return {json.get<std::string>()};
  }
  if (json.is_object()) {
    return {BytesOf(json.at(kHex).get<std::string>())};
  }
  return {qorcred::Null{}};
}

/// Whether a text is itself in JSON, between quotation marks.
bool IsPlain(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char letter) {
    constexpr char kDelete = 127;
    return letter >= ' ' && letter < kDelete && letter != '"' && letter != '\\';
  });
}

void AppendText(std::string& json, const std::string& text) {
  if (IsPlain(text)) {
    json.append("\"").append(text).append("\"");
  } else {
    json += ordered_json(text).dump();
  }
}

void AppendValue(std::string& json, const Value& value) {
  const auto* text = value.As<std::string>();
  if (const auto* number = value.As<std::int32_t>()) {
    json += fmt::format_int(*number).c_str();
  } else if (text != nullptr && IsPlain(*text)) {
    AppendText(json, *text);
  } else {
    json += JsonOf(value).dump();
  }
}

/// A member with the cells of a row, a comma before it.
void AppendRow(std::string& json, const char* name, const std::vector<StoredCell>& cells) {
  json.append(",\"").append(name).append("\":{");
  const char* separator = "";
  for (const StoredCell& cell : cells) {
    json += separator;
    AppendText(json, cell.column);
    json += ':';
    AppendValue(json, cell.value);
    separator = ",";
  }
  json += '}';
}

std::vector<StoredCell> CellsOf(const ordered_json& row) {
  std::vector<StoredCell> cells;
  for (const auto& [column, value] : row.items()) {
    cells.push_back({column, ValueOf(value)});
  }
  return cells;
}

RowChange Parsed(std::string_view text) {
  const ordered_json json = ordered_json::parse(text);
  RowChange change;
  change.table = json.at(kTable).get<std::string>();
  for (const RowChangeKind kind :
       {RowChangeKind::kInserted, RowChangeKind::kUpdated, RowChangeKind::kDeleted}) {
    const auto found = json.find(WordOf(kind));
    if (found == json.end()) {
      continue;
    }
    change.kind = kind;
    change.rid = found->at(0).get<std::int64_t>();
    change.lastRid = found->at(1).get<std::int64_t>();
  }
  if (change.kind == RowChangeKind::kUpdated) {
    change.before = CellsOf(json.at(kBefore));
    change.after = CellsOf(json.at(kAfter));
  } else {
    (change.kind == RowChangeKind::kInserted ? change.after : change.before) =
        CellsOf(json.at(kRow));
  }
  return change;
}

}  // namespace

std::string TextOfChange(const RowChange& change) {
  // Written as it stands: a unit of work of thousands of rows would build as many trees.
  std::string json = fmt::format("{{\"{}\":", kTable);
  AppendText(json, change.table);
  json += fmt::format(",\"{}\":[{},{}]", WordOf(change.kind), change.rid, change.lastRid);
  switch (change.kind) {
    case RowChangeKind::kInserted:
      AppendRow(json, kRow, change.after);
      break;
    case RowChangeKind::kUpdated:
      AppendRow(json, kBefore, change.before);
      AppendRow(json, kAfter, change.after);
      break;
    case RowChangeKind::kDeleted:
      AppendRow(json, kRow, change.before);
      break;
  }
  return json += '}';
}

RowChange ChangeFromText(std::string_view text) {
  try {
    return Parsed(text);
  } catch (const ordered_json::exception& failure) {
    throw StoreError(
        fmt::format("The audit holds an entry that cannot be read: {}", failure.what()));
  }
}

}  // namespace qorhost
