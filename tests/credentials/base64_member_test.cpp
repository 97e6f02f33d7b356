// The controller's Base64 decoding: whatever is wrong with the text is raised to the caller.
#include <array>
#include <string>
#include <string_view>

#include "frame/runtime_error.h"
#include "tests/credentials/credential_fixture.h"

namespace qortest {
namespace {

using qorcred::ErrorNumber;

class Base64Member : public CredentialTest {
 protected:
  /// The number of the error that decoding raises; 0 when it raises none.
  int ErrorOf(std::string_view text) {
    try {
      (void)Controller().pbBase64Dec(text);
    } catch (const qorcred::RuntimeError& failure) {
      return static_cast<int>(failure.number());
    }
    return 0;
  }
};

TEST_F(Base64Member, DecodesWithAndWithoutPadding) {
  EXPECT_EQ(Controller().pbBase64Dec("QUJD"), "ABC");
  EXPECT_EQ(Controller().pbBase64Dec("QUI="), "AB");
  EXPECT_EQ(Controller().pbBase64Dec("QQ=="), "A");
  EXPECT_EQ(Controller().pbBase64Dec("NTAw"), "500");
  EXPECT_EQ(Controller().pbBase64Dec("MzI3Njc="), "32767");
}

TEST_F(Base64Member, ReadsBytesInTheAnsiCodePage) {
  EXPECT_EQ(Controller().pbBase64Dec("gA=="), "€");
  EXPECT_EQ(Controller().pbBase64Dec("6f8="), "éÿ");
}

TEST_F(Base64Member, MixesAForeignCharacterIntoTheBits) {
  EXPECT_NE(Controller().pbBase64Dec("Q*JD"), "ABC");
  EXPECT_EQ(Controller().pbBase64Dec("Q*JD").size(), Controller().pbBase64Dec("Q=JD").size());
}

TEST_F(Base64Member, NeverCleansALineBreakAway) {
  EXPECT_EQ(ErrorOf("QU\nJD"), static_cast<int>(ErrorNumber::kIndexOutOfRange));
  EXPECT_EQ(ErrorOf("QUJD\nQUJ"), static_cast<int>(ErrorNumber::kOverflow));
  EXPECT_NE(Controller().pbBase64Dec("QUJ\n"), "ABC");
}

TEST_F(Base64Member, RaisesOverflowForAForeignCharacterAtTheStartOfAGroup) {
  EXPECT_EQ(ErrorOf("*UJD"), static_cast<int>(ErrorNumber::kOverflow));
  EXPECT_EQ(ErrorOf("=UJD"), static_cast<int>(ErrorNumber::kOverflow));
  EXPECT_EQ(ErrorOf("QUJD*UJD"), static_cast<int>(ErrorNumber::kOverflow));
}

TEST_F(Base64Member, RaisesOutOfRangeForAnIncompleteGroup) {
  for (const std::string_view text : {"Q", "QU", "QUJ", "QUJDQ", "QUJDQUI"}) {
    EXPECT_EQ(ErrorOf(text), static_cast<int>(ErrorNumber::kIndexOutOfRange)) << text;
  }
}

TEST_F(Base64Member, RaisesForAnEmptyText) {
  EXPECT_NE(ErrorOf(""), 0);
}

TEST_F(Base64Member, DecodesAgainAfterAFailure) {
  EXPECT_NE(ErrorOf("*UJD"), 0);

  EXPECT_EQ(Controller().pbBase64Dec("QUJD"), "ABC");
}

TEST_F(Base64Member, IsSeenByNobody) {
  (void)Controller().pbBase64Dec("QUJD");
  EXPECT_NE(ErrorOf("*UJD"), 0);

  EXPECT_TRUE(TranscriptIs(""));
}

TEST_F(Base64Member, RaisesToLateBoundCallersToo) {
  EXPECT_EQ(qorcred::Call(Controller(), "pbBase64Dec", "QUJD"), qorcred::Value("ABC"));
  EXPECT_THROW(qorcred::Call(Controller(), "pbBase64Dec", "*UJD"), qorcred::RuntimeError);
}

}  // namespace
}  // namespace qortest
