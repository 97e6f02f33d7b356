#include "host/unit/unit_generator.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using qorhost::UnitCode;
using namespace qorcred::unit_place;  // the places

TEST(UnitGeneratorTest, MakesCodesWithoutFaultInCanonicalForm) {
  std::int64_t number = 0;
  for (const UnitCode& code : qorhost::GenerateUnit(3000, 1).codes) {
    EXPECT_EQ(qorhost::FaultIn(code), "");
    UnitCode canonical = code;
    qorhost::MakeCanonical(canonical);
    EXPECT_EQ(canonical, code);
    EXPECT_EQ(qorhost::NumberOf(code), ++number);
  }
  EXPECT_EQ(number, 3000);
}

TEST(UnitGeneratorTest, TheSeedDecides) {
  EXPECT_EQ(qorhost::GenerateUnit(50, 1).codes, qorhost::GenerateUnit(50, 1).codes);
  EXPECT_NE(qorhost::GenerateUnit(50, 1).codes, qorhost::GenerateUnit(50, 2).codes);
}

TEST(UnitGeneratorTest, EveryFieldVaries) {
  const auto codes = qorhost::GenerateUnit(500, 3).codes;
  for (std::size_t place = kCode; place < qorhost::kUnitFieldCount; ++place) {
    std::set<std::string> texts;
    for (const UnitCode& code : codes) texts.insert(code.fields[place]);
    EXPECT_GE(texts.size(), 2U) << place;
  }
}

TEST(UnitGeneratorTest, NoCodesIsAnEmptyUnit) {
  EXPECT_TRUE(qorhost::GenerateUnit(0, 1).codes.empty());
}

}  // namespace
