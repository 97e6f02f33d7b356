// What a report prints as CSV, an import reads from standard input.
#include <gmock/gmock.h>

#include "tests/host/cli/import_fixture.h"

namespace qorhost::test {
namespace {

class RoundTrip : public ImportFixture {};

TEST_F(RoundTrip, APrintedReportIsImportedFromStandardInput) {
  const std::vector<std::string> report{"--unit", "2", "report", "dircodes", "--format", "csv"};
  const std::string exported = Run(report).out;
  EXPECT_NE(exported, "");
  Change("DELETE FROM DIRECTORYCODE WHERE UNITKEY=2");
  ASSERT_NE(Run(report).out, exported);

  const Outcome outcome = Run({"--unit", "2", "dircodes", "import", "-"}, exported);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out, "Imported 6 directory codes, 0 lines refused, in unit 2, Linden Park.\n");
  EXPECT_EQ(Run(report).out, exported);
}

}  // namespace
}  // namespace qorhost::test
