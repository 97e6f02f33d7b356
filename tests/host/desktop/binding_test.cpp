// Widgets and the controls that they are bound to: what is shown, what a person does, what is cut
// or refused.
#include <gmock/gmock.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>
#include <QtTest/QTest>
#include <memory>

#include "frame/date.h"
#include "host/desktop/binding/date_field.h"
#include "host/desktop/binding/screen_binding.h"
#include "host/screens/screen_model.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

const qorcred::Date kDay = qorcred::FromCivil({2026, 1, 31, 0, 0, 0});

/// A screen with a control of each kind, and a form for it.
class Bindings : public testing::Test {
 protected:
  Bindings() {
    screen_.AddAll<ListModel>({"combo", "box"});
    screen_.AddAll<TextModel>({"text"});
    screen_.AddAll<CheckModel>({"check"});
    const auto one = screen_.Add("one", std::make_shared<OptionModel>());
    const auto other = screen_.Add("other", std::make_shared<OptionModel>());
    OptionModel::Join({one, other});
    screen_.AddAll<SpinnerModel>({"spin"});
    screen_.AddAll<LabelModel>({"label"});
    screen_.AddAll<ButtonModel>({"button"});
    screen_.Add("date", std::make_shared<PickerModel>(kDay));
    screen_.Add("array",
                std::make_shared<ControlArrayModel>(std::vector<std::shared_ptr<ControlModel>>{
                    std::make_shared<TextModel>(), std::make_shared<TextModel>()}));
    screen_.AddVariable("variable", "");
    form_.setObjectName(QStringLiteral("form"));
    new QVBoxLayout(&form_);
    Make<QComboBox>("combo");
    Make<QListView>("box");
    Make<QLineEdit>("text");
    Make<QCheckBox>("check");
    Make<QRadioButton>("one");
    Make<QRadioButton>("other");
    Make<QSpinBox>("spin");
    Make<QLabel>("label").setText(QStringLiteral("as drawn"));
    Make<QPushButton>("button");
    Make<DateField>("date");
    Make<QLineEdit>("array_0");
    Make<QLineEdit>("array_1");
  }

  template <typename Widget>
  Widget& Make(const char* name) {
    auto* widget = new Widget(&form_);
    widget->setObjectName(QString::fromLatin1(name));
    form_.layout()->addWidget(widget);
    return *widget;
  }
  template <typename Widget>
  Widget& Of(const char* name) {
    return *form_.findChild<Widget*>(QString::fromLatin1(name));
  }
  void Bind() {
    form_.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form_));
    binding_ = std::make_unique<ScreenBinding>(screen_, form_, std::vector<std::string_view>{});
    binding_->OnEdit(
        [this](QWidget& widget) { edited_.push_back(widget.objectName().toStdString()); });
  }
  void ClickRow(const char* list, int row) {
    auto& view = Of<QListView>(list);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier,
                      view.visualRect(view.model()->index(row, 0)).center());
  }
  void Fill(const char* list, int count) {
    for (int entry = 0; entry < count; ++entry) {
      (void)screen_.List(list).AddItemWithData("entry " + std::to_string(entry), entry);
    }
  }

  ScreenModel screen_{"screen"};
  QWidget form_;
  std::unique_ptr<ScreenBinding> binding_;
  std::vector<std::string> edited_;
};

// A screen that is opened again is bound again: what a person does is no matter of the old binding.
TEST_F(Bindings, WhatIsDoneBehindItsEndReachesNoBinding) {
  Fill("combo", 2);
  Bind();
  binding_.reset();
  QTest::keyClicks(&Of<QLineEdit>("text"), QStringLiteral("7"));
  QTest::mouseClick(&Of<QCheckBox>("check"), Qt::LeftButton);
  QTest::keyClick(&Of<QSpinBox>("spin"), Qt::Key_Up);
  EXPECT_TRUE(edited_.empty());
  Bind();
  QTest::keyClicks(&Of<QLineEdit>("text"), QStringLiteral("8"));
  EXPECT_EQ(edited_, std::vector<std::string>{"text"});
}

TEST_F(Bindings, EveryControlThatTheFormLacksIsNamed) {
  delete &Of<QLineEdit>("text");
  delete &Of<QLineEdit>("array_1");
  delete &Of<QSpinBox>("spin");
  Make<QLabel>("spin");
  try {
    const ScreenBinding bound(screen_, form_, {"none"});
    FAIL() << "it was bound";
  } catch (const std::logic_error& error) {
    EXPECT_THAT(error.what(), HasSubstr("no control none"));
    EXPECT_THAT(error.what(), HasSubstr("no widget for text"));
    EXPECT_THAT(error.what(), HasSubstr("no widget for array(1)"));
    EXPECT_THAT(error.what(), HasSubstr("spin is of another kind: QLabel"));
  }
}

TEST_F(Bindings, WhatAControllerPutsIsShownAndIsNobodysEdit) {
  Bind();
  screen_.Box("text").SetText("Ünit 1");
  screen_.Check("check").SetState(2);
  screen_.Option("other").SetOn(true);
  screen_.Spin("spin").SetValue(std::int32_t{7});
  screen_.Any("label").SetCaption("as told");
  screen_.Any("button").SetEnabled(false);
  screen_.Date("date").Choose(kDay);
  Fill("combo", 3);
  screen_.List("combo").Select(2);
  Settle();
  EXPECT_EQ(Of<QLineEdit>("text").text(), QStringLiteral("Ünit 1"));
  EXPECT_EQ(Of<QCheckBox>("check").checkState(), Qt::PartiallyChecked);
  EXPECT_TRUE(Of<QRadioButton>("other").isChecked());
  EXPECT_FALSE(Of<QRadioButton>("one").isChecked());
  EXPECT_EQ(Of<QSpinBox>("spin").value(), 7);
  EXPECT_EQ(Of<QLabel>("label").text(), QStringLiteral("as told"));
  EXPECT_FALSE(Of<QPushButton>("button").isEnabled());
  EXPECT_TRUE(Of<DateField>("date").check().isChecked());
  EXPECT_EQ(Of<DateField>("date").edit().date(), QDate(2026, 1, 31));
  EXPECT_EQ(Of<QComboBox>("combo").currentText(), QStringLiteral("entry 2"));
  EXPECT_TRUE(edited_.empty());
}

TEST_F(Bindings, WhatAPersonDoesIsPutIntoTheControls) {
  Fill("combo", 3);
  Fill("box", 3);
  Bind();
  QTest::keyClicks(&Of<QLineEdit>("text"), QStringLiteral("abc"));
  QTest::keyClicks(&Of<QLineEdit>("array_1"), QStringLiteral("x"));
  QTest::mouseClick(&Of<QCheckBox>("check"), Qt::LeftButton, Qt::NoModifier, {8, 8});
  QTest::mouseClick(&Of<QRadioButton>("one"), Qt::LeftButton, Qt::NoModifier, {8, 8});
  QTest::keyClick(&Of<QSpinBox>("spin"), Qt::Key_Up);
  QTest::keyClick(&Of<QComboBox>("combo"), Qt::Key_Down);
  ClickRow("box", 2);
  EXPECT_EQ(screen_.Box("text").text(), "abc");
  EXPECT_EQ(dynamic_cast<TextModel&>(*screen_.Get<ControlArrayModel>("array").at(1)).text(), "x");
  EXPECT_EQ(screen_.Check("check").state(), 1);
  EXPECT_TRUE(screen_.Option("one").on());
  EXPECT_EQ(screen_.Spin("spin").value(), qorcred::Value(std::int32_t{1}));
  EXPECT_EQ(screen_.List("combo").selected(), 0);
  EXPECT_EQ(screen_.List("box").selected(), 2);
  EXPECT_THAT(edited_,
              testing::IsSupersetOf({"text", "array_1", "check", "one", "spin", "combo", "box"}));
}

TEST_F(Bindings, ABoxCutsWhatIsTypedAsItsLengthSays) {
  Bind();
  screen_.Box("text").SetMaxLength(3);
  QTest::keyClicks(&Of<QLineEdit>("text"), QStringLiteral("12345"));
  EXPECT_EQ(screen_.Box("text").text(), "123");
  EXPECT_EQ(Of<QLineEdit>("text").text(), QStringLiteral("123"));
}

TEST_F(Bindings, ACharacterOfTwoUnitsIsNeverCutInHalf) {
  Bind();
  screen_.Box("text").SetMaxLength(2);
  QTest::keyClicks(&Of<QLineEdit>("text"), QStringLiteral("a"));
  Of<QLineEdit>("text").insert(QStringLiteral("\U0001F511"));
  const std::string held = screen_.Box("text").text();
  EXPECT_EQ(held, "a");
  EXPECT_EQ(Of<QLineEdit>("text").text().toStdString(), held);
}

TEST_F(Bindings, ADateCanBeNoneAndBackAgain) {
  Of<DateField>("date").SetEndOfDay(true);
  Bind();
  auto& field = Of<DateField>("date");
  EXPECT_FALSE(field.check().isChecked());
  QTest::mouseClick(&field.check(), Qt::LeftButton, Qt::NoModifier, {8, 8});
  ASSERT_TRUE(screen_.Date("date").chosen());
  EXPECT_EQ(qorcred::ToCivil(screen_.Date("date").shown()),
            (qorcred::CivilTime{2026, 1, 31, 23, 59, 59}));
  QTest::mouseClick(&field.check(), Qt::LeftButton, Qt::NoModifier, {8, 8});
  EXPECT_FALSE(screen_.Date("date").chosen());
}

TEST_F(Bindings, AListOfTensOfThousandsIsShownWithOneNotification) {
  Bind();
  int told = 0;
  auto& combo = Of<QComboBox>("combo");
  QObject::connect(combo.model(), &QAbstractItemModel::modelReset, &combo, [&told] { ++told; });
  QObject::connect(combo.model(), &QAbstractItemModel::rowsInserted, &combo, [&told] { ++told; });
  Fill("combo", 65000);
  screen_.List("combo").Select(64999);
  Settle();
  EXPECT_EQ(told, 1);
  EXPECT_EQ(combo.count(), 65000);
  EXPECT_EQ(combo.currentText(), QStringLiteral("entry 64999"));
}

TEST_F(Bindings, WhatIsClearedAndFilledAgainIsShownOnce) {
  screen_.Box("text").SetText("7");
  Bind();
  int told = 0;
  auto& line = Of<QLineEdit>("text");
  QObject::connect(&line, &QLineEdit::textChanged, &line, [&told] { ++told; });
  screen_.Box("text").SetText("");
  screen_.Box("text").SetText("7");
  Settle();
  EXPECT_EQ(told, 0);
  screen_.Box("text").SetText("");
  screen_.Box("text").SetText("8");
  Settle();
  EXPECT_EQ(told, 1);
  EXPECT_EQ(line.text(), QStringLiteral("8"));
}

TEST_F(Bindings, AListThatLoadsSomethingHandsTheChoiceOver) {
  Fill("box", 3);
  Bind();
  std::int32_t chosen = -1;
  binding_->OnChoice("box", [&chosen](std::int32_t index) { chosen = index; });
  ClickRow("box", 2);
  EXPECT_EQ(chosen, 2);
  EXPECT_EQ(screen_.List("box").selected(), ListModel::kNone);
  // Nothing was selected in the end, and so it is shown.
  EXPECT_FALSE(Of<QListView>("box").currentIndex().isValid());
}

TEST_F(Bindings, TheFocusFollowsTheController) {
  Bind();
  form_.activateWindow();
  screen_.Box("text").SetFocus();
  EXPECT_EQ(form_.focusWidget(), &Of<QLineEdit>("text"));
}

TEST_F(Bindings, AHiddenControlTakesItsLabelAlong) {
  auto& label = Make<QLabel>("named");
  label.setBuddy(&Of<QLineEdit>("text"));
  Bind();
  screen_.Box("text").SetVisible(false);
  binding_->Flush();
  EXPECT_FALSE(label.isVisible());
  screen_.Box("text").SetVisible(true);
  binding_->Flush();
  EXPECT_TRUE(label.isVisible());
}

}  // namespace
}  // namespace qorhost::test
