#include "tests/contract/described_surface.h"

#include <algorithm>
#include <array>
#include <utility>

#include "frame/text.h"
#include "host/dialect/catalog.h"
#include "host/dialect/translator.h"
#include "tests/contract/statement_surface.h"
#include "tests/support/noting_object.h"

namespace qortest {

namespace contract = qorcred::contract;

namespace {

// The report's tests let this column stand for any of the stored fields.
constexpr std::string_view kAnyField = "DirectoryCode.Column";
constexpr std::string_view kOneField = "DirectoryCode.DisplayName";

// Names that tests put into statements in the place of values, beside those of other alphabets.
constexpr std::array<std::string_view, 6> kNamesOfTests{"Null00", "Null2", "ab",
                                                        "b",      "First", "Third"};

std::string Small(std::string_view text) {
  std::string small(text);
  std::transform(small.begin(), small.end(), small.begin(), qorcred::LowerAscii);
  return small;
}

/// "ItemData(index) get put" as "itemdata(-) get" and "itemdata(-) put"; V and B stay.
std::vector<std::string> Forms(std::string_view member) {
  const std::size_t open = member.find('(');
  const std::size_t close = member.rfind(')');
  const bool isIndexed = open != std::string_view::npos;
  std::string_view name = member.substr(0, std::min(open, member.find(' ')));
  std::string_view endings = member;
  std::string letters;
  if (isIndexed) {
    for (const std::string& argument : Items(member.substr(open + 1, close - open - 1))) {
      letters += argument.ends_with(" V") ? 'v' : argument.ends_with(" B") ? 'b' : '-';
    }
    letters = "(" + letters + ")";
    endings = member.substr(close + 1);
  }
  if (name == "get" || name == "put") name = {};
  std::vector<std::string> forms;
  for (const std::string_view ending : {"get", "put"}) {
    const bool isNamed = (" " + std::string(endings) + " ").find(" " + std::string(ending) + " ") !=
                         std::string::npos;
    if (isNamed) forms.push_back(Small(name) + letters + " " + std::string(ending));
  }
  if (forms.empty()) forms.push_back(Small(name) + letters);
  return forms;
}

std::string Line(std::string_view part, std::string_view what) {
  return Small(part) + " " + Small(what);
}

void AddScreen(const contract::Part& part, Surface& surface) {
  for (const std::string& name : Items(part.names)) {
    for (const std::string_view member : part.members) {
      for (const std::string& form : Forms(member)) {
        const bool isOwn = form.starts_with(' ') || form.starts_with('(');
        surface.insert(Line(part::kScreen, name + (isOwn ? "" : ".") + form));
      }
    }
  }
}

void AddColumns(std::string_view table, std::string_view columns, std::string_view use,
                Surface& surface) {
  for (const std::string& column : Items(columns)) {
    surface.insert(Line("table", std::string(table) + "." + column + " " + std::string(use)));
  }
}

/// Whether a statement is unreadable because of what a test put into it: broken beyond its names,
/// or with a name that tests use.
bool IsSpoiledByATest(std::string_view refusal) {
  const std::size_t unknown = refusal.find("unknown ");
  if (unknown == std::string_view::npos) return true;
  const std::size_t open = refusal.find('\'', unknown);
  const std::size_t close = refusal.find('\'', open + 1);
  const std::string_view name = refusal.substr(open + 1, close - open - 1);
  const bool isForeign = std::any_of(
      name.begin(), name.end(), [](char each) { return static_cast<unsigned char>(each) > 127; });
  return isForeign ||
         std::find(kNamesOfTests.begin(), kNamesOfTests.end(), name) != kNamesOfTests.end();
}

/// The tables and columns of the data store that are words of a statement that cannot be read, by
/// their names alone.
Surface WordsOf(std::string_view statement) {
  std::set<std::string> words;
  std::string word;
  for (const char each : statement) {
    const bool isLetter = (each >= 'A' && each <= 'Z') || (each >= 'a' && each <= 'z') ||
                          (each >= '0' && each <= '9') || each == '_';
    if (isLetter) {
      word += each;
    } else {
      words.insert(std::exchange(word, {}));
    }
  }
  words.insert(word);

  Surface known;
  for (const std::string& one : words) {
    const auto tables = qorhost::dialect::Tables();
    const bool isKnown = std::any_of(tables.begin(), tables.end(), [&one](const auto& table) {
      return qorhost::dialect::FindColumn(table, one) != nullptr;
    });
    if (isKnown || qorhost::dialect::FindTable(one) != nullptr) known.insert(Line("name", one));
  }
  return known;
}

Surface SurfaceOfStatement(std::string statement, const Touch& touch,
                           std::vector<std::string>& refused) {
  for (std::size_t at = 0; (at = statement.find(kAnyField, at)) != std::string::npos;) {
    statement.replace(at, kAnyField.size(), kOneField);
  }
  Surface surface;
  try {
    for (const NamedColumn& named : ColumnsNamedIn(statement)) {
      const bool isRow = named.column.empty();
      const std::string_view use = named.use == ColumnUse::kRead ? "read" : "written";
      if (isRow) {
        surface.insert(Line("table", named.table + " loses"));
      } else {
        AddColumns(named.table, named.column, use, surface);
      }
    }
    return surface;
  } catch (const qorhost::dialect::SqlError& refusal) {
    if (!IsSpoiledByATest(refusal.what())) {
      refused.push_back(touch.test + ": " + refusal.what() + ": " + statement);
    }
    return WordsOf(statement);
  }
}

}  // namespace

const std::vector<contract::Class>& DescribedClasses() {
  static const std::vector<contract::Class> classes{contract::Credential(), contract::DirCode(),
                                                    contract::DirCodeReport(),
                                                    contract::CredentialReport()};
  return classes;
}

const contract::Operation* FindOperation(const contract::Class& of, std::string_view name) {
  const auto found =
      std::find_if(of.operations.begin(), of.operations.end(),
                   [name](const contract::Operation& one) { return one.name == name; });
  return found == of.operations.end() ? nullptr : &*found;
}

std::vector<std::string> Items(std::string_view list) {
  constexpr std::string_view kBetween = ", ";
  std::vector<std::string> items;
  while (!list.empty()) {
    const std::size_t end = std::min(list.find(kBetween), list.size());
    items.emplace_back(list.substr(0, end));
    list.remove_prefix(std::min(end + kBetween.size(), list.size()));
  }
  return items;
}

Surface DescribedSurface(const contract::Operation& operation) {
  Surface surface;
  for (const contract::Part& part : operation.screen) AddScreen(part, surface);
  for (const contract::Part& part : operation.others) {
    for (const std::string_view member : part.members) {
      for (const std::string& form : Forms(member)) surface.insert(Line(part.names, form));
    }
  }
  for (const contract::Argument& argument : operation.arguments) {
    if (argument.direction != contract::Direction::kIn) {
      surface.insert(Line(part::kArgument, argument.name));
    }
  }
  for (const std::string_view component : operation.creates) {
    surface.insert(Line(part::kCreated, component));
  }
  for (const contract::Table& table : operation.tables) {
    AddColumns(table.name, table.read, "read", surface);
    AddColumns(table.name, table.written, "written", surface);
    if (table.loses) surface.insert(Line("table", std::string(table.name) + " loses"));
  }
  if (!operation.handedStatement.empty()) {
    surface.insert(Line(part::kStatement, kHandedOver));
  }
  return surface;
}

Surface TouchedSurface(const Touch& touch, std::vector<std::string>& refused) {
  if (touch.part == part::kMessage) return {};
  if (touch.part == part::kStatement && touch.what != kHandedOver) {
    return SurfaceOfStatement(touch.what, touch, refused);
  }
  if (touch.part == part::kDeletion) {
    return {Line("table", touch.what + " loses"), Line("table", touch.what + ".rid read")};
  }
  return {Line(touch.part, touch.what)};
}

bool IsMessage(std::string_view text, std::string_view described) {
  for (;;) {
    const std::size_t open = described.find('{');
    const std::string_view fixed = described.substr(0, open);
    if (!text.starts_with(fixed)) return false;
    text.remove_prefix(fixed.size());
    if (open == std::string_view::npos) return text.empty();
    described.remove_prefix(described.find('}') + 1);
    // What stands in the place ends where the next fixed words begin, and the last ones end the
    // text.
    const std::size_t further = described.find('{');
    const std::string_view next = described.substr(0, further);
    if (further == std::string_view::npos) return text.ends_with(next);
    const std::size_t end = text.find(next);
    if (end == std::string_view::npos) return false;
    text.remove_prefix(end);
  }
}

}  // namespace qortest
