#include "tests/host/files/desktop_file/expected_values.h"

#include <fmt/format.h>

#include <chrono>
#include <cmath>
#include <fstream>
#include <stdexcept>

namespace qorhost::test {

namespace fs = std::filesystem;
using nlohmann::json;
using nlohmann::ordered_json;

namespace {

template <typename... Kinds>
struct Overloaded : Kinds... {
  using Kinds::operator()...;
};
template <typename... Kinds>
Overloaded(Kinds...) -> Overloaded<Kinds...>;

std::string Hex(const std::string& bytes) {
  std::string hex;
  for (const char byte : bytes) {
    hex += fmt::format("{:02x}", static_cast<unsigned char>(byte));
  }
  return hex;
}

std::string TypeName(const DesktopColumn& column) {
  if (column.isAutoNumber) return "AutoNumber";
  return std::string(NameOf(column.type));
}

/// "Text" of "Text(50)".
std::string WithoutSize(const std::string& type) {
  return type.substr(0, type.find('('));
}

bool IsWritten(const json& cell) {
  return !cell.is_discarded();
}

/// Whether a row has the cells that are written of it.
bool AreEqual(const DesktopTable& table, const std::vector<DesktopCell>& row,
              const ordered_json& expected) {
  for (std::size_t at = 0; at < row.size(); ++at) {
    const json cell = AsExpected(row[at]);
    const json wanted = expected.at(table.columns[at].name);
    if (wanted.is_object() && wanted.contains("utf16")) {
      if (const auto* text = std::get_if<DesktopText>(&row[at]); text == nullptr || text->isWhole) {
        return false;
      }
      continue;
    }
    if (IsWritten(cell) && cell != wanted) {
      return false;
    }
  }
  return true;
}

}  // namespace

/// By the system's calendar, not by the one that is tested.
std::string ExpectedDate(double serial) {
  using namespace std::chrono;
  const double day = std::trunc(serial);
  const auto thousandths =
      static_cast<std::int64_t>(std::llround(std::abs(serial - day) * 86'400'000));
  const sys_days zero = year(1899) / December / 30;
  const auto moment =
      sys_time<milliseconds>(zero + days(static_cast<int>(day))) + milliseconds(thousandths);
  const auto midnight = floor<days>(moment);
  const year_month_day date(midnight);
  const hh_mm_ss<milliseconds> time(moment - midnight);
  std::string text =
      fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  time.hours().count(), time.minutes().count(), time.seconds().count());
  if (time.subseconds().count() != 0) {
    text += fmt::format(".{:03}", time.subseconds().count());
  }
  return text;
}

fs::path SampleDatabase(std::string_view name) {
  return fs::path(QORHOST_DESKTOP_SAMPLES) / name;
}

ordered_json ExpectedOf(std::string_view name) {
  fs::path file = SampleDatabase(name).replace_extension(".expected.json");
  std::ifstream in(file);
  if (!in) throw std::runtime_error("no expected values: " + file.string());
  return ordered_json::parse(in);
}

json AsExpected(const DesktopCell& cell) {
  return std::visit(
      Overloaded{
          [](DesktopNull) { return json(nullptr); },
          [](bool flag) { return json(flag); },
          [](std::int64_t number) { return json(number); },
          [](double number) { return json(number); },
          [](DesktopCurrency amount) {
            const std::int64_t size = std::abs(amount.parts);
            return json(
                fmt::format("{}{}.{:04}", amount.parts < 0 ? "-" : "", size / 10000, size % 10000));
          },
          [](DesktopDate date) { return json(ExpectedDate(date.serial)); },
          [](const DesktopText& text) { return json(text.utf8); },
          [](const DesktopBytes& bytes) {
            const bool mayBeOther = bytes.bytes.size() == 16 || bytes.bytes.size() == 17;
            return mayBeOther ? json(json::value_t::discarded) : json{{"hex", Hex(bytes.bytes)}};
          },
      },
      cell);
}

std::vector<std::string> Differences(const DesktopTable& table, const ordered_json& expected) {
  std::vector<std::string> found;
  const auto tell = [&](std::string what) { found.push_back(table.name + ": " + std::move(what)); };
  if (table.rows.size() != expected.at("rows").get<std::size_t>()) {
    tell(fmt::format("{} rows", table.rows.size()));
  }
  std::vector<std::string> columns;
  for (const DesktopColumn& column : table.columns) {
    columns.push_back(column.name + ": " + TypeName(column));
  }
  std::vector<std::string> wanted;
  for (const auto& [name, type] : expected.at("columns").items()) {
    wanted.push_back(name + ": " + WithoutSize(type.get<std::string>()));
  }
  if (columns != wanted) {
    tell(
        fmt::format("columns {} instead of {}", fmt::join(columns, ", "), fmt::join(wanted, ", ")));
    return found;
  }
  for (std::size_t at = 0; at < table.columns.size(); ++at) {
    const std::string& name = table.columns[at].name;
    std::size_t nulls = 0;
    std::int64_t sum = 0;
    for (const std::vector<DesktopCell>& row : table.rows) {
      if (std::holds_alternative<DesktopNull>(row[at])) ++nulls;
      if (const auto* number = std::get_if<std::int64_t>(&row[at])) sum += *number;
      if (const auto* flag = std::get_if<bool>(&row[at])) sum += *flag ? 1 : 0;
    }
    if (nulls != expected.at("nulls").at(name).get<std::size_t>()) {
      tell(fmt::format("{} Nulls in {}", nulls, name));
    }
    if (expected.at("sums").contains(name) &&
        sum != expected.at("sums").at(name).get<std::int64_t>()) {
      tell(fmt::format("a sum of {} in {}", sum, name));
    }
  }
  // The rows that are written stand in the order of the file, with others between them.
  std::size_t at = 0;
  for (const ordered_json& sample : expected.at("sample")) {
    while (at < table.rows.size() && !AreEqual(table, table.rows[at], sample)) ++at;
    if (at == table.rows.size()) {
      tell("no row like " + sample.dump().substr(0, 300));
      break;
    }
    ++at;
  }
  return found;
}

}  // namespace qorhost::test
