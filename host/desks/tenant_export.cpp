#include "host/desks/tenant_export.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "credentials/credential_type.h"
#include "frame/convert.h"
#include "frame/text.h"
#include "host/desks/credential_types.h"
#include "host/desks/list_entries.h"
#include "host/desks/listed_rows.h"
#include "host/desks/stored_row.h"
#include "host/desks/tenant_adding.h"
#include "host/desks/tenant_file.h"
#include "host/desks/tenant_rows.h"
#include "host/desks/whole_number.h"
#include "host/dialect/canonical_date.h"

namespace qorhost {

namespace {

namespace file_column = tenant_file_column;

using qorcred::TextOrEmpty;
using qorcred::Value;

std::string DayText(const std::optional<qorcred::Date>& date) {
  return date ? dialect::CanonicalDate(*date) : std::string();
}

std::string DayIn(const Value& cell) {
  const auto* date = cell.As<qorcred::Date>();
  return date == nullptr ? std::string() : dialect::CanonicalDate(*date);
}

std::string TrueOrFalse(const Value& cell) {
  const bool isSet = !qorcred::IsEmptyText(cell) && qorcred::ToBoolean(cell);
  return isSet ? "True" : "False";
}

/// Names where each is the only one of its kind, else what says the same for certain.
class Names {
 public:
  void Add(std::int32_t id, const std::string& name) {
    names_[id] = name;
    ++count_[FoldedName(name)];
  }
  [[nodiscard]] std::string Of(std::int32_t id) const {
    const auto found = names_.find(id);
    const bool isClear = found != names_.end() && !qorcred::Trim(found->second).empty() &&
                         count_.at(FoldedName(found->second)) == 1 && !WholeNumber(found->second) &&
                         found->second.find(',') == std::string::npos;
    return isClear ? found->second : std::to_string(id);
  }

 private:
  static std::string FoldedName(const std::string& name) {
    std::string folded(qorcred::Trim(name));
    std::transform(folded.begin(), folded.end(), folded.begin(), qorcred::LowerAscii);
    return folded;
  }

  std::map<std::int32_t, std::string> names_;
  std::map<std::string, int> count_;
};

using Cells = std::vector<Value>;

class TenantExport {
 public:
  TenantExport(DeskSession& session, std::int32_t unitKey)
      : session_(session),
        unitKey_(unitKey),
        links_(session, unitKey),
        groupZero_(GroupZeroOf(session, unitKey)) {
    for (const auto& [id, name] : links_.schedules) {
      schedules_.Add(id, name);
    }
    ReadDoors();
    ReadCards();
    ReadCodes();
  }

  [[nodiscard]] Table Run() {
    Table table;
    for (const ImportColumn& one : TenantFileColumns().first(file_column::kExported)) {
      table.columns.push_back({std::string(one.heading), std::string(one.heading)});
    }
    std::vector<TenantRow> tenants = ReadTenants(session_, unitKey_);
    std::sort(tenants.begin(), tenants.end(),
              [](const TenantRow& one, const TenantRow& other) { return one.rid < other.rid; });
    for (const TenantRow& tenant : tenants) {
      table.rows.push_back(RowOf(tenant));
    }
    for (const auto& [rid, card] : cards_) {
      if (!held_.contains(rid)) {
        Cells row = Nobodys();
        Put(row, file_column::kCard1, card);
        table.rows.push_back(std::move(row));
      }
    }
    for (const auto& [rid, code] : codes_) {
      if (!dialled_.contains(rid)) {
        Cells row = Nobodys();
        Put(row, file_column::kCode, code);
        table.rows.push_back(std::move(row));
      }
    }
    return table;
  }

 private:
  void ReadDoors() {
    const QueryResult rows = session_.sql().Select(
        fmt::format("SELECT DOORNAME FROM DOORS WHERE UNITKEY={} ORDER BY DOORID", unitKey_));
    std::int32_t door = 0;
    for (const ResultRow row : rows.rows()) {
      doors_.Add(++door, TextOrEmpty(row[0]));
    }
  }

  void ReadCards() {
    const QueryResult rows = session_.sql().Select(
        fmt::format("SELECT RID, CredentialType, PINNo, FacilityCode, IDCode, SequenceNumber, "
                    "ButtonNumber, DOORCODE FROM CREDENTIALBANK WHERE UnitKey={}",
                    unitKey_));
    for (const ResultRow row : rows.rows()) {
      const std::int32_t type = StoredNumber(row[1]);
      const auto known = CredentialTypes();
      const auto name = std::find_if(known.begin(), known.end(),
                                     [type](const auto& one) { return one.type == type; });
      Cells cells{name == known.end() ? std::to_string(type) : std::string(name->reportName),
                  row[2], row[3]};
      for (std::int32_t at = 4; at <= 6; ++at) {
        cells.push_back(type == qorcred::kTransmitter ? row[at] : Value(qorcred::Null{}));
      }
      const std::int32_t door = StoredNumber(row[7]);
      cells.emplace_back(qorcred::IsEmptyText(row[7]) ? std::string()
                         : door == 0                  ? std::string(kNoneWord)
                                                      : doors_.Of(door));
      cards_.emplace(StoredNumber(row[0]), std::move(cells));
    }
  }

  void ReadCodes() {
    const QueryResult rows = session_.sql().Select(fmt::format(
        "SELECT RID, DIRECTORYCODE, PHONENUMBER, EXTENSION, TIMEDELAY, DISPLAYNAME, ACTIVE, "
        "STARTDATE, ENDDATE, ISDNDCHECKED, DNDSCHEDULEID, ISCFCHECKED, CFSCHEDULEID, "
        "CFPHONENUMBER, CFEXTENSION, CFTIMEDELAY, SHOWDISPLAYNAME, SHOWDIRECTORYCODE, MODIFIED "
        "FROM DIRECTORYCODE WHERE UNITKEY={}",
        unitKey_));
    for (const ResultRow row : rows.rows()) {
      if (!IsListedCode(row[1], row[18])) {
        continue;
      }
      const bool isActive = TrueOrFalse(row[6]) == "True";
      const bool isForwarded = TrueOrFalse(row[11]) == "True";
      codes_.emplace(
          StoredNumber(row[0]),
          Cells{row[1], TextOrEmpty(row[2]), TextOrEmpty(row[3]), DelayIn(row[3], row[4]),
                TextOrEmpty(row[5]), isActive ? "Active" : "Inactive", DayIn(row[7]), DayIn(row[8]),
                TrueOrFalse(row[9]), ScheduleIn(row[10]), TrueOrFalse(row[11]), ScheduleIn(row[12]),
                TextOrEmpty(row[13]), TextOrEmpty(row[14]),
                isForwarded ? DelayIn(row[14], row[15]) : Value(std::string()),
                TrueOrFalse(row[16]), TrueOrFalse(row[17])});
    }
  }

  /// Without an extension there is nothing to delay.
  static Value DelayIn(const Value& extension, const Value& delay) {
    return TextOrEmpty(extension).empty() ? Value(std::string()) : delay;
  }

  [[nodiscard]] std::string ScheduleIn(const Value& cell) const {
    return qorcred::IsEmptyText(cell) ? std::string() : schedules_.Of(StoredNumber(cell));
  }

  static void Put(Cells& row, std::size_t first, const Cells& cells) {
    std::copy(cells.begin(), cells.end(), row.begin() + static_cast<std::ptrdiff_t>(first));
  }

  static Cells Nobodys() {
    Cells row(file_column::kExported, Value(std::string()));
    row[file_column::kLastName] = std::string(kNobody);
    return row;
  }

  [[nodiscard]] Cells RowOf(const TenantRow& tenant) {
    Cells row(file_column::kExported, Value(std::string()));
    row[file_column::kTenantId] = tenant.tenantId;
    row[file_column::kLastName] = tenant.lastName;
    row[file_column::kFirstName] = tenant.firstName;
    row[file_column::kInitial] = tenant.initial;
    row[file_column::kNameAtUnit] =
        tenant.nameAtUnit.empty() ? std::string(kNoneEntry) : tenant.nameAtUnit;
    row[file_column::kGroup] = tenant.group == groupZero_ ? "zero" : std::to_string(tenant.group);
    row[file_column::kActive] = tenant.active ? "yes" : "no";
    row[file_column::kStart] = DayText(tenant.start);
    row[file_column::kEnd] = DayText(tenant.end);
    for (std::size_t door = 0; door < kTenantDoors; ++door) {
      row[file_column::kSchedule1 + door] = schedules_.Of(tenant.schedules.at(door));
    }
    row[file_column::kResident] = tenant.resident ? "yes" : "no";
    constexpr std::array<std::size_t, kTenantCards> kFirsts{file_column::kCard1,
                                                            file_column::kCard2};
    for (std::size_t slot = 0; slot < kTenantCards; ++slot) {
      if (const auto card = cards_.find(tenant.cards.at(slot)); card != cards_.end()) {
        Put(row, kFirsts.at(slot), card->second);
        held_.insert(card->first);
      }
    }
    if (const auto code = codes_.find(tenant.code); code != codes_.end()) {
      Put(row, file_column::kCode, code->second);
      dialled_.insert(code->first);
    }
    return row;
  }

  DeskSession& session_;
  std::int32_t unitKey_;
  TenantLinks links_;
  std::int32_t groupZero_;
  Names schedules_;
  Names doors_;
  std::map<std::int32_t, Cells> cards_;
  std::map<std::int32_t, Cells> codes_;
  std::unordered_set<std::int32_t> held_;
  std::unordered_set<std::int32_t> dialled_;
};

}  // namespace

Table ExportedTenants(DeskSession& session, std::int32_t unitKey) {
  const Undoable oneState = session.OneState();
  return TenantExport(session, unitKey).Run();
}

}  // namespace qorhost
