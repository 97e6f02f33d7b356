#include "host/store/postgres/inline_values.h"

#include <gtest/gtest.h>

#include <vector>

namespace qorhost::postgres {
namespace {

TEST(InlineValues, StandWhereTheirParametersStood) {
  const std::vector<Sent> values{"7", std::nullopt, "it's \\ \"$1\""};
  EXPECT_EQ(WithValues("SELECT $3::text, $1::int4, $2::text", values),
            "SELECT 'it''s \\ \"$1\"'::text, '7'::int4, NULL::text");
}

TEST(InlineValues, LeaveNamesAndTextsAlone) {
  const std::vector<Sent> values{"7"};
  EXPECT_EQ(WithValues(R"(SELECT "a$1", 'b$1''$1', $1)", values),
            R"(SELECT "a$1", 'b$1''$1', '7')");
}

}  // namespace
}  // namespace qorhost::postgres
