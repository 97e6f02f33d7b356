#include <gtest/gtest.h>

#include "frame/capacity.h"

namespace qorcred {
namespace {

struct Row {
  const char* name;
  const char* bytes;
  const char* text;
};

class EncodeBase64Test : public testing::TestWithParam<Row> {};

TEST_P(EncodeBase64Test, Encodes) {
  EXPECT_EQ(EncodeBase64(GetParam().bytes), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Lengths, EncodeBase64Test,
                         testing::Values(Row{"Nothing", "", ""}, Row{"OneByte", "A", "QQ=="},
                                         Row{"TwoBytes", "AB", "QUI="},
                                         Row{"ThreeBytes", "ABC", "QUJD"},
                                         Row{"FourBytes", "ABCD", "QUJDRA=="},
                                         Row{"HighBits", "\xFF\xFE\xFD", "//79"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(CapacityTextTest, IsTheBase64OfTheDecimalDigits) {
  EXPECT_EQ(CapacityText(500), "NTAw");
  EXPECT_EQ(CapacityText(2000), "MjAwMA==");
  EXPECT_EQ(CapacityText(32767), "MzI3Njc=");
}

}  // namespace
}  // namespace qorcred
