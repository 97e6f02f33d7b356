// What people have written down by hand - the pages that name members with their arguments, and the
// names that traces give to arguments - against the member tables and the descriptions.
#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "contract/contract.h"
#include "frame/convert.h"
#include "frame/object.h"
#include "tests/contract/described_members.h"
#include "tests/contract/described_surface.h"
#include "trace/argument_names.h"

namespace qortest {
namespace {

namespace contract = qorcred::contract;
using qorcred::Member;
using qorcred::Parameter;
using qorcred::ValueType;

/// "Name(one, two)" taken apart.
struct Signature {
  std::string name;
  std::vector<std::string> arguments;
};

std::optional<Signature> SignatureIn(const std::string& text) {
  static const std::regex form(R"((?:\w+\.)*(\w+)\(([^()]*)\)(?: get)?(?: put)?)");
  std::smatch parts;
  if (!std::regex_match(text, parts, form)) return std::nullopt;
  return Signature{parts[1], Items(parts[2].str())};
}

/// The texts between backticks of a page, in one line each, without its samples.
std::vector<std::string> CodesIn(const std::string& page) {
  std::string text;
  bool inSample = false;
  for (std::size_t at = 0; at < page.size();) {
    const std::size_t end = std::min(page.find('\n', at), page.size());
    const std::string_view line(page.data() + at, end - at);
    at = end + 1;
    if (line.starts_with("```")) {
      inSample = !inSample;
      continue;
    }
    if (inSample) continue;
    const std::size_t first = std::min(line.find_first_not_of(' '), line.size());
    (text += line.substr(first)) += ' ';
  }
  std::vector<std::string> codes;
  for (std::size_t open = text.find('`'); open != std::string::npos;) {
    const std::size_t close = text.find('`', open + 1);
    if (close == std::string::npos) break;
    codes.push_back(text.substr(open + 1, close - open - 1));
    open = text.find('`', close + 1);
  }
  return codes;
}

// The pages that are not printed from data themselves.
constexpr std::string_view kPages[] = {
    "behaviour.md",      "deployment.md",   "host-contract.md", "host-credentials.md",
    "host-dir-codes.md", "host-reports.md", "integration.md",   "native.md",
    "schema.md",         "trace.md"};

std::string PageText(std::string_view name) {
  std::ifstream file(std::string(QORCRED_DOCS_DIR) + "/" + std::string(name), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// What the pages call the arguments of an operation in a call, and what these are in the tables.
const std::map<std::string_view, std::set<std::string_view>>& WordsForArguments() {
  static const std::map<std::string_view, std::set<std::string_view>> words{
      {"conn", {"objConn", "objCon"}},
      {"unitKey", {"lngUnitKey", "intUnitKey"}},
      {"rid", {"lngRID", "lngPreviousRID", "lngOldValue"}},
      {"number", {"lngPINNO"}},
      {"isTenantCreating", {"blnIsTBL"}},
      {"code", {"strDirCode"}},
      {"index", {"prevDirCodeIndex"}},
      {"rows", {"lngRowsDeleted"}},
      {"table", {"arrXDBTx", "arrXDBDirCode"}},
      {"sql", {"strSQL"}},
      {"grid", {"objGrid"}},
      {"layout", {"objColGrid"}},
      {"item", {"colValueItem"}},
  };
  return words;
}

bool IsNumber(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool FitsAsValue(std::string_view given, const Parameter& parameter) {
  if (given == "True" || given == "False" || given == "True or False") {
    return parameter.type == ValueType::kBoolean;
  }
  if (IsNumber(given)) return parameter.type == ValueType::kLong;
  const auto word = WordsForArguments().find(given);
  return word != WordsForArguments().end() && word->second.count(parameter.name) != 0;
}

/// The parameter as a declaration has it: "lngRID = -1".
std::string Declared(const Parameter& parameter) {
  std::string text(parameter.name);
  if (!parameter.IsOptional()) return text;
  const qorcred::Value omitted = parameter.Omitted();
  return text + " = " + (omitted.Is(ValueType::kObject) ? "Nothing" : qorcred::ToText(omitted));
}

/// A page either declares an operation with all its parameters, or calls it with values and with
/// words that stand for variables.
bool FitsOperation(const Signature& signature, const Member& member) {
  const auto names = [&](const Parameter& parameter) {
    return std::any_of(signature.arguments.begin(), signature.arguments.end(),
                       [&](const std::string& given) {
                         return given.substr(0, given.find(' ')) == parameter.name;
                       });
  };
  if (std::any_of(member.parameters.begin(), member.parameters.end(), names)) {
    std::vector<std::string> declared;
    for (const Parameter& parameter : member.parameters) declared.push_back(Declared(parameter));
    return signature.arguments == declared;
  }
  if (signature.arguments.size() > member.parameters.size()) return false;
  for (std::size_t at = 0; at < member.parameters.size(); ++at) {
    const Parameter& parameter = member.parameters[at];
    if (at >= signature.arguments.size()) {
      if (!parameter.IsOptional()) return false;
    } else if (!FitsAsValue(signature.arguments[at], parameter)) {
      return false;
    }
  }
  return true;
}

/// Without the marks of what goes by reference.
std::string Unmarked(const std::string& argument) {
  const bool isMarked = argument.ends_with(" V") || argument.ends_with(" B");
  return isMarked ? argument.substr(0, argument.size() - 2) : argument;
}

/// Every call of a member that the descriptions name, with its arguments.
struct DescribedCalls {
  std::multimap<std::string, Signature> byName;
  std::set<std::string> ofComponents;  ///< as they are described, marks and all
  std::set<std::string> screenNames;
};

const DescribedCalls& Described() {
  static const DescribedCalls calls = [] {
    DescribedCalls all;
    const auto take = [&all](const contract::Part& part) {
      const bool marks =
          part.names == contract::kConnection || part.names.find('.') != std::string_view::npos;
      for (const std::string_view member : part.members) {
        const std::optional<Signature> signature = SignatureIn(std::string(member));
        if (!signature) continue;
        all.byName.emplace(signature->name, *signature);
        if (marks) all.ofComponents.emplace(member);
      }
    };
    for (const contract::Class& of : DescribedClasses()) {
      for (const contract::Operation& operation : of.operations) {
        for (const contract::Part& part : operation.others) take(part);
        for (const contract::Part& part : operation.screen) {
          take(part);
          for (const std::string& name : Items(part.names)) all.screenNames.insert(name);
        }
      }
    }
    return all;
  }();
  return calls;
}

bool FitsCall(const Signature& signature, const Signature& described) {
  const auto fits = [](const std::string& given, const std::string& one) {
    return Unmarked(given) == Unmarked(one) || IsNumber(given);
  };
  return signature.arguments.size() == described.arguments.size() &&
         std::equal(signature.arguments.begin(), signature.arguments.end(),
                    described.arguments.begin(), fits);
}

/// What the pages name beside members: functions of the library in C++, of SQL and of scripts.
bool IsNoMember(const std::string& name) {
  static const std::set<std::string> others{"val",     "iif",           "Format", "UCase",
                                            "Item",    "type",          "size",   "PassingOf",
                                            "ToCivil", "RequireObject", "Value"};
  return others.count(name) != 0;
}

/// What is wrong with a signature; empty when nothing is.
std::string FaultOf(const Signature& signature) {
  std::vector<const Member*> operations;
  for (const contract::Class& of : DescribedClasses()) {
    const Member* member = qorcred::FindMember(MembersOf(of.name), signature.name);
    if (member != nullptr && member->name == signature.name) operations.push_back(member);
  }
  if (!operations.empty()) {
    const auto fits = [&](const Member* member) { return FitsOperation(signature, *member); };
    return std::any_of(operations.begin(), operations.end(), fits)
               ? ""
               : "is other than the operation's parameters";
  }
  const auto [first, last] = Described().byName.equal_range(signature.name);
  if (first != last) {
    const auto fits = [&](const auto& one) { return FitsCall(signature, one.second); };
    return std::any_of(first, last, fits) ? "" : "is other than the member that is described";
  }
  const bool isOther =
      IsNoMember(signature.name) || Described().screenNames.count(signature.name) != 0;
  return isOther ? "" : "is no member that is known";
}

TEST(SignaturesOfThePages, AreThoseOfTheTables) {
  std::size_t read = 0;
  for (const std::string_view page : kPages) {
    const std::string text = PageText(page);
    ASSERT_FALSE(text.empty()) << page;
    for (const std::string& code : CodesIn(text)) {
      const std::optional<Signature> signature = SignatureIn(code);
      if (!signature) continue;
      ++read;
      EXPECT_EQ(FaultOf(*signature), "") << page << ": `" << code << "`";
    }
  }
  EXPECT_GE(read, 100U);
}

// Names without arguments: operations and components' members by their beginnings, controls and
// variables of the screens by theirs.
TEST(NamesOnThePages, AreKnown) {
  static const std::regex member("(pb|pv|Execute)[A-Z]\\w*");
  static const std::regex control(
      "(cbo|txt|chk|dtp|lbl|opt|lst|cmd|pvn|gstr|gbln|glng)[A-Za-z]\\w*");
  std::set<std::string> members;
  std::set<std::string> onScreens = Described().screenNames;
  for (const contract::Class& of : DescribedClasses()) {
    for (const Member& one : MembersOf(of.name)) {
      members.emplace(one.name);
      onScreens.emplace(one.name);
      for (const Parameter& parameter : one.parameters) onScreens.emplace(parameter.name);
    }
  }
  for (const auto& [name, signature] : Described().byName) members.insert(name);
  for (const std::string_view page : kPages) {
    for (const std::string& code : CodesIn(PageText(page))) {
      if (std::regex_match(code, member)) {
        EXPECT_EQ(members.count(code), 1U) << page << ": `" << code << "`";
      } else if (std::regex_match(code, control)) {
        EXPECT_EQ(onScreens.count(code), 1U) << page << ": `" << code << "`";
      }
    }
  }
}

TEST(ThePageOfTheContract, HasEveryMemberOfEveryComponentAsItIsCalled) {
  const std::vector<std::string> codes = CodesIn(PageText("host-contract.md"));
  std::set<std::string> calls;
  for (const std::string& code : codes) {
    const std::optional<Signature> signature = SignatureIn(code);
    if (!signature) continue;
    const auto described = Described().byName.find(signature->name);
    if (described == Described().byName.end()) continue;
    calls.insert(code);
  }
  for (const std::string& call : Described().ofComponents) {
    EXPECT_EQ(calls.count(call), 1U) << "host-contract.md lacks `" << call << "`";
  }
  // Marks and all.
  for (const std::string& call : calls) {
    const bool isMarked =
        call.find(" V") != std::string::npos || call.find(" B") != std::string::npos;
    EXPECT_TRUE(!isMarked || Described().ofComponents.count(call) == 1) << call;
  }
}

TEST(SignaturesOfThePages, ThatAreWrongAreFound) {
  const auto faultOf = [](const std::string& code) { return FaultOf(*SignatureIn(code)); };
  EXPECT_EQ(faultOf("pbDelete(objConn, lngUnitKey, lngRID)"), "");
  EXPECT_NE(faultOf("pbDelete(objConn, lngRID, lngUnitKey)"), "") << "order";
  EXPECT_NE(faultOf("pbDelete(objConn, lngUnitKey, lngRid)"), "") << "name";
  EXPECT_NE(faultOf("pbDelete(objConn, lngUnitKey)"), "") << "one is missing";
  EXPECT_EQ(faultOf("pbRetrieveCredentials(objConn, lngUnitKey, lngRID = -1, lngPreviousRID = 0)"),
            "");
  EXPECT_NE(faultOf("pbRetrieveCredentials(objConn, lngUnitKey, lngRID = 0, lngPreviousRID = 0)"),
            "")
      << "default";
  EXPECT_EQ(faultOf("pbUpdatePinNo(conn, number, unitKey)"), "");
  EXPECT_NE(faultOf("pbUpdatePinNo(conn, unitKey, number)"), "") << "order of a call";
  EXPECT_NE(faultOf("pbTransmitterCtls(0)"), "") << "type";
  EXPECT_EQ(faultOf("ExecuteDelete(conn V, table, rid V, errorFlag B, errorText B)"), "");
  EXPECT_NE(faultOf("ExecuteDelete(conn, rid, table, errorFlag, errorText)"), "");
  EXPECT_NE(faultOf("RemoveItem(row)"), "");
  EXPECT_EQ(faultOf("LowerBound(1)"), "");
  EXPECT_NE(faultOf("LowerBound(1, 2)"), "");
  EXPECT_NE(faultOf("pbNoSuchOperation(conn)"), "");
}

// A trace names each argument as the descriptions do, and has names of its own for those that are
// always the same value.
TEST(ArgumentNamesOfTraces, AreThoseOfTheDescriptions) {
  for (const auto& [name, signature] : Described().byName) {
    if (signature.arguments.empty()) continue;
    const bool isService = name == "DateText" || name == "TextToAnsi" || name == "AnsiToText";
    if (isService) continue;  // tracer_test.cpp has their names
    for (std::size_t at = 0; at < signature.arguments.size(); ++at) {
      const std::string described = Unmarked(signature.arguments[at]);
      const std::string_view told = qorcred::trace::ArgumentName(name, at);
      if (described == "True" || IsNumber(described)) {
        EXPECT_NE(told, "") << name << ", argument " << at + 1;
      } else {
        EXPECT_EQ(told, described) << name << ", argument " << at + 1;
      }
    }
  }
}

TEST(ArgumentNamesOfTraces, EndWhereTheArgumentsDo) {
  for (const std::string_view name : qorcred::trace::MembersWithArgumentNames()) {
    const auto [first, last] = Described().byName.equal_range(std::string(name));
    ASSERT_NE(first, last) << name << " is described nowhere";
    std::size_t most = 0;
    for (auto one = first; one != last; ++one) {
      most = std::max(most, one->second.arguments.size());
    }
    EXPECT_NE(qorcred::trace::ArgumentName(name, most - 1), "") << name;
    EXPECT_EQ(qorcred::trace::ArgumentName(name, most), "") << name;
  }
}

}  // namespace
}  // namespace qortest
