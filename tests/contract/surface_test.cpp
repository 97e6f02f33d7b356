// The description of each operation against what the library's tests saw it touch: neither may have
// what the other lacks. Reads the files that the tests named in QORCRED_SURFACES wrote.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "contract/contract.h"
#include "contract/statements.h"
#include "tests/contract/described_surface.h"
#include "tests/support/noting_object.h"
#include "tests/support/surface_record.h"

namespace qortest {
namespace {

namespace contract = qorcred::contract;

/// What the tests saw of one operation.
struct Seen {
  std::map<std::string, std::string> surface;  ///< with the test that touched it first
  std::map<std::string, std::string> messages;
  std::map<std::string, std::string> statements;
};

using SeenOperations = std::map<std::pair<std::string, std::string>, Seen>;

/// Everything that the operations touched, and the statements that could not be read.
struct Record {
  SeenOperations operations;
  std::vector<std::string> refused;
};

std::vector<Touch> AllTouches() {
  std::vector<Touch> all;
  for (const std::string& name : Items(QORCRED_SURFACES)) {
    std::ifstream file(name, std::ios::binary);
    EXPECT_TRUE(file) << "no " << name << ": run this test with ctest, which runs the others first";
    const std::vector<Touch> touches = ReadTouches(file);
    EXPECT_FALSE(touches.empty()) << name;
    all.insert(all.end(), touches.begin(), touches.end());
  }
  return all;
}

const Record& TheRecord() {
  static const Record record = [] {
    Record all;
    for (const Touch& touch : AllTouches()) {
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
  }();
  return record;
}

const Seen& SeenOf(const contract::Class& of, const contract::Operation& operation) {
  static const Seen nothing;
  const auto found =
      TheRecord().operations.find({std::string(of.name), std::string(operation.name)});
  return found == TheRecord().operations.end() ? nothing : found->second;
}

/// The operation and those that it runs, with those that they run.
std::vector<const contract::Operation*> WithThoseThatItRuns(const contract::Class& of,
                                                            const contract::Operation& operation) {
  std::vector<const contract::Operation*> all{&operation};
  for (const std::string_view name : operation.runs) {
    const contract::Operation* runs = FindOperation(of, name);
    if (runs == nullptr) {
      ADD_FAILURE() << of.name << "." << operation.name << " runs " << name << ", which is none";
      continue;
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

class SurfaceTest : public ::testing::TestWithParam<std::size_t> {
 protected:
  [[nodiscard]] const contract::Class& Described() const { return DescribedClasses()[GetParam()]; }
};

TEST_P(SurfaceTest, NamesWhatIsTouched) {
  for (const contract::Operation& operation : Described().operations) {
    Surface named;
    for (const contract::Operation* one : WithThoseThatItRuns(Described(), operation)) {
      named.merge(DescribedSurface(*one));
    }
    named.merge(NamesIn(named));
    for (const auto& [line, test] : SeenOf(Described(), operation).surface) {
      EXPECT_TRUE(named.count(line) != 0 || IsNamedControl(line, named))
          << Described().name << "." << operation.name << " touches `" << line << "` (" << test
          << "), which its description does not name";
    }
  }
}

TEST_P(SurfaceTest, NamesNothingElse) {
  for (const contract::Operation& operation : Described().operations) {
    const Seen& seen = SeenOf(Described(), operation);
    for (const std::string& line : DescribedSurface(operation)) {
      EXPECT_TRUE(seen.surface.count(line) != 0)
          << Described().name << "." << operation.name << " is described to touch `" << line
          << "`, which no test saw";
    }
  }
}

TEST_P(SurfaceTest, NamesTheMessages) {
  for (const contract::Operation& operation : Described().operations) {
    std::vector<contract::Message> described;
    for (const contract::Operation* one : WithThoseThatItRuns(Described(), operation)) {
      described.insert(described.end(), one->messages.begin(), one->messages.end());
    }
    std::set<std::string> shown;
    for (const auto& [text, test] : SeenOf(Described(), operation).messages) {
      const auto found = std::find_if(
          described.begin(), described.end(), [&text = text](const contract::Message& message) {
            return IsMessage(text, std::to_string(message.style) + " " + std::string(message.text));
          });
      if (found == described.end()) {
        ADD_FAILURE() << Described().name << "." << operation.name << " shows `" << text << "` ("
                      << test << "), which its description does not name";
      } else {
        shown.emplace(found->text);
      }
    }
    for (const contract::Message& message : operation.messages) {
      EXPECT_TRUE(shown.count(std::string(message.text)) != 0)
          << Described().name << "." << operation.name << " is described to show `" << message.text
          << "`, which no test saw";
    }
  }
}

TEST_P(SurfaceTest, NamesTheStatements) {
  for (const contract::Operation& operation : Described().operations) {
    std::vector<std::string_view> described;
    for (const contract::Operation* one : WithThoseThatItRuns(Described(), operation)) {
      const auto texts = StatementsOf(Described(), *one);
      described.insert(described.end(), texts.begin(), texts.end());
    }
    std::set<std::string_view> run;
    for (const auto& [text, test] : SeenOf(Described(), operation).statements) {
      const auto fits = [&text = text](std::string_view one) { return IsMessage(text, one); };
      if (std::none_of(described.begin(), described.end(), fits)) {
        ADD_FAILURE() << Described().name << "." << operation.name << " runs `" << text << "` ("
                      << test << "), which its description does not name";
      }
      std::copy_if(described.begin(), described.end(), std::inserter(run, run.end()), fits);
    }
    for (const std::string_view one : StatementsOf(Described(), operation)) {
      EXPECT_TRUE(run.count(one) != 0) << Described().name << "." << operation.name
                                       << " is described to run `" << one << "`, which no test saw";
    }
  }
}

// What an operation is said to run has to account for something that it touches.
TEST_P(SurfaceTest, NamesTheOperationsThatAnotherRuns) {
  for (const contract::Operation& operation : Described().operations) {
    const Surface own = DescribedSurface(operation);
    for (const std::string_view name : operation.runs) {
      const contract::Operation* runs = FindOperation(Described(), name);
      ASSERT_NE(runs, nullptr) << name;
      const Surface inner = DescribedSurface(*runs);
      const auto& seen = SeenOf(Described(), operation).surface;
      EXPECT_TRUE(std::any_of(seen.begin(), seen.end(),
                              [&](const auto& touched) {
                                return own.count(touched.first) == 0 &&
                                       inner.count(touched.first) != 0;
                              }))
          << Described().name << "." << operation.name << " is described to run " << name;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Of, SurfaceTest, ::testing::Range(std::size_t{0}, std::size_t{4}),
                         [](const auto& test) {
                           return std::string(DescribedClasses()[test.param].name);
                         });

TEST(SurfaceRecordOfTheTests, HasNoOperationThatIsNotDescribed) {
  for (const auto& [operation, seen] : TheRecord().operations) {
    const auto found = std::find_if(
        DescribedClasses().begin(), DescribedClasses().end(),
        [&name = operation.first](const contract::Class& one) { return one.name == name; });
    ASSERT_NE(found, DescribedClasses().end()) << operation.first;
    EXPECT_NE(FindOperation(*found, operation.second), nullptr)
        << operation.first << "." << operation.second;
  }
}

TEST(SurfaceRecordOfTheTests, HasStatementsThatCanBeRead) {
  for (const std::string& refused : TheRecord().refused) ADD_FAILURE() << refused;
}

}  // namespace
}  // namespace qortest
