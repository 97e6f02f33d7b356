// Lists of a host's own that count selections below -1: the credential report takes none of them
// for a choice, the directory-code report only -1 for none.
#include <memory>

#include "tests/reports/report_fixture.h"
#include "tests/support/overlaid_object.h"

namespace qortest {
namespace {

using qorcred::ObjectRef;
using qorcred::Value;

/// The filter screen on which every list of the array `name` has the selection `index`.
ObjectRef WithSelection(RecordingHost& host, const std::string& name, std::int32_t index) {
  const ObjectRef array = qorcred::RequireObject(qorcred::Get(*host.screen(), name));
  const ObjectRef list = qorcred::RequireObject(qorcred::Get(*array, "", 0));
  const ObjectRef overlaid =
      std::make_shared<OverlaidObject>(list, OverlaidObject::Answers{{"ListIndex", Value(index)}});
  return WithControl(host.screen(), name, {{"", Value(overlaid)}});
}

TEST(OwnFilterLists, AnyIndexBelowZeroIsNoChoiceInTheCredentialReport) {
  for (const std::string name : {"cboField", "cboFilter"}) {
    CredentialReportDesk desk;
    desk.controller().pbPopulateArrOperators();
    ObjectRef rows = std::make_shared<qorcred::ResultTable>();
    std::string plain;
    ASSERT_TRUE(desk.controller().pbGenSql(desk.host().connection(), kUnit, rows, plain));
    for (std::int32_t row = 0; row < kFilterRows; ++row) {
      ChooseFieldAt(desk.host(), row, 1);
      RowControl<qorhost::ListModel>(desk.host(), "cboFilter", row).AddItem("=");
      RowControl<qorhost::ListModel>(desk.host(), "cboFilter", row).Select(0);
      RowControl<qorhost::TextModel>(desk.host(), "txtFrom", row).SetText("5");
    }
    desk.controller().set_gfrmTxFilter(WithSelection(desk.host(), name, -2));
    std::string statement;

    EXPECT_TRUE(desk.controller().pbGenSql(desk.host().connection(), kUnit, rows, statement))
        << name;

    EXPECT_EQ(statement, plain) << name;
  }
}

TEST(OwnFilterLists, OnlyMinusOneIsNoChoiceInTheDirectoryCodeReport) {
  for (const std::string name : {"cboField", "cboFilter"}) {
    DirCodeReportDesk desk;
    desk.controller().set_gfrmTxFilter(WithSelection(desk.host(), name, -1));
    EXPECT_NO_THROW(desk.controller().pbGenSql(desk.host().connection(), kUnit)) << name;
  }
  // What the list makes of the index ends the operation, which raises it.
  DirCodeReportDesk desk;
  ChooseField(desk.host(), 0, 52);
  RowControl<qorhost::ListModel>(desk.host(), "cboFilter", 0).AddItem("equal");
  RowControl<qorhost::ListModel>(desk.host(), "cboFilter", 0).Select(0);
  desk.controller().set_gfrmTxFilter(WithSelection(desk.host(), "cboField", -2));
  EXPECT_THROW(desk.controller().pbGenSql(desk.host().connection(), kUnit), qorcred::RuntimeError);
}

}  // namespace
}  // namespace qortest
