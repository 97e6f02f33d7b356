#include "host/screens/simple_models.h"

#include <gtest/gtest.h>

#include <memory>

#include "frame/object.h"
#include "tests/host/screens/expect_error.h"

namespace {

using qorcred::Call;
using qorcred::ErrorNumber;
using qorcred::Get;
using qorcred::Null;
using qorcred::Put;
using qorcred::Value;
using qortest::Raises;

TEST(TextModelTest, KeepsAnyTextWithoutAMaxLength) {
  qorhost::TextModel box;
  Put(box, "Text", "99999999");
  EXPECT_EQ(Get(box, "Text"), Value("99999999"));
  EXPECT_EQ(Get(box, "MaxLength"), Value(0));
}

TEST(TextModelTest, TakesNumbersAsTextAndRefusesNull) {
  qorhost::TextModel box;
  Put(box, "", 12.5);
  EXPECT_EQ(Get(box, ""), Value("12.5"));
  EXPECT_TRUE(Raises(ErrorNumber::kInvalidUseOfNull, [&] { Put(box, "Text", Null{}); }));
}

struct CutRow {
  const char* name;
  const char* text;
  int maxLength;
  const char* kept;
};

class TextModelCutTest : public ::testing::TestWithParam<CutRow> {};

TEST_P(TextModelCutTest, CutsInUtf16Units) {
  const CutRow& row = GetParam();
  qorhost::TextModel box;
  Put(box, "MaxLength", row.maxLength);
  Put(box, "Text", row.text);
  EXPECT_EQ(box.text(), row.kept);
}

INSTANTIATE_TEST_SUITE_P(Texts, TextModelCutTest,
                         ::testing::Values(CutRow{"Shorter", "12", 3, "12"},
                                           CutRow{"AsLong", "123", 3, "123"},
                                           CutRow{"Longer", "1234", 3, "123"},
                                           CutRow{"TwoByteLetters", "äöü", 2, "äö"},
                                           CutRow{"ASurrogatePairIsNotCut", "a😀b", 2, "a"},
                                           CutRow{"ASurrogatePairFits", "a😀b", 3, "a😀"},
                                           CutRow{"ZeroMeansNoLimit", "123456", 0, "123456"}),
                         [](const auto& row) { return row.param.name; });

TEST(TextModelTest, ANewMaxLengthCutsTheTextThatIsThere) {
  qorhost::TextModel box;
  box.SetText("12345");
  Put(box, "MaxLength", 2);
  EXPECT_EQ(box.text(), "12");
  EXPECT_TRUE(Raises(ErrorNumber::kInvalidProcedureCall, [&] { Put(box, "MaxLength", -1); }));
  EXPECT_EQ(box.maxLength(), 2);
}

TEST(CheckModelTest, TakesZeroOneAndTwoOnly) {
  qorhost::CheckModel box;
  EXPECT_EQ(Get(box, "Value"), Value(std::int16_t{0}));
  for (const int state : {0, 1, 2}) {
    Put(box, "Value", state);
    EXPECT_EQ(box.state(), state);
  }
  for (const int state : {-1, 3}) {
    EXPECT_TRUE(Raises(ErrorNumber::kInvalidProcedureCall, [&] { Put(box, "Value", state); }));
  }
  EXPECT_EQ(box.state(), 2);
}

TEST(OptionModelTest, OneOfAGroupIsChosenAtATime) {
  const auto four = std::make_shared<qorhost::OptionModel>();
  const auto other = std::make_shared<qorhost::OptionModel>();
  qorhost::OptionModel::Join({four, other});
  Put(*four, "Value", true);
  EXPECT_EQ(Get(*four, "Value"), Value(true));
  EXPECT_EQ(Get(*other, "Value"), Value(false));
  Put(*other, "Value", -1);
  EXPECT_EQ(Get(*four, "Value"), Value(false));
  EXPECT_EQ(Get(*other, "Value"), Value(true));
  Put(*other, "Value", false);
  EXPECT_FALSE(four->on()) << "switching one off chooses no other";
}

TEST(OptionModelTest, AGroupOutlivesAButtonThatIsGone) {
  const auto four = std::make_shared<qorhost::OptionModel>();
  {
    const auto other = std::make_shared<qorhost::OptionModel>();
    qorhost::OptionModel::Join({four, other});
  }
  Put(*four, "Value", true);
  EXPECT_TRUE(four->on());
}

TEST(LabelModelTest, CaptionIsTheDefaultMember) {
  qorhost::LabelModel label;
  Put(label, "", "Door 1");
  EXPECT_EQ(Get(label, "Caption"), Value("Door 1"));
  EXPECT_TRUE(Raises(ErrorNumber::kUnknownMember, [&] { Get(label, "Text"); }));
}

TEST(ButtonModelTest, ReadsAsNotPressed) {
  qorhost::ButtonModel button;
  EXPECT_EQ(Get(button, "Value"), Value(false));
  Put(button, "Caption", "Save");
  EXPECT_EQ(button.caption(), "Save");
}

TEST(SpinnerModelTest, TheDefaultMemberIsItsValue) {
  qorhost::SpinnerModel spinner;
  EXPECT_EQ(Get(spinner, ""), Value(0));
  Put(spinner, "", 30);
  EXPECT_EQ(Get(spinner, "Value"), Value(30));
}

TEST(CommonMembersTest, EveryControlHasThem) {
  qorhost::TextModel box;
  Put(box, "Enabled", 0);
  EXPECT_EQ(Get(box, "Enabled"), Value(false));
  Put(box, "Visible", false);
  EXPECT_EQ(Get(box, "Visible"), Value(false));
  Put(box, "BackColor", static_cast<std::int32_t>(0x8000000FU));
  EXPECT_EQ(Get(box, "BackColor"), Value(static_cast<std::int32_t>(0x8000000FU)));
  Put(box, "Width", 300);
  EXPECT_EQ(Get(box, "Width"), Value(300));
  Put(box, "Caption", "Number");
  EXPECT_EQ(Get(box, "Caption"), Value("Number"));
  EXPECT_TRUE(Raises(ErrorNumber::kWrongArgumentCount, [&] { Get(box, "Enabled", 1); }));
  EXPECT_TRUE(Raises(ErrorNumber::kWrongArgumentCount, [&] { Put(box, "Enabled"); }));
  EXPECT_TRUE(Raises(ErrorNumber::kWrongArgumentCount, [&] { Call(box, "SetFocus", 1); }));
}

TEST(ControlArrayModelTest, GivesItsControlsByIndex) {
  const auto first = std::make_shared<qorhost::TextModel>();
  const auto second = std::make_shared<qorhost::TextModel>();
  qorhost::ControlArrayModel controls({first, second});
  EXPECT_EQ(Get(controls, "Count"), Value(2));
  EXPECT_EQ(Get(controls, "", 1), Value(qorcred::ObjectRef(second)));
  for (const int index : {-1, 2}) {
    EXPECT_TRUE(Raises(ErrorNumber::kIndexOutOfRange, [&] { Get(controls, "", index); }));
  }
  EXPECT_TRUE(Raises(ErrorNumber::kWrongArgumentCount, [&] { Get(controls, ""); }));
  EXPECT_TRUE(Raises(ErrorNumber::kUnknownMember, [&] { Get(controls, "Enabled"); }));
}

}  // namespace
