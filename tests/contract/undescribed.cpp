#include "tests/contract/undescribed.h"

#include <algorithm>
#include <stdexcept>

#include "contract/statements.h"
#include "tests/contract/described_surface.h"
#include "tests/support/noting_object.h"

namespace qortest {

namespace contract = qorcred::contract;

namespace {

/// For a statement that cannot be read: the names alone of tables and columns.
Surface NamesIn(const Surface& surface) {
  Surface names;
  for (const std::string& line : surface) {
    if (!line.starts_with("table ")) continue;
    const std::string described = line.substr(6, line.rfind(' ') - 6);
    const std::size_t point = described.find('.');
    names.insert("name " + described.substr(0, point));
    if (point != std::string::npos) names.insert("name " + described.substr(point + 1));
  }
  return names;
}

// What follows a control's name in a line: a member, an index, or the use of its default member.
constexpr std::string_view kBehindAName = ".( ";

/// A control that is fetched from its screen counts as named when any of its members is.
bool IsNamedControl(const std::string& line, const Surface& named) {
  return std::any_of(kBehindAName.begin(), kBehindAName.end(), [&](char mark) {
    const auto next = named.lower_bound(line + mark);
    return line.starts_with("screen ") && next != named.end() && next->starts_with(line + mark);
  });
}

std::string Sentence(const contract::Class& of, const contract::Operation& operation,
                     std::string_view does, const std::string& what, const std::string& test) {
  return std::string(of.name) + "." + std::string(operation.name) + " " + std::string(does) + " `" +
         what + "` (" + test + "), which its description does not name";
}

}  // namespace

const Seen& SeenOperations::Of(const contract::Class& of,
                               const contract::Operation& operation) const {
  static const Seen nothing;
  const auto found = operations.find({std::string(of.name), std::string(operation.name)});
  return found == operations.end() ? nothing : found->second;
}

SeenOperations SeenIn(const std::vector<Touch>& touches) {
  SeenOperations all;
  for (const Touch& touch : touches) {
    Seen& seen = all.operations[{touch.className, touch.operation}];
    if (touch.part == part::kMessage) seen.messages.emplace(touch.what, touch.test);
    if (touch.part == part::kStatement && touch.what != kHandedOver) {
      seen.statements.emplace(touch.what, touch.test);
    }
    for (const std::string& line : TouchedSurface(touch, all.refused)) {
      seen.surface.emplace(line, touch.test);
    }
  }
  return all;
}

std::vector<const contract::Operation*> WithThoseThatItRuns(const contract::Class& of,
                                                            const contract::Operation& operation) {
  std::vector<const contract::Operation*> all{&operation};
  for (const std::string_view name : operation.runs) {
    const contract::Operation* runs = FindOperation(of, name);
    if (runs == nullptr) {
      throw std::logic_error(std::string(of.name) + "." + std::string(operation.name) + " runs " +
                             std::string(name) + ", which is none");
    }
    const auto inner = WithThoseThatItRuns(of, *runs);
    all.insert(all.end(), inner.begin(), inner.end());
  }
  return all;
}

std::vector<std::string_view> StatementsOf(const contract::Class& of,
                                           const contract::Operation& operation) {
  for (const contract::Statements& one : contract::AllStatements()) {
    if (one.className == of.name && one.operation == operation.name) return one.texts;
  }
  return {};
}

std::vector<std::string> UndescribedSurface(const contract::Class& of,
                                            const contract::Operation& operation,
                                            const Seen& seen) {
  Surface named;
  for (const contract::Operation* one : WithThoseThatItRuns(of, operation)) {
    named.merge(DescribedSurface(*one));
  }
  named.merge(NamesIn(named));
  std::vector<std::string> undescribed;
  for (const auto& [line, test] : seen.surface) {
    if (named.count(line) != 0 || IsNamedControl(line, named)) continue;
    undescribed.push_back(Sentence(of, operation, "touches", line, test));
  }
  return undescribed;
}

std::vector<std::string> UndescribedMessages(const contract::Class& of,
                                             const contract::Operation& operation,
                                             const Seen& seen) {
  std::vector<std::string> described;
  for (const contract::Operation* one : WithThoseThatItRuns(of, operation)) {
    for (const contract::Message& message : one->messages) {
      described.push_back(std::to_string(message.style) + " " + std::string(message.text));
    }
  }
  std::vector<std::string> undescribed;
  for (const auto& [text, test] : seen.messages) {
    const auto fits = [&text = text](const std::string& one) { return IsMessage(text, one); };
    if (std::none_of(described.begin(), described.end(), fits)) {
      undescribed.push_back(Sentence(of, operation, "shows", text, test));
    }
  }
  return undescribed;
}

std::vector<std::string> UndescribedStatements(const contract::Class& of,
                                               const contract::Operation& operation,
                                               const Seen& seen) {
  std::vector<std::string_view> described;
  for (const contract::Operation* one : WithThoseThatItRuns(of, operation)) {
    const auto texts = StatementsOf(of, *one);
    described.insert(described.end(), texts.begin(), texts.end());
  }
  std::vector<std::string> undescribed;
  for (const auto& [text, test] : seen.statements) {
    const auto fits = [&text = text](std::string_view one) { return IsMessage(text, one); };
    if (std::none_of(described.begin(), described.end(), fits)) {
      undescribed.push_back(Sentence(of, operation, "runs", text, test));
    }
  }
  return undescribed;
}

std::vector<std::string> UndescribedOperations(const std::vector<contract::Class>& classes,
                                               const SeenOperations& seen) {
  std::vector<std::string> undescribed;
  for (const auto& [operation, one] : seen.operations) {
    const auto found =
        std::find_if(classes.begin(), classes.end(),
                     [&name = operation.first](const auto& each) { return each.name == name; });
    if (found == classes.end() || FindOperation(*found, operation.second) == nullptr) {
      undescribed.push_back(operation.first + "." + operation.second + " is not described");
    }
  }
  return undescribed;
}

}  // namespace qortest
