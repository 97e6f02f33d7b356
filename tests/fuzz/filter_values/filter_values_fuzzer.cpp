// Any text into the filter rows of both reports, on a store: the statement holds it as it is, the
// store refuses the statement or answers it as one SELECT, and nothing is changed.
// A line is a row: a letter for the field, a digit for the operator, the first value and, behind a
// tab, the second one. The last row takes whatever is left, line ends included.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "frame/data_services.h"
#include "frame/result_table.h"
#include "frame/text.h"
#include "host/components/store_host.h"
#include "host/dialect/translator.h"
#include "host/screens/report_filter_screen.h"
#include "host/store/engines/opening.h"
#include "host/store/sqlite/printer.h"
#include "host/store/sqlite/store.h"
#include "host/store/store_connection.h"
#include "reports/cls_credential_report.h"
#include "reports/cls_dir_code_report.h"
#include "reports/dir_code_fragments.h"
#include "tests/fuzz/check.h"

namespace {

using qortest::Check;

constexpr std::int32_t kUnit = 1;
// Rows that were added, changed or deleted so far, undone ones too.
constexpr std::string_view kChanges = "SELECT total_changes()";
constexpr std::size_t kRows = qorhost::kFewestFilterRows;
constexpr std::int32_t kOperations = 8;
constexpr std::int32_t kCredentialFields = 4;
constexpr std::int32_t kTenantName = 3;
constexpr std::int32_t kFirstField = 50;  // one that the store does not have
constexpr std::int32_t kFields = 20;
constexpr std::string_view kNow = "2026-01-31 14:05:09";

constexpr const char* kStored =
    "INSERT INTO Units (UnitKey, UnitName) VALUES (1, 'Court');"
    "INSERT INTO Schedules (UnitKey, ScheduleID, ScheduleName) VALUES (1, 1, 'Day'), (1, 7, "
    "'Night');"
    "INSERT INTO DirectoryCode (UNITKEY, DIRECTORYCODE, DISPLAYNAME, TIMEDELAY, DNDSCHEDULEID,"
    " ACTIVE, STARTDATE) VALUES (1, 1, 'Roe', 0, 1, -1, '2026-01-31 00:00:00'),"
    " (1, 2, 'O''Brien', 3, 7, 0, NULL), (1, 3, NULL, NULL, NULL, NULL, NULL);"
    "INSERT INTO CredentialBank (UnitKey, CredentialType, PINNo, FacilityCode) VALUES (1, 0, 7, 1),"
    " (1, 1, 8, 1), (1, 2, 9, NULL);"
    "INSERT INTO Tenants (UnitKey, LastName, FirstName, CREDENTIALID1) VALUES (1, 'Roe', 'Rita', "
    "1), (1, 'Doe', 'Jane', NULL);";

constexpr std::string_view kWords[] = {"equal",   "does not equal", "begins with",
                                       "between", "ends with",      "does not end with",
                                       "between", "not between"};

struct Row {
  std::int32_t field = 0;
  std::int32_t operation = 0;
  std::string_view first;
  std::string_view second;
};

Row ReadRow(std::string_view line) {
  Row row;
  row.field = line.empty() ? 0 : static_cast<unsigned char>(line[0]);
  row.operation = line.size() < 2 ? 0 : static_cast<unsigned char>(line[1]) % kOperations;
  line.remove_prefix(line.size() < 2 ? line.size() : 2);
  const std::size_t tab = line.find('\t');
  row.first = line.substr(0, tab);
  if (tab != std::string_view::npos) row.second = line.substr(tab + 1);
  return row;
}

// Both reports over one store.
class Desk {
 public:
  Desk()
      : store_(std::make_shared<qorhost::StoreConnection>(qorhost::OpenMemoryStore(),
                                                          [] { return qorcred::Date{46053}; })),
        host_(MakeServices()),
        codes_(host_),
        credentials_(host_) {
    Raw().Run(kStored);
    screen_ = qorhost::MakeReportFilterScreen(kRows, qorcred::Date{46053});
    for (std::size_t row = 0; row < kRows; ++row) {
      auto& operations = At<qorhost::ListModel>("cboFilter", row);
      for (const std::string_view word : kWords) operations.AddItem(std::string(word));
      auto& types = At<qorhost::ListModel>("cboType", row);
      types.AddItem("type");
      types.Select(0);
    }
    codes_.set_gfrmTxFilter(screen_);
    credentials_.set_gfrmTxFilter(screen_);
    credentials_.pbPopulateArrOperators();
    schema_ = Raw().Number("PRAGMA schema_version");
    changes_ = Raw().Number(kChanges);
  }

  void Enter(std::size_t index, const Row& row) {
    At<qorhost::ListModel>("cboFilter", index).Select(row.operation);
    At<qorhost::TextModel>("txtFrom", index).SetText(std::string(row.first));
    At<qorhost::TextModel>("txtTo", index).SetText(std::string(row.second));
  }
  void Leave(std::size_t index) { At<qorhost::ListModel>("cboField", index).Clear(); }

  void ChooseCodeField(std::size_t index, std::int32_t field) {
    auto& fields = At<qorhost::ListModel>("cboField", index);
    fields.Clear();
    fields.AddItem("field");
    qorcred::Put(fields, "ItemData", std::int32_t{0}, field);
    fields.Select(0);
  }
  void ChooseCredentialField(std::size_t index, std::int32_t place) {
    auto& fields = At<qorhost::ListModel>("cboField", index);
    fields.Clear();
    for (std::int32_t field = 0; field < kCredentialFields; ++field) fields.AddItem("field");
    fields.Select(place);
  }

  // The statement, or "" when a number in a row is beyond all numbers.
  std::string ReportCodes() {
    std::string statement;
    try {
      statement = codes_.pbGenSql(store_, kUnit);
    } catch (const qorcred::RuntimeError& failure) {
      Check(failure.number() == qorcred::ErrorNumber::kOverflow, "only numbers raise");
      return statement;
    }
    const qorcred::DatabaseManager manager(host_.CreateComponent("qorDBI.clsDBManager"));
    qorcred::DatabaseError error;
    const qorcred::TableView rows = manager.ExecuteSelect(store_, statement, error);
    CheckOutcome(statement, rows, !error.flag);
    Check(error.flag == !error.text.empty(), "a failure has a text");
    return statement;
  }

  std::string ReportCredentials() {
    std::string statement;
    qorcred::ObjectRef rows = std::make_shared<qorcred::ResultTable>();
    const bool done = credentials_.pbGenSql(store_, kUnit, rows, statement);
    CheckOutcome(statement, qorcred::TableView(rows), done);
    return statement;
  }

 private:
  static qorhost::StoreHost::Services MakeServices() {
    qorhost::StoreHost::Services services;
    services.clock = [] { return qorcred::Date{46053}; };
    return services;
  }

  template <typename Kind>
  Kind& At(std::string_view name, std::size_t row) {
    return dynamic_cast<Kind&>(*screen_->Get<qorhost::ControlArrayModel>(name).at(row));
  }

  void CheckOutcome(const std::string& statement, const qorcred::TableView& rows, bool done) {
    Check(done || rows.HasNoRows(), "what is refused gives no rows");
    if (done) {
      const auto translation = translator_.Translate(statement, kNow);
      Check(translation.shape->kind == qorhost::dialect::StatementKind::kSelect,
            "what is answered is one SELECT");
    }
    Check(store_->BusyStatements() == 0 && store_->OpenTransactions() == 0, "nothing stays open");
    Check(Raw().Number(kChanges) == changes_, "no row is changed");
    Check(Raw().Number("PRAGMA schema_version") == schema_, "no table is changed");
  }

  [[nodiscard]] qorhost::sqlite::Database& Raw() {
    return qorhost::sqlite::DatabaseOf(store_->store());
  }

  std::shared_ptr<qorhost::StoreConnection> store_;
  qorhost::StoreHost host_;
  qorcred::clsDirCodeReport codes_;
  qorcred::clsCredentialReport credentials_;
  std::shared_ptr<qorhost::ScreenModel> screen_;
  qorhost::dialect::Translator translator_{&qorhost::sqlite::Print};
  std::int64_t schema_ = 0;
  std::int64_t changes_ = 0;
};

bool IsPasted(std::int16_t field, const Row& row) {
  using namespace qorcred::report_field;
  switch (field) {
    case kPhoneNumber:
    case kExtension:
    case kCfPhoneNumber:
    case kCfExtension:
    case kDndSchedule:
    case kCfSchedule:
    case kDisplayName:
      return !qorcred::Trim(row.first).empty();
    default:
      return false;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Desk desk;
  const std::string input(data, data + size);

  Row rows[kRows];
  std::size_t used = 0;
  for (std::string_view rest = input; used < kRows && !rest.empty(); ++used) {
    const std::size_t end = used + 1 < kRows ? rest.find('\n') : std::string_view::npos;
    rows[used] = ReadRow(rest.substr(0, end));
    desk.Enter(used, rows[used]);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  }
  for (std::size_t row = used; row < kRows; ++row) desk.Leave(row);

  const auto codeField = [&](std::size_t row) {
    return static_cast<std::int16_t>(kFirstField + rows[row].field % kFields);
  };
  for (std::size_t row = 0; row < used; ++row) desk.ChooseCodeField(row, codeField(row));
  const std::string codes = desk.ReportCodes();
  for (std::size_t row = 0; row < used && !codes.empty(); ++row) {
    Check(!IsPasted(codeField(row), rows[row]) ||
              qorcred::Contains(codes, qorcred::Trim(rows[row].first)),
          "a value stands in the statement as it is");
  }

  const auto place = [&](std::size_t row) { return rows[row].field % kCredentialFields; };
  for (std::size_t row = 0; row < used; ++row) desk.ChooseCredentialField(row, place(row));
  const std::string credentials = desk.ReportCredentials();
  for (std::size_t row = 0; row < used; ++row) {
    // A value that holds a placeholder may get the values of a range.
    const std::string_view name = qorcred::Trim(rows[row].first);
    Check(place(row) != kTenantName || qorcred::Contains(name, "^") ||
              qorcred::Contains(credentials, name),
          "a name stands in the statement as it is");
  }
  return 0;
}
