// The statement of the credential report.
#include <cstddef>
#include <cstdint>

#include "frame/convert.h"
#include "frame/sql_text.h"
#include "frame/text.h"
#include "frame/trap.h"
#include "reports/cls_credential_report.h"

namespace qorcred {

namespace {

// Places in the field table.
constexpr std::int32_t kType = 0;
constexpr std::int32_t kNumber = 1;
constexpr std::int32_t kFacilityCode = 2;
constexpr std::int32_t kTenantName = 3;

// Credentials that tenants hold. Spelled differently from the next one in many places; hosts rely
// on both as they stand.
std::string AssignedQuery(std::int32_t unitKey) {
  return Concat(
      "SELECT  iif(CredentialType=0,'Corvin 30 Bit card',iif(CredentialType=1,'Standard 26 Bit "
      "card',iif(CredentialType=2,'Transmitter','Corporate 1000 35-Bit Card'))),"
      " PINNO,a.facilitycode,iif(a.CredentialType<>2,Null,a.IDCode),iif(a.CredentialType<>2,Null,"
      "a.sequencenumber),iif(a.CredentialType<>2,Null,a.buttonnumber), "
      " b.LastName & ' '  &  b.FirstName & ' '  &   b.MiddleInitial ,a.CredentialType,a.RID,b.RID "
      " FROM credentialbank a,  tenants b  where (a.RID = b.CredentialID1  or a.RID = "
      "b.CredentialID2) and a.unitkey=",
      unitKey, " ");
}

// Credentials that nobody holds.
std::string UnassignedQuery(std::int32_t unitKey) {
  return Concat(
      " SELECT  IIf([CredentialType]=0,'Corvin 30 Bit card',IIf([CredentialType]=1,'Standard 26 "
      "Bit card',IIf([CredentialType]=2,'Transmitter','Corporate 1000 35-Bit Card'))) AS "
      "'Credential Type', "
      " a.PINNo, a.FacilityCode, iif(a.CredentialType<>2,Null,a.IDCode), "
      "iif(a.CredentialType<>2,Null,a.SequenceNumber), "
      "iif(a.CredentialType<>2,Null,a.ButtonNumber),"
      " 'Unassigned' AS 'Assigned To', a.CredentialType, a.RID, -1 AS 'TenantRID' "
      " FROM credentialbank AS a "
      " WHERE a.UnitKey=",
      unitKey, " and a.RID Not In (SELECT CredentialID1  FROM   tenants where unitkey=", unitKey,
      " and Resident=0 and CredentialID1 is not null) "
      " and a.RID Not In (SELECT CredentialID2  FROM   tenants where   unitkey=",
      unitKey, " and Resident=0 and CredentialID2 is not null) ");
}

// ReplaceAll, but kOutOfMemory for a text that no store takes: a value that holds the placeholder
// of ranges multiplies with each range that follows, and a few rows of such values would fill any
// memory.
std::string Replaced(std::string_view text, std::string_view from, std::string_view to) {
  constexpr std::uint64_t kLongestText = 64U << 20U;
  std::uint64_t size = text.size();
  for (std::size_t at = text.find(from); at != std::string_view::npos;
       at = text.find(from, at + from.size())) {
    size += to.size();
  }
  if (size > kLongestText) throw RuntimeError(ErrorNumber::kOutOfMemory);
  return ReplaceAll(text, from, to);
}

/// Both statements while the filter rows are added to them, and what the rows say of names.
struct Composition {
  std::string assigned;
  std::string unassigned;
  bool emptyNameWanted = false;
  bool nameRestricts = false;

  void Append(std::string_view condition) {
    assigned += condition;
    unassigned += condition;
  }
  void ReplaceEverywhere(std::string_view from, std::string_view to) {
    assigned = Replaced(assigned, from, to);
    unassigned = Replaced(unassigned, from, to);
  }
};

/// One row of the filter screen.
struct FilterRow {
  std::int32_t field = 0;
  std::int32_t operation = 0;
  std::string word;  ///< the operator as the screen shows it
  std::string first;
  std::string second;
};

// Raises kIndexOutOfRange also while the tables are not filled.
const std::string& Entry(const std::vector<std::string>& table, std::int32_t index) {
  if (index < 0 || static_cast<std::size_t>(index) >= table.size()) {
    throw RuntimeError(ErrorNumber::kIndexOutOfRange);
  }
  return table[static_cast<std::size_t>(index)];
}

void AddNumber(Composition& statement, const OperatorTables& operators, const FilterRow& row) {
  const bool isRange = Contains(row.word, "between");
  if (row.first.empty()) return;
  if (!isRange) {
    statement.Append(Concat(" And ", Entry(operators.field, row.field), " ",
                            Entry(operators.numeric, row.operation), row.first));
    return;
  }
  // An unfinished range does not narrow the report.
  if (row.second.empty()) return;
  statement.Append(Concat(" AND ", Entry(operators.field, row.field), " ",
                          Entry(operators.numeric, row.operation)));
  // In everything composed so far, the values of earlier rows included. Hosts rely on it.
  statement.ReplaceEverywhere("^1", row.first);
  statement.ReplaceEverywhere("^2", row.second);
}

bool Finds(std::string_view word) {
  return word == "equal" || word == "begins with" || word == "ends with" || word == "contains";
}

bool Excludes(std::string_view word) {
  return word == "does not equal" || word == "does not begin with" || word == "does not end with" ||
         word == "does not contain";
}

void AddName(Composition& statement, const OperatorTables& operators, const FilterRow& row) {
  if (!row.first.empty()) {
    statement.Append(Concat(" And ", Entry(operators.field, row.field), " ",
                            ReplaceAll(Entry(operators.text, row.operation), "^", row.first)));
    statement.nameRestricts = true;
  } else if (Finds(row.word)) {
    statement.emptyNameWanted = true;
  } else if (Excludes(row.word)) {
    statement.nameRestricts = true;
  }
}

std::string Trimmed(std::string_view text) {
  return std::string(Trim(text));
}

void AddRow(Composition& statement, const OperatorTables& operators, const Screen& screen,
            std::int32_t index) {
  const ListControl fields = screen.Array("cboField").List(index);
  const ListControl operations = screen.Array("cboFilter").List(index);
  const std::int32_t chosenField = fields.ListIndex();
  const std::int32_t chosenOperation = operations.ListIndex();
  if (chosenField < 0 || chosenOperation < 0) return;

  const FilterRow row{.field = chosenField,
                      .operation = chosenOperation,
                      .word = Trimmed(operations.Text()),
                      .first = Trimmed(screen.Array("txtFrom").Box(index).Text()),
                      .second = Trimmed(screen.Array("txtTo").Box(index).Text())};
  if (row.field == kNumber || row.field == kFacilityCode) {
    AddNumber(statement, operators, row);
  } else if (row.field == kTenantName) {
    AddName(statement, operators, row);
  } else if (row.field == kType) {
    const std::int32_t type = screen.Array("cboType").List(index).SelectedItemData();
    statement.Append(Concat(" AND ", Entry(operators.field, row.field), "=", type));
  }
}

}  // namespace

bool clsCredentialReport::pbGenSql(const ObjectRef& objConn, std::int32_t lngUnitKey,
                                   ObjectRef& arrXDBTx, std::string& strSQL) {
  bool done = false;
  Trap(host(), "pbGenSql", [&] {
    const std::string statement = ComposeStatement(lngUnitKey);
    const DatabaseManager manager = NewManager();
    TableView(arrXDBTx).ReDim(0, 0, 0, 0);
    strSQL = statement;
    error() = {};  // the result tells of this statement alone
    arrXDBTx = manager.ExecuteSelect(objConn, statement, error()).reference();
    done = !error().flag && error().text.empty();
  });
  return done;
}

std::string clsCredentialReport::ComposeStatement(std::int32_t unitKey) const {
  const Screen screen = RequireFilterScreen();
  Composition statement{.assigned = AssignedQuery(unitKey), .unassigned = UnassignedQuery(unitKey)};
  const std::int32_t rows = screen.Array("cboField").Count();
  for (std::int32_t row = 0; row < rows; ++row) AddRow(statement, operators(), screen, row);

  if (statement.emptyNameWanted == statement.nameRestricts) {
    return Concat(statement.assigned, " Union ", statement.unassigned);
  }
  return statement.emptyNameWanted ? statement.unassigned : statement.assigned;
}

}  // namespace qorcred
