// The limit on a unit's combined codes when new credentials are saved.
#include <string>
#include <string_view>

#include "tests/credentials/credential_fixture.h"

namespace qortest {
namespace {

/// What is in use, the range that is entered, and the refusal; none means it is stored.
struct CapacityCase {
  std::string_view name;
  std::string_view most;
  std::string_view credentials;
  std::string_view entryCodes;
  std::string_view directoryCodes;
  std::string_view start;
  std::string_view end;
  std::string_view message = {};
  bool focusEnd = false;
};

std::ostream& operator<<(std::ostream& out, const CapacityCase& one) {
  return out << one.name;
}

constexpr std::string_view kFull500 =
    "You cannot assign more than 500 codes combined. This Unit already has 500 "
    "credentials/entry codes/directory codes.";

class Capacity : public CredentialTest, public ::testing::WithParamInterface<CapacityCase> {};

TEST_P(Capacity, IsKept) {
  const CapacityCase& unit = GetParam();
  Screen().EnterRange(kCard26, unit.start, unit.end);
  Screen().AllowCodes(unit.most);
  Screen().CountCodes(unit.credentials, unit.entryCodes, unit.directoryCodes);

  const bool saved = Screen().SaveNew();

  EXPECT_EQ(saved, unit.message.empty());
  if (unit.message.empty()) {
    EXPECT_TRUE(Host().transcript().StartingWith("MsgBox").empty());
    EXPECT_EQ(Host().transactions().committed(), 1);
    return;
  }
  EXPECT_EQ(Host().transactions().begun(), 0);
  const std::string message = "MsgBox 64 \"Pello RT\" \"" + std::string(unit.message) + "\" -> 1";
  const Lines effects = Host().transcript().Read(Detail::kEffects);
  ASSERT_GE(effects.size(), 2U);
  const bool focusMoved = effects.back() == "txtPINEND.SetFocus";
  EXPECT_EQ(focusMoved, unit.focusEnd);
  EXPECT_EQ(effects[effects.size() - (focusMoved ? 2 : 1)], message);
}

INSTANTIATE_TEST_SUITE_P(
    OfAUnit, Capacity,
    ::testing::Values(
        CapacityCase{"OneBelowTakesOne", "500", "100", "399", "0", "10", "10"},
        CapacityCase{"OneBelowRefusesTwo", "500", "100", "399", "0", "10", "11",
                     "A maximum of 500 combined codes are allowed. 499 combined codes are "
                     "currently assigned. Only 1 credentials can be created. Reduce the ending "
                     "number to 10",
                     true},
        CapacityCase{"ReachedRefusesOne", "500", "100", "300", "100", "10", "10", kFull500},
        CapacityCase{"ReachedRefusesARange", "500", "500", "0", "0", "10", "20", kFull500},
        // Both numbers are the limit, whatever the unit has.
        CapacityCase{"ExceededShowsTheLimitTwice", "500", "600", "0", "0", "10", "10", kFull500},
        CapacityCase{"ExactlyFittingRange", "500", "0", "0", "498", "1", "2"},
        CapacityCase{"RangeOneTooLong", "500", "0", "0", "498", "1", "3",
                     "A maximum of 500 combined codes are allowed. 498 combined codes are "
                     "currently assigned. Only 2 credentials can be created. Reduce the ending "
                     "number to 2",
                     true},
        CapacityCase{"TwoOfFiveFit", "500", "498", "0", "0", "1", "5",
                     "A maximum of 500 combined codes are allowed. 498 combined codes are "
                     "currently assigned. Only 2 credentials can be created. Reduce the ending "
                     "number to 2",
                     true},
        CapacityCase{"RangeOfAllNumbersInTheLargestUnit", "32767", "0", "0", "0", "1", "65535",
                     "A maximum of 32767 combined codes are allowed. 0 combined codes are "
                     "currently assigned. Only 32767 credentials can be created. Reduce the "
                     "ending number to 32767",
                     true},
        CapacityCase{"LargeNumbersInTheLargestUnit", "32767", "32765", "0", "0", "65530", "65535",
                     "A maximum of 32767 combined codes are allowed. 32765 combined codes are "
                     "currently assigned. Only 2 credentials can be created. Reduce the ending "
                     "number to 65531",
                     true},
        CapacityCase{"OfNothing", "0", "0", "0", "0", "1", "1",
                     "You cannot assign more than 0 codes combined. This Unit already has 0 "
                     "credentials/entry codes/directory codes."}),
    [](const auto& one) { return std::string(one.param.name); });

class CapacityCheck : public CredentialTest {};

TEST_F(CapacityCheck, FollowsTheDuplicateCheck) {
  Screen().EnterRange(kCard26, "10", "20");
  Screen().CountCodes("500", "0", "0");

  EXPECT_FALSE(Screen().SaveNew());

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "Select Top 1 UnitKey,PINNo from CredentialBank where UnitKey = 3 and CredentialType = 1 and PINNo >=10  and PINNo <=20 and FacilityCode = 12 Order by CredentialType,PINNo,FacilityCode" -> no rows
    ExecuteSelect "SELECT TOTAL FROM UNITTYPES T, UNITSETTINGS S WHERE S.UnitKey = 3 AND S.UNITTYPE = T.DESCRIPTION" -> 1 row
    pbGetUnitStatus 3 -> 500 0 0
    MsgBox 64 "Pello RT" "You cannot assign more than 500 codes combined. This Unit already has 500 credentials/entry codes/directory codes." -> 1
  )~"));
}

TEST_F(CapacityCheck, OfAUnitWithoutATypeStoresNothingAndSaysNothing) {
  Screen().EnterSingle(kCard26, "10");
  Database().Replace("FROM UNITTYPES", {});

  EXPECT_FALSE(Screen().SaveNew());

  EXPECT_TRUE(Host().transcript().StartingWith("MsgBox").empty());
  EXPECT_EQ(Host().transactions().begun(), 0);
  ASSERT_EQ(Host().services().trapped().size(), 1U);
  EXPECT_EQ(Host().services().trapped().front().first, "pbSave");
}

TEST_F(CapacityCheck, BeyondSixteenBitsIsAnOverflow) {
  struct Case {
    std::string_view name;
    std::string_view most;
    std::string_view credentials;
    std::string_view entryCodes;
    bool saved;
  };
  for (const Case& one : {Case{"largest limit", "32767", "0", "0", true},
                          Case{"limit too large", "32768", "0", "0", false},
                          Case{"count too large", "500", "32768", "0", false},
                          Case{"sum too large", "32767", "32767", "1", false}}) {
    CredentialScreen screen;
    screen.EnterSingle(kCard26, "10");
    screen.AllowCodes(one.most);
    screen.CountCodes(one.credentials, one.entryCodes, "0");

    EXPECT_EQ(screen.SaveNew(), one.saved) << one.name;

    EXPECT_TRUE(screen.host().transcript().StartingWith("MsgBox").empty()) << one.name;
    if (!one.saved) {
      ASSERT_EQ(screen.host().services().trapped().size(), 1U) << one.name;
      EXPECT_EQ(screen.host().services().trapped().front().second, qorcred::ErrorNumber::kOverflow)
          << one.name;
      EXPECT_EQ(screen.host().transactions().begun(), 0) << one.name;
    }
  }
}

TEST_F(CapacityCheck, OfATextThatIsNoNumberStoresNothing) {
  Screen().EnterSingle(kCard26, "10");
  Screen().AllowCodes("many");

  EXPECT_FALSE(Screen().SaveNew());

  EXPECT_TRUE(Host().transcript().StartingWith("MsgBox").empty());
  EXPECT_EQ(Host().transactions().begun(), 0);
  ASSERT_EQ(Host().services().trapped().size(), 1U);
  EXPECT_EQ(Host().services().trapped().front().second, qorcred::ErrorNumber::kTypeMismatch);
}

TEST_F(CapacityCheck, OfACountThatIsNoNumberIsAMismatch) {
  for (const std::string_view count : {"many", "12 cards", "-"}) {
    CredentialScreen screen;
    screen.EnterSingle(kCard26, "10");
    screen.CountCodes("1", count, "1");

    EXPECT_FALSE(screen.SaveNew()) << count;

    EXPECT_TRUE(screen.host().transcript().StartingWith("MsgBox").empty()) << count;
    EXPECT_EQ(screen.host().transactions().begun(), 0) << count;
    ASSERT_EQ(screen.host().services().trapped().size(), 1U) << count;
    EXPECT_EQ(screen.host().services().trapped().front().second,
              qorcred::ErrorNumber::kTypeMismatch)
        << count;
  }
}

TEST_F(CapacityCheck, CountsAnEmptyTextAsZero) {
  Screen().EnterSingle(kCard26, "10");
  Screen().CountCodes("", "499", "");

  EXPECT_TRUE(Screen().SaveNew());
}

class CapacityWithTenants : public TenantCreatingTest {};

TEST_F(CapacityWithTenants, IsAskedOnceAndAfterTheDates) {
  Screen().EnterSingle(kCard26, "10");
  Screen().EnterTenantDefaults();
  Screen().CountCodes("500", "0", "0");

  EXPECT_FALSE(Screen().SaveNewWithTenants());

  EXPECT_TRUE(SameLines(Host().transcript().StartingWith("pbGetUnitStatus"),
                        "pbGetUnitStatus 3 -> 500 0 0"));
  EXPECT_EQ(Host().transcript().StartingWith("MsgBox"),
            Lines{"MsgBox 64 \"Pello RT\" \"" + std::string(kFull500) + "\" -> 1"});
  EXPECT_EQ(Host().transactions().begun(), 0);
}

TEST_F(CapacityWithTenants, IsNotLookedAtWhenTheDatesAreRefused) {
  Screen().EnterSingle(kCard26, "10");
  Screen().EnterTenantDefaults();
  Screen().CountCodes("500", "0", "0");
  Host().controls().Date("dtpEnd").Choose(qorcred::Date{36526.0});

  EXPECT_FALSE(Screen().SaveNewWithTenants());

  EXPECT_TRUE(Host().transcript().StartingWith("pbGetUnitStatus").empty());
}

TEST_F(CapacityWithTenants, ProposesAnEndingNumberToo) {
  Screen().EnterRange(kCard26, "1", "5");
  Screen().EnterTenantDefaults();
  Screen().CountCodes("498", "0", "0");

  EXPECT_FALSE(Screen().SaveNewWithTenants());

  const Lines effects = Host().transcript().Read(Detail::kEffects);
  ASSERT_GE(effects.size(), 2U);
  EXPECT_TRUE(SameLines(Lines(effects.end() - 2, effects.end()), R"~(
    MsgBox 64 "Pello RT" "A maximum of 500 combined codes are allowed. 498 combined codes are currently assigned. Only 2 credentials can be created. Reduce the ending number to 2" -> 1
    txtPINEND.SetFocus
  )~"));
  EXPECT_EQ(Host().transactions().begun(), 0);
}

}  // namespace
}  // namespace qortest
