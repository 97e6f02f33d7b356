// Screens of a host's own, whose controls and variables give other types than usual: what counts as
// chosen, and numbers that do not fit.
#include <array>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "tests/credentials/credential_fixture.h"

namespace qortest {
namespace {

using qorcred::Null;
using qorcred::ObjectRef;
using qorcred::Value;

/// A control whose value is always the same.
class FixedControl final : public qorcred::Object {
 public:
  explicit FixedControl(Value value) : value_(std::move(value)) {}

  Value Invoke(std::string_view member, qorcred::InvokeKind kind,
               qorcred::Arguments /*arguments*/) override {
    if (kind != qorcred::InvokeKind::kGet || !qorcred::SameMember(member, "Value")) {
      throw qorcred::RuntimeError(qorcred::ErrorNumber::kUnknownMember);
    }
    return value_;
  }

 private:
  Value value_;
};

/// A screen of which one member reads as something else; the others are those of the screen behind.
class ForeignScreen final : public qorcred::Object {
 public:
  ForeignScreen(ObjectRef inner, std::string name, Value content)
      : inner_(std::move(inner)), name_(std::move(name)), content_(std::move(content)) {}

  Value Invoke(std::string_view member, qorcred::InvokeKind kind,
               qorcred::Arguments arguments) override {
    const bool replaced = kind == qorcred::InvokeKind::kGet && qorcred::SameMember(member, name_);
    return replaced ? content_ : inner_->Invoke(member, kind, arguments);
  }

 private:
  ObjectRef inner_;
  std::string name_;
  Value content_;
};

/// Puts a screen before the controller on which `control` has this value.
void SetControl(CredentialScreen& screen, std::string control, Value value) {
  screen.controller().set_gmobjCredentialScreen(
      std::make_shared<ForeignScreen>(screen.host().screen(), std::move(control),
                                      ObjectRef(std::make_shared<FixedControl>(std::move(value)))));
}

/// One value and what it comes to.
struct ValueCase {
  std::string_view name;
  Value value;
  std::string_view expected;
};

TEST(ForeignScreen, ChoosesTheFourthButtonOnlyWithTrue) {
  const std::array<ValueCase, 9> cases{{{"True", true, "4"},
                                        {"minus one", -1, "4"},
                                        {"text of True", "True", "4"},
                                        {"one", 1, "1"},
                                        {"zero", 0, "1"},
                                        {"fraction", -1.5, "1"},
                                        {"text of a number", "-1", "4"},
                                        {"Empty", Value(), "1"},
                                        {"Null", Null{}, "1"}}};
  for (const ValueCase& one : cases) {
    CredentialScreen screen;
    screen.EnterSingle(kTransmitter, "10");
    SetControl(screen, "optButton4", one.value);

    EXPECT_TRUE(screen.SaveNew()) << one.name;

    const Lines inserts = screen.host().transcript().StartingWith("ExecuteInsert ");
    ASSERT_EQ(inserts.size(), 1U) << one.name;
    EXPECT_NE(inserts.front().find("_ROWID_,2,10,12,5,1," + std::string(one.expected) + ",'"),
              std::string::npos)
        << one.name << ": " << inserts.front();
  }
}

TEST(ForeignScreen, CountsATenantAsActiveOnlyWithOne) {
  constexpr std::string_view kActive = "'11/21/2026','11/21/2027 11:59:59 PM',";
  const std::array<ValueCase, 8> cases{{{"one", 1, kActive},
                                        {"one as a fraction", 1.0, kActive},
                                        {"text of one", "1", kActive},
                                        {"True", true, "Null,Null,"},
                                        {"minus one", -1, "Null,Null,"},
                                        {"three", 3, "Null,Null,"},
                                        {"Empty", Value(), "Null,Null,"},
                                        {"Null", Null{}, "Null,Null,"}}};
  for (const ValueCase& one : cases) {
    CredentialScreen screen(ScreenKind::kTenantCreating);
    screen.EnterSingle(kCard26, "100");
    screen.EnterTenantDefaults();
    SetControl(screen, "chkActive", one.value);

    EXPECT_TRUE(screen.SaveNewWithTenants()) << one.name;

    const Lines inserts =
        screen.host().transcript().StartingWith("ExecuteInsert \"INSERT INTO TENANTS");
    ASSERT_EQ(inserts.size(), 1U) << one.name;
    const std::string flag = one.expected == kActive ? "True" : "False";
    EXPECT_NE(inserts.front().find("101,1,0,5,9," + std::string(one.expected) +
                                   "_ROWID_,'_LMDATE_',77,5," + flag + ")"),
              std::string::npos)
        << one.name << ": " << inserts.front();
  }
}

// A text that is neither a number nor a word for a Boolean cannot be compared.
TEST(ForeignScreen, FailsOnATextForAFlag) {
  for (const std::string_view control : {"optButton4", "chkActive"}) {
    CredentialScreen screen(ScreenKind::kTenantCreating);
    screen.EnterSingle(kCard26, "100");
    screen.EnterTenantDefaults();
    SetControl(screen, std::string(control), "on");

    EXPECT_FALSE(screen.SaveNewWithTenants()) << control;

    EXPECT_EQ(screen.host().transactions().begun(), 0) << control;
    ASSERT_EQ(screen.host().services().trapped().size(), 1U) << control;
    EXPECT_EQ(screen.host().services().trapped().front().first, "pbSave") << control;
    EXPECT_EQ(screen.host().services().trapped().front().second,
              qorcred::ErrorNumber::kTypeMismatch)
        << control;
  }
}

TEST(ForeignScreen, ShowsTheFacilityCodeOnlyWithTrue) {
  const std::array<ValueCase, 6> cases{{{"True", true, "12"},
                                        {"minus one", -1, "12"},
                                        {"one", 1, ""},
                                        {"zero", 0, ""},
                                        {"Empty", Value(), ""},
                                        {"Null", Null{}, ""}}};
  for (const ValueCase& one : cases) {
    CredentialScreen screen;
    screen.ShowStored(1, 0);
    screen.host().SetText("txtFacilityCode", "99");
    screen.host().database().Select("FROM CREDENTIALBANK",
                                    {{kUnit, 17, 2, 700, 12, 5, 1, 4, "1/2/2026", 0}});
    screen.controller().set_gmobjCredentialScreen(std::make_shared<ForeignScreen>(
        screen.host().screen(), "gblnDisplayFacilityCode", one.value));

    screen.controller().pbRetrieveCredentials(screen.host().connection(), kUnit, 17);

    EXPECT_EQ(screen.host().TextOf("txtFacilityCode"), one.expected) << one.name;
    EXPECT_EQ(screen.host().TextOf("txtIDCode"), "5") << one.name;
    EXPECT_TRUE(screen.host().services().trapped().empty()) << one.name;
  }
}

constexpr std::int32_t kLargest16Bit = std::numeric_limits<std::int16_t>::max();
constexpr std::int32_t kSmallest16Bit = std::numeric_limits<std::int16_t>::min();

/// Expects that the save ended with an overflow before it wrote anything.
void ExpectOverflow(CredentialScreen& screen, std::string_view where) {
  EXPECT_EQ(screen.host().transactions().begun(), 0) << where;
  EXPECT_TRUE(screen.host().transcript().StartingWith("MsgBox").empty()) << where;
  EXPECT_TRUE(screen.host().transcript().StartingWith("ExecuteInsert").empty()) << where;
  ASSERT_EQ(screen.host().services().trapped().size(), 1U) << where;
  EXPECT_EQ(screen.host().services().trapped().front().first, "pbSave") << where;
  EXPECT_EQ(screen.host().services().trapped().front().second, qorcred::ErrorNumber::kOverflow)
      << where;
}

TEST(ForeignScreen, TakesSchedulesOf16BitsAndNoOthers) {
  for (const std::string_view list :
       {"cboSchedules1", "cboSchedules2", "cboSchedules3", "cboSchedules4"}) {
    for (const std::int32_t id :
         {kLargest16Bit, kLargest16Bit + 1, kSmallest16Bit, kSmallest16Bit - 1}) {
      CredentialScreen screen(ScreenKind::kTenantCreating);
      screen.EnterSingle(kCard26, "100");
      screen.EnterTenantDefaults();
      screen.host().AddItem(list, "Shift", id);
      screen.host().Select(list, 4);
      const bool fits = id >= kSmallest16Bit && id <= kLargest16Bit;

      EXPECT_EQ(screen.SaveNewWithTenants(), fits) << list << ' ' << id;

      if (!fits) {
        ExpectOverflow(screen, list);
        continue;
      }
      const Lines inserts =
          screen.host().transcript().StartingWith("ExecuteInsert \"INSERT INTO TENANTS");
      ASSERT_EQ(inserts.size(), 1U) << list;
      EXPECT_NE(inserts.front().find("," + std::to_string(id) + ","), std::string::npos)
          << list << ": " << inserts.front();
    }
  }
}

TEST(ForeignScreen, TakesTypesOf16BitsAndNoOthers) {
  for (const std::int32_t type :
       {kLargest16Bit, kLargest16Bit + 1, kSmallest16Bit, kSmallest16Bit - 1}) {
    CredentialScreen screen;
    screen.EnterSingle(kCard26, "10");
    screen.host().AddItem("cboCredentialType", "Fob", type);
    screen.host().Select("cboCredentialType", 3);
    const bool fits = type >= kSmallest16Bit && type <= kLargest16Bit;

    EXPECT_EQ(screen.SaveNew(), fits) << type;

    if (!fits) {
      ExpectOverflow(screen, "cboCredentialType");
      continue;
    }
    const Lines inserts = screen.host().transcript().StartingWith("ExecuteInsert ");
    ASSERT_EQ(inserts.size(), 1U) << type;
    EXPECT_NE(inserts.front().find("_ROWID_," + std::to_string(type) + ",10,"), std::string::npos)
        << inserts.front();
  }
}

}  // namespace
}  // namespace qortest
