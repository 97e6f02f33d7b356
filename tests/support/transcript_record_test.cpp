// The comparison of transcripts has to notice every difference and to show it.
#include "tests/support/transcript_record.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace qortest {
namespace {

std::string MessageOf(const Lines& actual, std::string_view expected) {
  const ::testing::AssertionResult result = SameLines(actual, expected);
  return result ? "same" : result.message();
}

TEST(SameLinesTest, AcceptsTheSameLinesWhateverTheIndentation) {
  EXPECT_TRUE(SameLines({"a", "b"}, "a\nb"));
  EXPECT_TRUE(SameLines({"a", "b"}, "\n    a\n  b\n  "));
  EXPECT_TRUE(SameLines({}, ""));
}

TEST(SameLinesTest, NoticesEveryDifference) {
  EXPECT_FALSE(SameLines({"a"}, "b"));
  EXPECT_FALSE(SameLines({"a"}, ""));
  EXPECT_FALSE(SameLines({}, "a"));
  EXPECT_FALSE(SameLines({"a", "b"}, "b\na"));
  EXPECT_FALSE(SameLines({"a", "a"}, "a"));
  EXPECT_FALSE(SameLines({"x \"a \""}, "x \"a\""));
  EXPECT_FALSE(SameLines({"a"}, "a "));
}

TEST(SameLinesTest, ShowsTheFirstLineThatDiffers) {
  EXPECT_EQ(MessageOf({"one", "two", "three"}, "one\n2\nthree"),
            "transcripts differ at line 2 (3 lines, expected 3)\n"
            "            one\n"
            "  expected: 2\n"
            "  actual:   two\n"
            "  then:     three\n");
}

TEST(SameLinesTest, ShowsWhereOneOfThemEnds) {
  EXPECT_EQ(MessageOf({"one"}, "one\ntwo"),
            "transcripts differ at line 2 (1 lines, expected 2)\n"
            "            one\n"
            "  expected: two\n"
            "  actual:   (nothing more)\n");
}

TEST(IsReadTest, KnowsReadsFromCalls) {
  for (const std::string_view read :
       {"txtPINStart.Text -> \"5\"", "cboDoor.ItemData(2) -> 17", "Name -> \"frmTBL\"",
        "gstrTag -> \"a -> b\"", "Now -> #11/21/2026 10:00:00 AM#"}) {
    EXPECT_TRUE(IsRead(read)) << read;
  }
  for (const std::string_view call :
       {"ExecuteSelect \"SELECT 1\" -> 3 rows", "MsgBox 64 \"a\" \"b\" -> 1", "BeginTrans",
        "pbGetRowIDStringConstant -> \"_ROWID_\"", "pbGetUnitStatus 1 -> 1 2 3",
        "txtPINStart.Text = \"a -> b\"", "cboDoor.AddItem \"a -> b\""}) {
    EXPECT_FALSE(IsRead(call)) << call;
  }
}

TEST(TranscriptRecordTest, LeavesOutWhatADetailDoesNotShow) {
  TranscriptRecord record;
  for (const std::string_view line :
       {"CreateObject \"a.b\"", "Name -> \"x\"", "cboDoor.Clear", "Release \"a.b\""}) {
    record.Add(line);
  }

  EXPECT_EQ(record.Read(Detail::kEverything).size(), 4U);
  EXPECT_EQ(record.Read(Detail::kEffects), Lines{"cboDoor.Clear"});
  EXPECT_EQ(record.Read(Detail::kComponents), (Lines{"CreateObject \"a.b\"", "Release \"a.b\""}));
  EXPECT_EQ(record.StartingWith("cbo"), Lines{"cboDoor.Clear"});
}

}  // namespace
}  // namespace qortest
