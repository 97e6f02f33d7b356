#include "host/desks/stored_codes.h"

#include <fmt/format.h>

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "frame/convert.h"
#include "frame/data_services.h"
#include "frame/text.h"
#include "host/desks/operation_record.h"
#include "host/desks/tenant_name.h"
#include "host/store/rows.h"
#include "host/unit/unit_rows.h"

namespace qorhost {

namespace {

using qorcred::TableView;

// Columns of the array that the controller fetches.
constexpr std::int32_t kFetchedRid = 1;
constexpr std::int32_t kFetchedNumber = 2;

/// Collects what the store has of each code, one reading after the other.
class StoredCodes {
 public:
  StoredCodes(DeskSession& session, std::int32_t unitKey) : session_(session), unitKey_(unitKey) {}

  void Fetch(Controlled<qorcred::clsDirCode>& controller);
  void ReadDetails();
  void ReadTenants();
  [[nodiscard]] std::vector<StoredCode> Take() { return std::move(codes_); }

 private:
  void AddPrevious(const TableView& fetched, std::int32_t firstPrevious);
  [[nodiscard]] StoredCode* Find(std::int32_t rid);

  DeskSession& session_;
  std::int32_t unitKey_;
  std::vector<StoredCode> codes_;
  std::unordered_map<std::int32_t, std::size_t> placeOf_;  // in codes_, by RID
};

void StoredCodes::Fetch(Controlled<qorcred::clsDirCode>& controller) {
  // The array does not say where the codes of now end: only their number does.
  const std::int32_t current = qorcred::RoundToLong(
      qorcred::NumericValue(session_.sql().Scalar(SelectOfCodes("COUNT(*)", unitKey_))));
  qorcred::ObjectRef fetched;
  const OperationRecord fetching(session_);
  controller.Run<&qorcred::clsDirCode::pbFetchDirForMerge>(session_.connection(), unitKey_,
                                                           fetched);
  fetching.RequireNoFailure("read the stored directory codes", kNothingChanged);

  const TableView table(fetched);
  const std::int32_t first = table.LowerRow();
  codes_.resize(static_cast<std::size_t>(current));
  for (std::size_t place = 0; place < codes_.size(); ++place) {
    const std::int32_t row = first + static_cast<std::int32_t>(place);
    codes_[place].rid = qorcred::ToLong(table.Cell(row, kFetchedRid));
    codes_[place].number = qorcred::NumericValue(table.Cell(row, kFetchedNumber));
    placeOf_.emplace(codes_[place].rid, place);
  }
  // Without a code of now the array still begins with a row, which is empty.
  AddPrevious(table, first + std::max(current, 1));
}

StoredCode* StoredCodes::Find(std::int32_t rid) {
  const auto found = placeOf_.find(rid);
  return found == placeOf_.end() ? nullptr : &codes_[found->second];
}

void StoredCodes::AddPrevious(const TableView& fetched, std::int32_t firstPrevious) {
  for (const std::int32_t row : RowNumbers(firstPrevious, fetched.UpperRow())) {
    StoredCode* code = Find(qorcred::ToLong(fetched.Cell(row, kFetchedRid)));
    const double previous = qorcred::NumericValue(fetched.Cell(row, kFetchedNumber));
    if (code != nullptr && previous != code->number) {
      code->previous = previous;
    }
  }
}

void StoredCodes::ReadDetails() {
  const QueryResult rows =
      session_.sql().Select(SelectOfCodes(fmt::format("RID,MODIFIED,{}", kUnitColumns), unitKey_));
  const TableView table{qorcred::ObjectRef(rows.table)};
  for (const ResultRow row : rows.rows()) {
    StoredCode* code = Find(qorcred::ToLong(row[0]));
    if (code == nullptr) {
      continue;
    }
    code->state = qorcred::RoundToInteger(qorcred::NumericValue(row[1]));
    RowReading reading = CodeFromRow(table, row.number(), 2);
    code->code = std::move(reading.code);
    code->obstacle = std::move(reading.obstacle);
  }
}

void StoredCodes::ReadTenants() {
  const QueryResult rows = session_.sql().Select(fmt::format(
      "SELECT DIRECTORYCODE, {} FROM Tenants WHERE UnitKey={} AND DIRECTORYCODE <> NULL "
      "ORDER BY TenantID",
      kTenantName, unitKey_));
  for (const ResultRow row : rows.rows()) {
    StoredCode* code = Find(qorcred::ToLong(row[0]));
    if (code != nullptr) {
      const std::string name = qorcred::TextOrEmpty(row[1]);
      code->tenants.emplace_back(qorcred::Trim(name));
    }
  }
}

}  // namespace

std::vector<StoredCode> ReadStoredCodes(DeskSession& session, std::int32_t unitKey,
                                        Controlled<qorcred::clsDirCode>& controller) {
  StoredCodes codes(session, unitKey);
  codes.Fetch(controller);
  codes.ReadDetails();
  codes.ReadTenants();
  return codes.Take();
}

}  // namespace qorhost
