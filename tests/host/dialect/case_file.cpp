#include "case_file.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <set>
#include <stdexcept>
#include <string_view>

#include "case_database.h"

namespace qorhost::dialect::test {

namespace {

constexpr std::string_view kNameMark = "== ";

struct Row {
  std::string_view key;
  std::optional<std::string> Case::*member;
};

constexpr std::array kRows{
    Row{"sqlite", &Case::sqlite}, Row{"postgres", &Case::postgres}, Row{"values", &Case::values},
    Row{"types", &Case::types},   Row{"gives", &Case::gives},       Row{"changes", &Case::changes},
    Row{"error", &Case::error},   Row{"fails", &Case::fails},
};

void ReadRow(Case& entry, std::string_view line) {
  const std::size_t keyEnd = std::min(line.find(' '), line.size());
  const std::string_view key = line.substr(0, keyEnd);
  const std::size_t contentStart = std::min(line.find_first_not_of(' ', keyEnd), line.size());
  const std::string content(line.substr(contentStart));
  if (key == "desktop") {
    entry.desktop.push_back(content);
    return;
  }
  const auto found =
      std::find_if(kRows.begin(), kRows.end(), [key](const Row& row) { return row.key == key; });
  if (found == kRows.end()) {
    throw std::runtime_error(entry.file + ": unknown line: " + std::string(line));
  }
  entry.*found->member = content;
}

void LoadFile(const std::string& file, std::vector<Case>& cases) {
  const std::size_t before = cases.size();
  for (const std::string& line : LinesOf("cases/" + file)) {
    if (line.empty() || line.front() == '#') {
      continue;
    }
    if (line.compare(0, kNameMark.size(), kNameMark) == 0) {
      Case& entry = cases.emplace_back();
      entry.file = file;
      entry.name = line.substr(kNameMark.size());
    } else if (cases.size() == before) {
      throw std::runtime_error(file + ": a line before the first case");
    } else {
      ReadRow(cases.back(), line);
    }
  }
  if (cases.size() == before) {
    throw std::runtime_error(file + " has no cases");
  }
}

}  // namespace

std::vector<Case> LoadCases() {
  std::vector<std::string> files;
  for (const auto& entry :
       std::filesystem::directory_iterator(std::string(DIALECT_FOLDER) + "/cases")) {
    files.push_back(entry.path().filename().string());
  }
  std::sort(files.begin(), files.end());
  std::vector<Case> cases;
  for (const std::string& file : files) {
    LoadFile(file, cases);
  }
  std::set<std::string> names;
  for (const Case& entry : cases) {
    const bool expects = std::any_of(kRows.begin(), kRows.end(), [&entry](const Row& row) {
      return (entry.*row.member).has_value();
    });
    if (!expects || entry.desktop.empty()) {
      throw std::runtime_error(entry.file + ": nothing is expected of: " + entry.name);
    }
    if (!names.insert(TestName(entry)).second) {
      throw std::runtime_error(entry.file + ": the name stands twice: " + entry.name);
    }
  }
  return cases;
}

std::string TestName(const Case& entry) {
  const std::string text = entry.file.substr(0, entry.file.find('.')) + " " + entry.name;
  std::string name;
  bool startsWord = true;
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if (std::isalnum(byte) == 0 || byte >= 0x80) {
      startsWord = true;
      continue;
    }
    name += static_cast<char>(startsWord ? std::toupper(byte) : byte);
    startsWord = false;
  }
  return name;
}

void PrintTo(const Case& entry, std::ostream* stream) {
  *stream << entry.file << ": " << entry.name;
}

}  // namespace qorhost::dialect::test
