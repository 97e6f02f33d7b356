// Deleting chosen credentials, and the check that goes before: the same in both reports.
#include <cstdint>
#include <string>
#include <string_view>

#include "frame/runtime_error.h"
#include "tests/reports/report_fixture.h"

namespace qortest {
namespace {

using qorcred::ErrorNumber;
using qorcred::Null;
using qorcred::ObjectRef;
using qorcred::Value;

constexpr std::string_view kHeldMessage =
    R"~(MsgBox 64 "Pello RT" "Credentials which are assigned to tenants cannot be deleted. Please deselect those credentials." -> 1)~";
constexpr std::string_view kNoneDeletedMessage =
    R"~(MsgBox 64 "Pello RT" "Credentials(s) are not deleted successfully." -> 1)~";

template <typename Report>
class ReportDeletion : public ReportTest<Report> {
 protected:
  using ReportTest<Report>::Controller;
  using ReportTest<Report>::Connection;
  using ReportTest<Report>::Host;

  void Choose(std::string rids) { Controller().set_gstrRIDsForDeletion(std::move(rids)); }

  /// The check on a manager of the test's own, whose making does not show in the transcript.
  bool Validate(std::int32_t unit = kUnit) {
    const ObjectRef manager = Host().host().CreateComponent("qorDBI.clsDBManager");
    Host().StartOver();
    const bool valid = Controller().pbValidate(Connection(), unit, manager);
    lines_ = Host().transcript().Read(Detail::kEverything);
    return valid;
  }
  [[nodiscard]] const Lines& CheckLines() const { return lines_; }

  bool Delete() { return Controller().pbDelete(Connection(), kUnit, deleted_); }
  [[nodiscard]] std::int32_t Deleted() const { return deleted_; }

 private:
  Lines lines_;
  std::int32_t deleted_ = 99;
};
TYPED_TEST_SUITE(ReportDeletion, BothReports, ReportNames);

TYPED_TEST(ReportDeletion, DeletesWhatNoTenantHolds) {
  this->Choose("17,18,19");
  this->Database().Number("Delete From CredentialBank", 3);

  EXPECT_TRUE(this->Delete());

  EXPECT_EQ(this->Deleted(), 3);
  EXPECT_TRUE(this->TranscriptIs(R"~(
    CreateObject "qorDBI.clsDBManager"
    ExecuteSelect "Select TenantID from Tenants where UnitKey=7 And (CredentialID1 IN (17,18,19) OR CredentialID2 IN(17,18,19))" -> no rows
    ExecuteQueryDelete "Delete From CredentialBank Where unitkey=7 And RID in (17,18,19)" -> 3
    Release "qorDBI.clsDBManager"
  )~"));
}

TYPED_TEST(ReportDeletion, DeletesNothingWhenATenantHoldsOne) {
  this->Choose("17,18");
  this->Database().Select("from Tenants", {{55}});

  EXPECT_FALSE(this->Delete());

  EXPECT_EQ(this->Deleted(), 99);
  EXPECT_TRUE(this->TranscriptIs(R"~(
    CreateObject "qorDBI.clsDBManager"
    ExecuteSelect "Select TenantID from Tenants where UnitKey=7 And (CredentialID1 IN (17,18) OR CredentialID2 IN(17,18))" -> 1 row
    )~" + std::string(kHeldMessage) +
                                 R"~(
    Release "qorDBI.clsDBManager"
  )~"));
}

TYPED_TEST(ReportDeletion, OfNothingIsAFailureWithItsOwnMessage) {
  this->Choose("17");
  this->Database().Number("Delete From CredentialBank", 0);

  EXPECT_FALSE(this->Delete());

  EXPECT_EQ(this->Deleted(), 0);
  EXPECT_TRUE(this->TranscriptIs(R"~(
    CreateObject "qorDBI.clsDBManager"
    ExecuteSelect "Select TenantID from Tenants where UnitKey=7 And (CredentialID1 IN (17) OR CredentialID2 IN(17))" -> no rows
    ExecuteQueryDelete "Delete From CredentialBank Where unitkey=7 And RID in (17)" -> 0
    )~" + std::string(kNoneDeletedMessage) +
                                 R"~(
    Release "qorDBI.clsDBManager"
  )~"));
}

TYPED_TEST(ReportDeletion, CountsWhatTheManagerReports) {
  const struct {
    const char* name;
    Value reported;
    std::int32_t count;
    bool deleted;
  } rows[] = {
      {"One", 1, 1, true},         {"Several", 250, 250, true},    {"Negative", -1, -1, false},
      {"Text", "2", 2, true},      {"Fraction", 2.5, 2, true},     {"BelowOne", 0.5, 0, false},
      {"RoundedUp", 0.6, 1, true}, {"NoNumber", "many", 0, false}, {"Null", Null{}, 0, false},
  };
  this->Choose("17");
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    this->Database().Replace("Delete From CredentialBank", {.value = row.reported});
    this->Host().StartOver();
    EXPECT_EQ(this->Delete(), row.deleted);
    EXPECT_EQ(this->Deleted(), row.count);
    EXPECT_EQ(this->Host().transcript().StartingWith("MsgBox"),
              row.deleted ? Lines{} : Lines{std::string(kNoneDeletedMessage)});
  }
}

TYPED_TEST(ReportDeletion, OfMoreThan32BitsEndsInTheOperation) {
  this->Choose("17");
  this->Database().Number("Delete From CredentialBank", 3e9);
  EXPECT_FALSE(this->Delete());
  EXPECT_EQ(this->Deleted(), 99);
  ASSERT_EQ(this->Host().services().trapped().size(), 1U);
  EXPECT_EQ(this->Host().services().trapped().front(),
            std::pair(std::string("pbDelete"), ErrorNumber::kOverflow));
  EXPECT_TRUE(this->Host().transcript().StartingWith("MsgBox").empty());
}

TYPED_TEST(ReportDeletion, TakesTheIdsAsTheyAre) {
  for (const std::string_view rids : {"", " ", "17, 18 ,", "17);DELETE FROM Tenants;--", "'",
                                      "Select RID from CredentialBank", "-1", "\xFF"}) {
    this->Choose(std::string(rids));
    this->Host().StartOver();
    this->Delete();
    const std::string ids(rids);
    EXPECT_EQ(
        this->Host().transcript().StartingWith("ExecuteSelect")[0],
        "ExecuteSelect \"Select TenantID from Tenants where UnitKey=7 And (CredentialID1 IN (" +
            ids + ") OR CredentialID2 IN(" + ids + "))\" -> no rows");
    EXPECT_EQ(this->Host().transcript().StartingWith("ExecuteQueryDelete")[0],
              "ExecuteQueryDelete \"Delete From CredentialBank Where unitkey=7 And RID in (" + ids +
                  ")\" -> 1");
  }
}

TYPED_TEST(ReportDeletion, NeedsNeitherScreenNorOperatorTables) {
  this->Controller().set_gfrmTxFilter(nullptr);
  EXPECT_TRUE(this->Delete());
  EXPECT_EQ(this->Deleted(), 1);
}

TYPED_TEST(ReportDeletion, TakesTheUnitOfTheCallAndNotThatOfTheReport) {
  this->Controller().set_mlngUnitKey(12);
  std::int32_t deleted = 0;
  EXPECT_TRUE(this->Controller().pbDelete(this->Connection(), -3, deleted));
  EXPECT_EQ(
      this->Host().transcript().StartingWith("ExecuteQueryDelete")[0],
      "ExecuteQueryDelete \"Delete From CredentialBank Where unitkey=-3 And RID in ()\" -> 1");
}

// The check that fails inside the manager finds no tenant.
TYPED_TEST(ReportDeletion, GoesOnWhenTheManagerCannotTell) {
  this->Choose("17");
  this->Database().Error("from Tenants", "locked");
  EXPECT_TRUE(this->Delete());
  EXPECT_EQ(this->Deleted(), 1);
}

TYPED_TEST(ReportDeletion, ThatTheManagerCannotDoIsOneOfNothing) {
  this->Choose("17");
  this->Database().Error("Delete From CredentialBank", "locked");
  EXPECT_FALSE(this->Delete());
  EXPECT_EQ(this->Deleted(), 0);
  EXPECT_TRUE(this->EffectsAre(R"~(
    ExecuteSelect "Select TenantID from Tenants where UnitKey=7 And (CredentialID1 IN (17) OR CredentialID2 IN(17))" -> no rows
    ExecuteQueryDelete "Delete From CredentialBank Where unitkey=7 And RID in (17)" -> 0 ! "locked"
    )~" + std::string(kNoneDeletedMessage)));
}

TYPED_TEST(ReportDeletion, StopsWhenTheCheckFails) {
  this->Host().gate().FailOn("ExecuteSelect");
  EXPECT_FALSE(this->Delete());
  EXPECT_EQ(this->Deleted(), 99);
  EXPECT_TRUE(this->TranscriptIs(R"~(
    CreateObject "qorDBI.clsDBManager"
    ExecuteSelect "Select TenantID from Tenants where UnitKey=7 And (CredentialID1 IN () OR CredentialID2 IN())" ! 1000 "Injected failure"
    Trapped pbValidate 1000 "Injected failure"
    Release "qorDBI.clsDBManager"
  )~"));
}

TYPED_TEST(ReportDeletion, WithoutAManagerDoesNothing) {
  this->Host().gate().FailOn("CreateObject");
  EXPECT_FALSE(this->Delete());
  EXPECT_TRUE(this->TranscriptIs(R"~(
    CreateObject "qorDBI.clsDBManager" ! 1000 "Injected failure"
    Trapped pbDelete 1000 "Injected failure"
  )~"));
}

TYPED_TEST(ReportDeletion, KeepsItsCountWhenTheMessageCannotBeShown) {
  this->Database().Number("Delete From CredentialBank", 0);
  this->Host().gate().FailOn("MsgBox");
  EXPECT_FALSE(this->Delete());
  EXPECT_EQ(this->Deleted(), 0);
  EXPECT_EQ(this->Host().services().LiveComponents(), 0);
}

TYPED_TEST(ReportDeletion, ChecksWithTheManagerItIsGiven) {
  this->Choose("17,18");
  EXPECT_TRUE(this->Validate());
  EXPECT_TRUE(SameLines(this->CheckLines(), R"~(
    ExecuteSelect "Select TenantID from Tenants where UnitKey=7 And (CredentialID1 IN (17,18) OR CredentialID2 IN(17,18))" -> no rows
  )~"));
}

TYPED_TEST(ReportDeletion, CheckRefusesWhatATenantHolds) {
  this->Choose("17");
  this->Database().Select("from Tenants", {{55}, {56}});
  EXPECT_FALSE(this->Validate(8));
  EXPECT_TRUE(SameLines(this->CheckLines(), R"~(
    ExecuteSelect "Select TenantID from Tenants where UnitKey=8 And (CredentialID1 IN (17) OR CredentialID2 IN(17))" -> 2 rows
    )~" + std::string(kHeldMessage)));
}

TYPED_TEST(ReportDeletion, CheckLooksAtTheFirstCellAlone) {
  const struct {
    const char* name;
    Value cell;
    bool valid;
  } rows[] = {{"EmptyText", "", true}, {"Number", 0, false}, {"Blank", " ", false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    this->Database().Replace("from Tenants", {.rows = {{row.cell}, {55}}});
    EXPECT_EQ(this->Validate(), row.valid);
  }
}

TYPED_TEST(ReportDeletion, CheckOfNoIdsAsksAllTheSame) {
  this->Choose("");
  EXPECT_TRUE(this->Validate());
  EXPECT_TRUE(SameLines(this->CheckLines(), R"~(
    ExecuteSelect "Select TenantID from Tenants where UnitKey=7 And (CredentialID1 IN () OR CredentialID2 IN())" -> no rows
  )~"));
}

TYPED_TEST(ReportDeletion, CheckWithoutAManagerOrAnAnswerIsFalse) {
  EXPECT_FALSE(this->Controller().pbValidate(this->Connection(), kUnit, nullptr));
  ASSERT_EQ(this->Host().services().trapped().size(), 1U);
  EXPECT_EQ(this->Host().services().trapped().front(),
            std::pair(std::string("pbValidate"), ErrorNumber::kObjectNotSet));

  this->Database().On("from Tenants", {.nothing = true});
  EXPECT_FALSE(this->Validate());
  EXPECT_TRUE(this->Host().transcript().StartingWith("MsgBox").empty());
}

}  // namespace
}  // namespace qortest
