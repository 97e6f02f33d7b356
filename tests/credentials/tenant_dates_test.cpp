// The dates of a new tenant in forms that the pass over the statement would tear.
#include "tests/credentials/credential_fixture.h"

namespace qortest {
namespace {

class TenantDates : public TenantCreatingTest {
 protected:
  // The tenant's insert when every date has that text.
  std::string InsertWith(std::string_view dateText) {
    Host().script().dateText = dateText;
    Screen().EnterSingle(kCard26, "100");
    Screen().EnterTenantDefaults();
    EXPECT_TRUE(Screen().SaveNewWithTenants());
    const Lines inserts = Host().transcript().StartingWith("ExecuteInsert \"INSERT INTO TENANTS");
    return inserts.size() == 1 ? inserts.front() : "(not one)";
  }
};

TEST_F(TenantDates, ThatHoldMinusOneAreWrittenWithSlashes) {
  EXPECT_NE(InsertWith("2026-11-21 10:00:00").find(",'2026/11/21 10:00:00','2026/11/21 10:00:00',"),
            std::string::npos);
}

TEST_F(TenantDates, WithOtherHyphensStayAsTheyAre) {
  EXPECT_NE(InsertWith("2026-09-21").find(",'2026-09-21','2026-09-21',"), std::string::npos);
}

}  // namespace
}  // namespace qortest
