// What ends soon: tenants and directory codes, on both sides of the bounds.
#include "host/desks/expiring.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "host/desks/attention_list.h"
#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;

/// It is 31 January 2026.
class Expiring : public DeskFixture {
 protected:
  void SetUp() override {
    DeskFixture::SetUp();
    Run("UPDATE Tenants SET ActiveEndTime=NULL");
    Run("UPDATE DirectoryCode SET EndDate=NULL");
  }
  void End(const std::string& rid, const std::string& at, bool active = true) {
    Run("UPDATE Tenants SET ActiveTenant=" + std::string(active ? "-1" : "0") +
        ", ActiveEndTime='" + at + "' WHERE RID=" + rid);
  }
  [[nodiscard]] std::vector<std::string> Found(std::int32_t days) {
    std::vector<std::string> names;
    for (const ExpiringPeriod& period : ExpiringWithin(session(), days)) {
      names.push_back((period.isTenant ? "tenant " : "code ") + period.name);
    }
    return names;
  }
};

TEST_F(Expiring, TheBoundsAreTodayAndTheWholeLastDay) {
  End("61", "2026-01-30 23:59:59");
  End("62", "2026-01-31 00:00:00");
  End("63", "2026-03-02 23:59:59");
  End("64", "2026-03-03 00:00:00");
  EXPECT_EQ(Found(30).size(), 2U);
  EXPECT_EQ(Found(31).size(), 3U);
  EXPECT_EQ(Found(0).size(), 1U);
}

TEST_F(Expiring, WhatIsNotActiveDoesNotEnd) {
  End("62", "2026-02-01 00:00:00", false);
  EXPECT_TRUE(Found(30).empty());
}

TEST_F(Expiring, CodesStandAmongTenantsByTheirEnds) {
  End("61", "2026-02-03 00:00:00");
  End("63", "2026-02-01 00:00:00");
  Run("UPDATE DirectoryCode SET Active=-1, EndDate='2026-02-02 00:00:00' WHERE RID=11");
  EXPECT_THAT(Found(30),
              ElementsAre(testing::HasSubstr("Vasquez"), "code 101", testing::HasSubstr("Hollis")));
}

TEST_F(Expiring, WhatIsNoListedCodeDoesNotEnd) {
  // A deleted code stays until the unit knows of it, and was an expiring one until then.
  Run("UPDATE DirectoryCode SET Active=-1, EndDate='2026-02-02 00:00:00' WHERE RID IN (11, 12, "
      "13)");
  Run("UPDATE DirectoryCode SET Modified=3 WHERE RID=11");
  Run("UPDATE DirectoryCode SET DirectoryCode=-102 WHERE RID=12");
  EXPECT_THAT(Found(30), ElementsAre("code 103"));
}

TEST_F(Expiring, TheMattersOfTheUnitsAreTheSame) {
  for (int day = 1; day <= 9; ++day) {
    const std::string end = fmt::format("2026-02-0{} 12:00:00", day);
    End(std::to_string(60 + day), end, day % 4 != 0);
    Run(fmt::format("UPDATE DirectoryCode SET Active={}, Modified={}, EndDate='{}' WHERE RID={}",
                    day % 3 == 0 ? 0 : -1, day % 4, end, 10 + day));
  }
  for (const std::int32_t days : {0, 1, 5, 8, 30}) {
    std::size_t matters = 0;
    for (const UnitName& unit : session().Units()) {
      for (const auto& row : AttentionList(session(), unit.key, {session().Today(), days}).rows) {
        matters += row[0] == qorcred::Value(attention::kExpiring) ||
                   row[0] == qorcred::Value(attention::kExpiringCode);
      }
    }
    EXPECT_EQ(Found(days).size(), matters) << days;
  }
}

}  // namespace
}  // namespace qorhost::test
