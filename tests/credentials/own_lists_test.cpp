// Lists of a host's own: sorted ones, ones that count selections below -1, and none at all.
#include <string>
#include <string_view>

#include "tests/credentials/credential_fixture.h"
#include "tests/support/overlaid_object.h"

namespace qortest {
namespace {

using qorcred::ObjectRef;
using qorcred::Value;

/// Lets the controller under test see the list `name` with these answers.
void Overlay(CredentialScreen& screen, const std::string& name, OverlaidObject::Answers answers) {
  const ObjectRef overlaid = WithControl(screen.host().screen(), name, std::move(answers));
  screen.host().StartOver();
  screen.controller().set_gmobjCredentialScreen(overlaid);
}

TEST(OwnLists, AnyIndexBelowZeroIsNoChoiceOfASchedule) {
  for (const std::int32_t index : {-1, -2, -100}) {
    CredentialScreen screen(ScreenKind::kTenantCreating);
    screen.EnterSingle(kCard26, "100");
    screen.EnterTenantDefaults();
    Overlay(screen, "cboSchedules2", {{"ListIndex", Value(index)}});

    EXPECT_TRUE(screen.SaveNewWithTenants()) << index;

    const Lines inserts =
        screen.host().transcript().StartingWith("ExecuteInsert \"INSERT INTO TENANTS");
    ASSERT_EQ(inserts.size(), 1U);
    EXPECT_NE(inserts.front().find("'No Name1100',101,1,0,5,9,"), std::string::npos)
        << inserts.front();
    EXPECT_TRUE(screen.host().transcript().StartingWith("cboSchedules2.ItemData").empty()) << index;
  }
}

TEST(OwnLists, TheFirstEntryOfAScheduleListCountsLikeAnyOther) {
  CredentialScreen screen(ScreenKind::kTenantCreating);
  screen.EnterSingle(kCard26, "100");
  screen.EnterTenantDefaults();
  screen.host().controls().List("cboSchedules3").Clear();
  screen.host().AddItem("cboSchedules3", "Early Shift", 7);
  screen.host().Select("cboSchedules3", 0);

  EXPECT_TRUE(screen.SaveNewWithTenants());

  const Lines inserts =
      screen.host().transcript().StartingWith("ExecuteInsert \"INSERT INTO TENANTS");
  ASSERT_EQ(inserts.size(), 1U);
  EXPECT_NE(inserts.front().find("'No Name1100',101,1,0,7,9,"), std::string::npos)
      << inserts.front();
}

TEST(OwnLists, AnyIndexBelowOneIsNoChoiceOfATenant) {
  for (const std::int32_t index : {0, -1, -2}) {
    CredentialScreen screen;
    screen.ShowStored(1, 1);
    Overlay(screen, "cboAssignedTo", {{"ListIndex", Value(index)}});

    EXPECT_TRUE(screen.SaveEdited()) << index;

    EXPECT_TRUE(screen.host().transcript().StartingWith("cboAssignedTo.ItemData").empty());
    EXPECT_TRUE(screen.host().transcript().StartingWith("ExecuteSelect").empty());
  }
}

// A sorted list puts the entry where it belongs; the number goes to the entry, wherever that is.
TEST(OwnLists, ARenumberedEntryOfASortedListKeepsItsRow) {
  CredentialScreen screen;
  screen.ShowStored(1, 0);
  Overlay(screen, "cboCredentials", {{"NewIndex", Value(3)}});

  EXPECT_TRUE(screen.Renumber(900));

  EXPECT_EQ(screen.host().transcript().StartingWith("cboCredentials.ItemData(3) = "),
            Lines{"cboCredentials.ItemData(3) = 17"});
  EXPECT_EQ(screen.host().transcript().StartingWith("cboCredentials.ListIndex = "),
            Lines{"cboCredentials.ListIndex = 1"});
}

TEST(OwnLists, ANewSingleCredentialNeedsNoListOfStoredOnes) {
  for (const std::int32_t type : {kCard26, kTransmitter}) {
    CredentialScreen screen;
    screen.EnterSingle(type, "10");
    screen.controller().set_gmobjCredentialScreen(
        WithoutMember(screen.host().screen(), "cboCredentials"));

    EXPECT_TRUE(screen.SaveNew()) << type;

    EXPECT_TRUE(screen.host().services().trapped().empty());
  }
}

}  // namespace
}  // namespace qortest
