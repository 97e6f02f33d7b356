// The description of each operation against what the library's tests saw it touch: neither may have
// what the other lacks. Reads the files that the tests named in QORCRED_SURFACES wrote.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "contract/contract.h"
#include "tests/contract/described_surface.h"
#include "tests/contract/undescribed.h"
#include "tests/support/surface_record.h"

namespace qortest {
namespace {

namespace contract = qorcred::contract;

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

const SeenOperations& TheRecord() {
  static const SeenOperations record = SeenIn(AllTouches());
  return record;
}

const Seen& SeenOf(const contract::Class& of, const contract::Operation& operation) {
  return TheRecord().Of(of, operation);
}

void ExpectNone(const std::vector<std::string>& undescribed) {
  for (const std::string& sentence : undescribed) ADD_FAILURE() << sentence;
}

/// Whether any of the texts that were seen is the one described.
bool WasSeen(const std::map<std::string, std::string>& texts, std::string_view described) {
  return std::any_of(texts.begin(), texts.end(),
                     [described](const auto& one) { return IsMessage(one.first, described); });
}

class SurfaceTest : public ::testing::TestWithParam<std::size_t> {
 protected:
  [[nodiscard]] const contract::Class& Described() const { return DescribedClasses()[GetParam()]; }
};

TEST_P(SurfaceTest, NamesWhatIsTouched) {
  for (const contract::Operation& operation : Described().operations) {
    ExpectNone(UndescribedSurface(Described(), operation, SeenOf(Described(), operation)));
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
    const Seen& seen = SeenOf(Described(), operation);
    ExpectNone(UndescribedMessages(Described(), operation, seen));
    for (const contract::Message& message : operation.messages) {
      const std::string described = std::to_string(message.style) + " " + std::string(message.text);
      EXPECT_TRUE(WasSeen(seen.messages, described))
          << Described().name << "." << operation.name << " is described to show `" << described
          << "`, which no test saw";
    }
  }
}

TEST_P(SurfaceTest, NamesTheStatements) {
  for (const contract::Operation& operation : Described().operations) {
    const Seen& seen = SeenOf(Described(), operation);
    ExpectNone(UndescribedStatements(Described(), operation, seen));
    for (const std::string_view one : StatementsOf(Described(), operation)) {
      EXPECT_TRUE(WasSeen(seen.statements, one))
          << Described().name << "." << operation.name << " is described to run `" << one
          << "`, which no test saw";
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
  ExpectNone(UndescribedOperations(DescribedClasses(), TheRecord()));
}

TEST(SurfaceRecordOfTheTests, HasStatementsThatCanBeRead) {
  for (const std::string& refused : TheRecord().refused) ADD_FAILURE() << refused;
}

}  // namespace
}  // namespace qortest
