// The description of each operation against what the tour sees it touch: its trace is replayed on
// controllers that write down what they touch.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "contract/contract.h"
#include "tests/contract/described_surface.h"
#include "tests/contract/undescribed.h"
#include "tests/host/cli/run_fixture.h"
#include "tests/support/noted_by_name.h"
#include "tests/support/surface_record.h"
#include "tests/trace/trace_replay.h"

namespace qortest {
namespace {

namespace contract = qorcred::contract;

class TourSurface : public qorhost::test::RunFixture {
 protected:
  /// What the tour's operations touch; the tour runs once.
  [[nodiscard]] const SeenOperations& Seen() {
    static const SeenOperations seen = [this] {
      EXPECT_EQ(Run({"--trace-file", File("tour.txt"), "tour"}).status, 0);
      std::ifstream file(File("tour.txt"));
      std::vector<std::string> trace;
      for (std::string line; std::getline(file, line);) trace.push_back(line);
      ReplayOn(MakeNotedController, trace);
      return SeenIn(SurfaceRecord::Instance().Touches());
    }();
    return seen;
  }

  static std::vector<std::string> Undescribed(const contract::Class& of,
                                              const contract::Operation& operation,
                                              const qortest::Seen& seen) {
    std::vector<std::string> all = UndescribedSurface(of, operation, seen);
    for (const auto& more :
         {UndescribedMessages(of, operation, seen), UndescribedStatements(of, operation, seen)}) {
      all.insert(all.end(), more.begin(), more.end());
    }
    return all;
  }
};

TEST_F(TourSurface, IsNamedByTheDescriptions) {
  for (const contract::Class& of : DescribedClasses()) {
    for (const contract::Operation& operation : of.operations) {
      for (const std::string& sentence : Undescribed(of, operation, Seen().Of(of, operation))) {
        ADD_FAILURE() << sentence;
      }
    }
  }
  for (const std::string& sentence : UndescribedOperations(DescribedClasses(), Seen())) {
    ADD_FAILURE() << sentence;
  }
  for (const std::string& refused : Seen().refused) ADD_FAILURE() << refused;
}

// Without a part of its description an operation of the tour is caught touching it.
TEST_F(TourSurface, IsToldWhereADescriptionLeavesItOut) {
  for (const contract::Class& of : DescribedClasses()) {
    std::size_t operationsOfTheTour = 0;
    for (const contract::Operation& operation : of.operations) {
      const qortest::Seen& seen = Seen().Of(of, operation);
      if (seen.surface.empty()) continue;
      ++operationsOfTheTour;
      contract::Operation bare;
      bare.name = operation.name;
      EXPECT_EQ(UndescribedSurface(of, bare, seen).size(), seen.surface.size()) << operation.name;
    }
    EXPECT_GE(operationsOfTheTour, 2U) << of.name;
  }
}

TEST_F(TourSurface, HasControlsTablesAndMessagesThatAreMissedOneByOne) {
  const contract::Class of = contract::Credential();
  const contract::Operation save = *FindOperation(of, "pbSave");
  const qortest::Seen& seen = Seen().Of(of, save);
  const auto isTold = [](const std::vector<std::string>& sentences, std::string_view what) {
    return std::any_of(sentences.begin(), sentences.end(), [what](const std::string& sentence) {
      return sentence.find(what) != std::string::npos;
    });
  };

  contract::Operation without = save;
  std::erase_if(without.screen, [](const contract::Part& part) {
    return part.names.find("txtPINStart") != std::string_view::npos;
  });
  EXPECT_TRUE(isTold(UndescribedSurface(of, without, seen), "`screen txtpinstart.text get`"));

  without = save;
  std::erase_if(without.tables, [](const contract::Table& table) {
    return qorcred::SameMember(table.name, "CredentialBank");
  });
  EXPECT_TRUE(
      isTold(UndescribedSurface(of, without, seen), "`table credentialbank.pinno written`"));

  without = save;
  without.messages.clear();
  EXPECT_FALSE(UndescribedMessages(of, without, seen).empty());
}

TEST(NotedReplay, OfAnOperationThatAsksForSomethingElseIsRefused) {
  const std::string select =
      R"(  objDB@3.ExecuteSelect(conn: objConn@2, sql: "", errorFlag: False, errorText: "") -> rows@4)";
  const std::vector<std::string> trace{
      "new clsCredentialReport@1",
      R"(clsCredentialReport@1.gstrRIDsForDeletion = "101")",
      "clsCredentialReport@1.pbValidate(objConn: objConn@2, lngUnitKey: 3, objDB: objDB@3)",
      select,
      R"(  rows@4(row: 0, column: 0) -> "")",
      "-> True"};
  EXPECT_NO_THROW(ReplayOn(MakeNotedController, trace));
  std::vector<std::string> longer = trace;
  longer.insert(longer.end() - 1, "  rows@4(row: 1, column: 0) -> \"\"");
  EXPECT_THROW(ReplayOn(MakeNotedController, longer), std::runtime_error);
  std::vector<std::string> shorter = trace;
  shorter.erase(shorter.end() - 2);
  EXPECT_THROW(ReplayOn(MakeNotedController, shorter), std::runtime_error);
}

}  // namespace
}  // namespace qortest
