#include "tests/support/transcript_text.h"

#include <gtest/gtest.h>

#include <memory>

#include "frame/date.h"
#include "frame/result_table.h"

namespace qortest {
namespace {

using qorcred::FromCivil;
using qorcred::Missing;
using qorcred::Null;
using qorcred::ObjectRef;
using qorcred::Value;

struct Row {
  const char* name;
  Value value;
  const char* text;
};

class TranscriptTextTest : public ::testing::TestWithParam<Row> {};

TEST_P(TranscriptTextTest, IsSpelled) {
  EXPECT_EQ(TranscriptText(GetParam().value), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Values, TranscriptTextTest,
    ::testing::Values(
        Row{"Text", "Doe Jane ", "\"Doe Jane \""}, Row{"EmptyText", "", "\"\""},
        Row{"QuoteIsDoubled", "5\" pipe", "\"5\"\" pipe\""},
        Row{"LineFeedAndTab", "a\nb\tc", "\"a\\nb\\tc\""},
        Row{"OtherControlCharacters", "\r\x1B\x7F", "\"\\x0D\\x1B\\x7F\""},
        Row{"BackslashStays", "a\\n", "\"a\\n\""}, Row{"LettersBeyondAscii", "Zoë 😀", "\"Zoë 😀\""},
        Row{"Long", 17, "17"}, Row{"Integer", std::int16_t{-3}, "-3"}, Row{"Double", 2.5, "2.5"},
        Row{"True", true, "True"}, Row{"False", false, "False"}, Row{"NullValue", Null{}, "Null"},
        Row{"EmptyValue", Value(), "Empty"}, Row{"OmittedArgument", Missing{}, "-"},
        Row{"DateWithTime", FromCivil({2026, 1, 31, 14, 5, 9}), "#1/31/2026 2:05:09 PM#"},
        Row{"DateAtMidnight", FromCivil({9999, 12, 31, 0, 0, 0}), "#12/31/9999#"},
        Row{"Texts", qorcred::StringArray{"a", "b\"c"}, "{\"a\", \"b\"\"c\"}"},
        Row{"NoTexts", qorcred::StringArray{}, "{}"}, Row{"NoObject", ObjectRef(), "Nothing"},
        Row{"Object", ObjectRef(std::make_shared<qorcred::ResultTable>()), "<object>"}),
    [](const auto& row) { return row.param.name; });

TEST(ArgumentListTest, LeavesObjectsOut) {
  const Value arguments[] = {1, ObjectRef(std::make_shared<qorcred::ResultTable>()), "a",
                             Missing{}};
  EXPECT_EQ(ArgumentList(arguments), " 1 \"a\" -");
}

TEST(FailureSuffixTest, NamesNumberAndText) {
  EXPECT_EQ(FailureSuffix(qorcred::RuntimeError(qorcred::ErrorNumber::kOverflow)),
            " ! 6 \"Overflow\"");
}

}  // namespace
}  // namespace qortest
