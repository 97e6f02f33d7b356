#include "tests/contract/operations_page.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <vector>

#include "contract/contract.h"
#include "contract/statements.h"
#include "frame/convert.h"
#include "frame/member_table.h"
#include "tests/contract/described_members.h"
#include "tests/contract/described_surface.h"

namespace qortest {

namespace contract = qorcred::contract;

namespace {

using qorcred::ValueType;

std::string_view TypeName(ValueType type) {
  switch (type) {
    case ValueType::kBoolean:
      return "Boolean";
    case ValueType::kLong:
      return "Long";
    case ValueType::kString:
      return "text";
    case ValueType::kStringArray:
      return "array of texts";
    case ValueType::kObject:
      return "object";
    default:
      return "?";
  }
}

std::string_view DirectionName(contract::Direction direction) {
  switch (direction) {
    case contract::Direction::kIn:
      return "in";
    case contract::Direction::kOut:
      return "out";
    case contract::Direction::kInAndOut:
      return "in and out";
  }
  return "?";
}

std::string DefaultText(const qorcred::Parameter& parameter) {
  if (!parameter.IsOptional()) return {};
  const qorcred::Value omitted = parameter.Omitted();
  return omitted.Is(ValueType::kObject) ? "Nothing" : qorcred::ToText(omitted);
}

std::string Code(std::string_view text) {
  return "`" + std::string(text) + "`";
}

template <typename Texts>
std::string Codes(const Texts& texts) {
  std::string list;
  for (const auto& text : texts) list += (list.empty() ? "" : ", ") + Code(text);
  return list;
}

/// The text without the bars that would end a cell.
std::string Cell(std::string_view text) {
  std::string cell;
  for (const char each : text) {
    if (each == '|') cell += '\\';
    cell += each;
  }
  return cell;
}

std::string Call(const contract::Operation& operation, const qorcred::Member& member) {
  std::string call(operation.name);
  call += '(';
  const char* between = "";
  for (const qorcred::Parameter& parameter : member.parameters) {
    call += between + std::string(parameter.name);
    if (parameter.IsOptional()) call += " = " + DefaultText(parameter);
    between = ", ";
  }
  return call + ")";
}

std::string ArgumentTable(const contract::Operation& operation, const qorcred::Member& member) {
  if (operation.arguments.empty()) return {};
  std::string table = "| Argument | Type | | Default | Meaning |\n|---|---|---|---|---|\n";
  for (std::size_t at = 0; at < operation.arguments.size(); ++at) {
    const contract::Argument& argument = operation.arguments[at];
    const qorcred::Parameter& parameter = member.parameters[at];
    table += "| " + Code(argument.name) + " | " + std::string(TypeName(parameter.type)) + " | " +
             std::string(DirectionName(argument.direction)) + " | " + DefaultText(parameter) +
             " | " + Cell(argument.meaning) + " |\n";
  }
  return table + "\n";
}

std::string PartTable(const contract::Operation& operation) {
  std::string rows;
  if (!operation.creates.empty()) {
    rows += "| creates | " + Codes(operation.creates) + " |\n";
  }
  for (const contract::Part& part : operation.others) {
    const bool isComponent = part.names.find('.') != std::string_view::npos;
    rows += "| " + (isComponent ? Code(part.names) : std::string(part.names)) + " | " +
            Codes(part.members) + " |\n";
  }
  for (const contract::Part& part : operation.screen) {
    rows += "| screen: " + Codes(Items(part.names)) + " | " + Codes(part.members) + " |\n";
  }
  return rows.empty() ? rows : "| Touches | |\n|---|---|\n" + rows + "\n";
}

std::string ColumnList(std::string_view columns) {
  return columns.empty() ? std::string() : Codes(Items(columns));
}

std::string TableTable(const contract::Operation& operation) {
  std::string rows;
  for (const contract::Table& table : operation.tables) {
    std::string written = ColumnList(table.written);
    if (table.loses) written += written.empty() ? "loses rows" : "; loses rows";
    rows += "| " + Code(table.name) + " | " + ColumnList(table.read) + " | " + written + " |\n";
  }
  return rows.empty() ? rows : "| Table | Read | Written |\n|---|---|---|\n" + rows + "\n";
}

std::string MessageTable(const contract::Operation& operation) {
  if (operation.messages.empty()) return {};
  std::string rows = "| Style | Message |\n|---|---|\n";
  for (const contract::Message& message : operation.messages) {
    rows += "| " + std::to_string(message.style) + " | \"" + Cell(message.text) + "\" |\n";
  }
  return rows + "\n";
}

std::string AbsenceTable(const contract::Operation& operation) {
  if (operation.absences.empty()) return {};
  std::string rows = "| Without | Log | Result | What happens |\n|---|---|---|---|\n";
  for (const contract::Absence& absence : operation.absences) {
    rows += "| " + Code(absence.component);
    if (absence.sinceCreation) rows += " since the controller's creation";
    if (!absence.use.empty()) rows += ": " + std::string(absence.use);
    rows += " | " + (absence.failure == 0 ? std::string() : std::to_string(absence.failure)) +
            " | " + std::string(absence.result) + " | " + Cell(absence.effect) + " |\n";
  }
  return rows + "\n";
}

std::string ResultText(const contract::Operation& operation, const qorcred::Member& member) {
  std::string text = operation.result.empty() ? std::string("No result.")
                                              : "Result (" + std::string(TypeName(member.type)) +
                                                    "): " + std::string(operation.result) + ".";
  if (!operation.failures.empty()) text += " Failures: " + std::string(operation.failures);
  return text + "\n\n";
}

std::string OperationText(const contract::Class& of, const contract::Operation& operation) {
  std::string text = "### `" + std::string(of.name) + "." + std::string(operation.name) + "`\n\n" +
                     std::string(operation.purpose) + "\n\n";
  if (operation.name == contract::kCreation) {
    return "### Creation of `" + std::string(of.name) + "`\n\n" + std::string(operation.purpose) +
           "\n\n" + PartTable(operation) + AbsenceTable(operation);
  }
  const qorcred::Member& member = *qorcred::FindMember(MembersOf(of.name), operation.name);
  text += Code(Call(operation, member)) + "\n\n";
  text += ArgumentTable(operation, member);
  text += ResultText(operation, member);
  if (!operation.runs.empty()) {
    text += "Runs " + Codes(operation.runs) + ", with all that it touches.\n\n";
  }
  if (!operation.handedStatement.empty()) {
    text += "Runs the statement of " + Code(operation.handedStatement) + ".\n\n";
  }
  return text + PartTable(operation) + TableTable(operation) + MessageTable(operation) +
         AbsenceTable(operation);
}

/// What is used of one control or variable, and by which operations.
struct ScreenUse {
  std::vector<std::string> members;                       ///< in the order in which they come first
  std::map<std::string, std::pair<bool, bool>> accesses;  ///< get, put
  std::vector<std::string> operations;

  void Add(std::string_view member) {
    const auto drop = [&member](std::string_view ending) {
      if (!member.ends_with(ending)) return false;
      member.remove_suffix(std::min(ending.size() + 1, member.size()));
      return true;
    };
    const bool isPut = drop("put");
    const bool isGet = drop("get");
    const std::string name(member);
    if (std::find(members.begin(), members.end(), name) == members.end()) members.push_back(name);
    auto& [get, put] = accesses[name];
    get = get || isGet;
    put = put || isPut;
  }

  [[nodiscard]] std::vector<std::string> Members() const {
    std::vector<std::string> all;
    for (const std::string& name : members) {
      const auto& [get, put] = accesses.at(name);
      std::string text = name;
      if (get) text += text.empty() ? "get" : " get";
      if (put) text += text.empty() ? "put" : " put";
      all.push_back(std::move(text));
    }
    return all;
  }
};

std::string ScreenTable(const contract::Class& of) {
  std::map<std::string, ScreenUse> screen;
  for (const contract::Operation& operation : of.operations) {
    for (const contract::Part& part : operation.screen) {
      for (const std::string& name : Items(part.names)) {
        ScreenUse& use = screen[name];
        for (const std::string_view member : part.members) use.Add(member);
        if (use.operations.empty() || use.operations.back() != operation.name) {
          use.operations.emplace_back(operation.name);
        }
      }
    }
  }
  std::string rows;
  for (const auto& [name, use] : screen) {
    rows +=
        "| " + Code(name) + " | " + Codes(use.Members()) + " | " + Codes(use.operations) + " |\n";
  }
  return rows.empty()
             ? rows
             : "| On the screen | What is used of it | By |\n|---|---|---|\n" + rows + "\n";
}

std::string ClassText(const contract::Class& of) {
  std::string text = "## `" + std::string(of.name) + "`\n\n" + std::string(of.purpose) + "\n\n";
  text += "| Property | Type | Meaning |\n|---|---|---|\n";
  for (const contract::Property& property : of.properties) {
    const qorcred::Member& member = *qorcred::FindMember(MembersOf(of.name), property.name);
    text += "| " + Code(property.name) + " | " + std::string(TypeName(member.type)) + " | " +
            Cell(property.meaning) + " |\n";
  }
  text += "\n" + ScreenTable(of);
  for (const contract::Operation& operation : of.operations) text += OperationText(of, operation);
  return text;
}

struct ColumnUsers {
  std::vector<std::string> readers;
  std::vector<std::string> writers;
};

/// Every column with the operations that name it in their statements, by tables.
std::string StoreText() {
  std::map<std::string, std::map<std::string, ColumnUsers>> tables;
  std::map<std::string, std::vector<std::string>> losers;
  for (const contract::Class& of : DescribedClasses()) {
    for (const contract::Operation& operation : of.operations) {
      const std::string name = std::string(of.name) + "." + std::string(operation.name);
      for (const contract::Table& table : operation.tables) {
        auto& columns = tables[std::string(table.name)];
        for (const std::string& column : Items(table.read)) {
          columns[column].readers.push_back(name);
        }
        for (const std::string& column : Items(table.written)) {
          columns[column].writers.push_back(name);
        }
        if (table.loses) losers[std::string(table.name)].push_back(name);
      }
    }
  }
  std::string text =
      "## The data store\n\n"
      "Every column with the operations whose own statements name it; an operation that runs "
      "another "
      "needs the columns of that one, too. What the columns mean stands in "
      "[schema.md](schema.md).\n\n";
  for (const auto& [table, columns] : tables) {
    text += "### " + Code(table) + "\n\n";
    const auto lost = losers.find(table);
    if (lost != losers.end()) text += "Rows are deleted by " + Codes(lost->second) + ".\n\n";
    text += "| Column | Read by | Written by |\n|---|---|---|\n";
    for (const auto& [column, users] : columns) {
      text += "| " + Code(column) + " | " + Codes(users.readers) + " | " + Codes(users.writers) +
              " |\n";
    }
    text += "\n";
  }
  return text;
}

/// Every statement with the operation that composes it.
std::string StatementsText() {
  std::string text =
      "## The statements\n\n"
      "Every statement that an operation composes itself; one that runs another operation runs "
      "that "
      "one's, too. {Words} in braces stand for what differs from call to call, {'words'} for a "
      "text in "
      "apostrophes or the Null that stands for an empty one. In what the credential screen writes "
      "every \"-1\" has become Null, in what the directory-code screen writes every empty value. "
      "Rows "
      "are also deleted by `ExecuteDelete`, which gets no statement. The conditions of the reports "
      "stand in [behaviour.md](behaviour.md).\n\n";
  text += "| Operation | Statement |\n|---|---|\n";
  for (const contract::Statements& one : contract::AllStatements()) {
    for (const std::string_view statement : one.texts) {
      text += "| " + Code(std::string(one.className) + "." + std::string(one.operation)) + " | " +
              Code(statement) + " |\n";
    }
  }
  return text + "\n";
}

constexpr std::string_view kBeginning =
    R"(# The operations, one by one

What each operation is for, what its arguments mean, and everything that it touches of its host. The
tests hold this page against what the operations were seen to touch: it names all of it and nothing
else. In which order things happen, and what for, stands on the pages of the screens:
[host-credentials.md](host-credentials.md), [host-dir-codes.md](host-dir-codes.md) and
[host-reports.md](host-reports.md); what the parts must do stands in
[host-contract.md](host-contract.md), the columns in [schema.md](schema.md). All statements are listed
[at the end](#the-statements).

- An argument goes in, out or both ways. One that goes in comes back as it went, whatever its
  declaration ([reference.md](reference.md)); one that goes out may come in as anything of its type.
- Failures are trapped, unless the operation says otherwise: the operation ends, and the result is
  what it was by then.
- *Touches*: `Clear()` is a call, `Text get` and `Text put` are reads and writes, `Text get put`
  both; `get` alone reads a variable or a default member. Of a control array the members of its
  controls stand beside its own. Components and the connection take variables by reference: V is not
  looked at afterwards, B is read back; what has neither goes by value. The surroundings are the
  `Host` of a native host; the Windows component brings its own.
- *Tables*: read columns are selected, compared or sorted by. Names of tables and columns as the
  reference store spells them; letter case does not count.
- Messages have the title "Pello RT". 64 is information, 48 an exclamation, both with OK; 52 asks,
  with Yes and No. {Words} in braces stand for what differs.
- *Without*: what becomes of an operation of `clsCredential` and `clsDirCode` when a component is missing
  that it uses; the log is told 429 where it cannot be created, 91 where an object is not set. The reports
  are in [host-contract.md](host-contract.md#when-a-component-is-missing).

)";

}  // namespace

std::string OperationsPage() {
  std::string page(kBeginning);
  for (const contract::Class& of : DescribedClasses()) page += ClassText(of);
  page += StoreText();
  page += StatementsText();
  page.pop_back();  // the blank line at the end
  return page;
}

}  // namespace qortest
