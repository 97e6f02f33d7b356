// A report controller's life: it makes nothing before it is asked and keeps nothing but its
// properties.
#include <memory>
#include <string>
#include <type_traits>

#include "frame/result_table.h"
#include "frame/runtime_error.h"
#include "tests/reports/report_fixture.h"

namespace qortest {
namespace {

using qorcred::ErrorNumber;
using qorcred::ObjectRef;
using qorcred::ResultTable;

template <typename Report>
class ReportLifecycle : public ReportTest<Report> {};
TYPED_TEST_SUITE(ReportLifecycle, BothReports, ReportNames);

TYPED_TEST(ReportLifecycle, StartsWithNothing) {
  RecordingHost host(ScreenKind::kReportFilter);
  {
    const UnderTest<TypeParam> report(host.host());
    EXPECT_EQ(report.gfrmTxFilter(), nullptr);
    EXPECT_EQ(report.mlngUnitKey(), 0);
    EXPECT_EQ(report.gstrRIDsForDeletion(), "");
  }
  EXPECT_EQ(host.gate().calls(), 0U);
  EXPECT_TRUE(host.transcript().Read(Detail::kEverything).empty());
}

TYPED_TEST(ReportLifecycle, KeepsTheScreenUntilTheHostTakesItBack) {
  const auto count = this->Host().screen().use_count();
  EXPECT_EQ(this->Controller().gfrmTxFilter(), this->Host().screen());
  this->Controller().set_gfrmTxFilter(nullptr);
  EXPECT_EQ(this->Host().screen().use_count(), count - 1);
  this->Controller().set_gfrmTxFilter(this->Host().screen());
  EXPECT_EQ(this->Host().screen().use_count(), count);
  this->Desk().ReleaseController();
  EXPECT_EQ(this->Host().screen().use_count(), count - 1);
}

TYPED_TEST(ReportLifecycle, MakesAManagerForEachDeletionAndLetsItGo) {
  std::int32_t deleted = 0;
  (void)this->Controller().pbDelete(this->Connection(), kUnit, deleted);
  (void)this->Controller().pbDelete(this->Connection(), kUnit, deleted);
  EXPECT_EQ(this->Host().transcript().Read(Detail::kComponents),
            (Lines{"CreateObject \"qorDBI.clsDBManager\"", "Release \"qorDBI.clsDBManager\"",
                   "CreateObject \"qorDBI.clsDBManager\"", "Release \"qorDBI.clsDBManager\""}));
}

TYPED_TEST(ReportLifecycle, TwoControllersShareNothing) {
  UnderTest<TypeParam> other(this->Host().host());
  this->Controller().set_gstrRIDsForDeletion("17");
  this->Controller().pbPopulateArrOperators();
  EXPECT_EQ(other.gstrRIDsForDeletion(), "");
  EXPECT_EQ(other.gfrmTxFilter(), nullptr);
  EXPECT_EQ(other.mlngUnitKey(), 0);
}

TEST(DirCodeReportLifecycle, KeepsNothingOfACall) {
  DirCodeReportDesk desk;
  RecordingHost& host = desk.host();
  ChooseField(host, 0, 52);
  ChooseOperator(host, 0, 0);
  host.database().Select("SELECT RID, FieldNameDisplay", {{51, "Directory Code"}});
  host.database().Select("SELECT rows", {{12}});
  const auto connections = host.connection().use_count();
  const auto screens = host.screen().use_count();
  const auto grids = host.grid().use_count();
  ObjectRef item = host.Watched("colValueItem", std::make_shared<qorhost::GridValueItem>());
  ObjectRef layout;

  (void)desk.controller().pbGenSql(host.connection(), kUnit);
  (void)desk.controller().pbComboData(host.connection());
  (void)desk.controller().pbGetUnitName(host.connection(), kUnit);
  (void)desk.controller().pbGetEntryLength(host.connection());
  desk.controller().pvDirCodeReportResult(kUnit, host.connection(), host.grid(), "SELECT rows",
                                          layout, item);

  EXPECT_EQ(host.services().LiveComponents(), 0);
  EXPECT_EQ(host.connection().use_count(), connections);
  EXPECT_EQ(host.screen().use_count(), screens);
  EXPECT_EQ(host.grid().use_count(), grids);
  EXPECT_EQ(item.use_count(), 1);
  EXPECT_EQ(layout.use_count(), 1);
  EXPECT_EQ(host.database().LiveTables(), 2) << "the layout's and the one that the grid shows";
  layout.reset();
  host.ReplaceGrid(0);
  EXPECT_EQ(host.database().LiveTables(), 0);
  EXPECT_TRUE(host.services().trapped().empty());
}

TEST(DirCodeReportLifecycle, MakesOneManagerForEachOperation) {
  DirCodeReportDesk desk;
  RecordingHost& host = desk.host();
  const auto made = [&host](auto&& operation) {
    host.StartOver();
    operation();
    return host.transcript().StartingWith("CreateObject").size();
  };
  ObjectRef layout;
  EXPECT_EQ(made([&] { (void)desk.controller().pbGenSql(host.connection(), kUnit); }), 1U);
  EXPECT_EQ(made([&] { (void)desk.controller().pbComboData(host.connection()); }), 1U);
  EXPECT_EQ(made([&] { (void)desk.controller().pbGetUnitName(host.connection(), kUnit); }), 1U);
  EXPECT_EQ(made([&] { (void)desk.controller().pbGetEntryLength(host.connection()); }), 1U);
  // The second is that of the code length.
  EXPECT_EQ(made([&] {
              desk.controller().pvDirCodeReportResult(kUnit, host.connection(), host.grid(),
                                                      "SELECT rows", layout);
            }),
            2U);
  EXPECT_EQ(made([&] { desk.controller().pbPopulateArrOperators(); }), 0U);
}

TEST(CredentialReportLifecycle, KeepsNothingOfACall) {
  CredentialReportDesk desk;
  RecordingHost& host = desk.host();
  const auto connections = host.connection().use_count();
  const auto screens = host.screen().use_count();
  const auto given = std::make_shared<ResultTable>();
  ObjectRef rows = given;
  std::string statement;

  EXPECT_TRUE(desk.controller().pbGenSql(host.connection(), kUnit, rows, statement));

  EXPECT_EQ(given.use_count(), 1);
  EXPECT_EQ(rows.use_count(), 1);
  EXPECT_EQ(host.services().LiveComponents(), 0);
  EXPECT_EQ(host.connection().use_count(), connections);
  EXPECT_EQ(host.screen().use_count(), screens);
  EXPECT_EQ(host.database().LiveTables(), 1);
  rows.reset();
  EXPECT_EQ(host.database().LiveTables(), 0);
}

TEST(DirCodeReportLifecycle, WithoutAManagerFailsQuietlyButForTheStatement) {
  DirCodeReportDesk desk;
  RecordingHost& host = desk.host();
  const auto fail = [&host] { host.gate().FailOn("CreateObject"); };
  ObjectRef layout;
  fail();
  EXPECT_EQ(desk.controller().pbGetUnitName(host.connection(), kUnit), "");
  fail();
  EXPECT_EQ(desk.controller().pbGetEntryLength(host.connection()), 0);
  fail();
  EXPECT_EQ(desk.controller().pbComboData(host.connection()), "");
  fail();
  desk.controller().pvDirCodeReportResult(kUnit, host.connection(), host.grid(), "SELECT rows",
                                          layout);
  EXPECT_EQ(layout, nullptr);
  EXPECT_EQ(host.services().trapped().size(), 4U);
  fail();
  EXPECT_EQ(ErrorOf([&] { (void)desk.controller().pbGenSql(host.connection(), kUnit); }),
            static_cast<int>(ErrorNumber::kApplicationDefined));
  EXPECT_EQ(host.services().trapped().size(), 4U);
}

}  // namespace
}  // namespace qortest
