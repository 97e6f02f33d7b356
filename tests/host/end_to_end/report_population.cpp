#include "tests/host/end_to_end/report_population.h"

#include <array>
#include <cstdlib>
#include <initializer_list>
#include <iostream>
#include <span>

#include "frame/date.h"
#include "host/dialect/canonical_date.h"
#include "host/store/transaction.h"

namespace qortest {

namespace {

using qorcred::Null;
using qorcred::Value;

constexpr std::uint64_t kUsualSeed = 20260131;

constexpr std::string_view kNames[] = {
    "Doe",   "doe",     "Roe",     "O'Brien", "Ärger", "ärger",   "Øster", "É",   "Яна",
    "жук",   "Ω point", "straße",  "日本",    "😀 Lee", "100%",    "a_b",   "[x]", "x\"y",
    "-- no", "Mc Coy",  " padded", "Anna",    "ANNA",  "annabel", "7",     "12",  "00",
};
constexpr std::string_view kScheduleNames[] = {
    "No Access", "Full Access", "night", "Night 2", "Day", "Ärger", "50%", "d_y", "O'Clock", ""};
constexpr std::string_view kDigits[] = {"5550100", "5550101", "0",      "12", "120",
                                        "5551",    "+1 555",  "555-01", "*7"};

std::int32_t UnitOf(Dice& dice) {
  return dice.Chance(66) ? 1 : 2;
}

Value Or(Dice& dice, std::size_t percentNull, const Value& value) {
  return dice.Chance(percentNull) ? Value(Null{}) : value;
}

template <typename List>
Value TextOf(Dice& dice, const List& list) {
  if (dice.Chance(12)) return Null{};
  return dice.Chance(12) ? Value("") : Value(dice.One(list));
}

Value NumberOf(Dice& dice, std::int32_t low, std::int32_t high) {
  return Or(dice, 10, dice.Number(low, high));
}

Value FlagOf(Dice& dice) {
  return Or(dice, 10, dice.Chance(50));
}

// Few days, so that many rows share one; midnight and the last second of the day among them.
Value DateOf(Dice& dice) {
  if (dice.Chance(15)) return Null{};
  qorcred::CivilTime civil{2024, 3, dice.Number(1, 9), 0, 0, 0};
  if (dice.Chance(25)) {
    civil.hour = 23;
    civil.minute = 59;
    civil.second = 59;
  } else if (dice.Chance(70)) {
    civil.hour = dice.Number(0, 23);
    civil.minute = dice.Number(0, 59);
    civil.second = dice.Number(0, 59);
  }
  return qorcred::FromCivil(civil);
}

// A code is seldom missing: a list of codes with a missing one excludes every row.
Value CodeOf(Dice& dice) {
  if (dice.Throw(400) == 0) return Null{};
  if (dice.Chance(3)) return -1.0;
  return static_cast<double>(dice.Number(0, 900));
}

CodeRow MakeCode(Dice& dice, std::int32_t rid) {
  using enum CodeColumn;
  CodeRow row;
  row.unit = UnitOf(dice);
  row[kCode] = CodeOf(dice);
  row[kPhone] = TextOf(dice, kDigits);
  row[kExtension] = TextOf(dice, kDigits);
  row[kDelay] = NumberOf(dice, -2, 30);
  row[kName] = TextOf(dice, kNames);
  row[kActive] = FlagOf(dice);
  row[kStart] = DateOf(dice);
  row[kEnd] = DateOf(dice);
  row[kIsDnd] = FlagOf(dice);
  row[kDndSchedule] = NumberOf(dice, -1, 12);
  row[kIsCf] = FlagOf(dice);
  row[kCfSchedule] = NumberOf(dice, -1, 12);
  row[kCfPhone] = TextOf(dice, kDigits);
  row[kCfExtension] = TextOf(dice, kDigits);
  row[kCfDelay] = NumberOf(dice, -2, 130);
  row[kShowName] = FlagOf(dice);
  row[kShowCode] = FlagOf(dice);
  row[kState] = dice.Number(0, 3);
  row[kOldCode] = Or(dice, 40, static_cast<double>(dice.Number(0, 20)));
  row[kRid] = rid;
  return row;
}

TenantRow MakeTenant(Dice& dice, std::int32_t rid, std::size_t credentials) {
  constexpr std::string_view kInitials[] = {"M", "x", "Ä", "'"};
  TenantRow row;
  row.rid = rid;
  row.unit = UnitOf(dice);
  row.lastName = TextOf(dice, kNames);
  row.firstName = TextOf(dice, kNames);
  row.middleInitial = dice.Chance(40) ? Value(Null{}) : TextOf(dice, kInitials);
  row.resident = Or(dice, 5, dice.Number(0, 1));
  // Some hold credentials that are not there (any more), or the same ones as others do.
  const auto most = static_cast<std::int32_t>(credentials) + 20;
  row.credential1 = Or(dice, 45, dice.Number(1, most));
  row.credential2 = Or(dice, 75, dice.Number(1, most));
  return row;
}

CredentialRow MakeCredential(Dice& dice, std::int32_t rid) {
  CredentialRow row;
  row.rid = rid;
  row.unit = UnitOf(dice);
  row.type = Or(dice, 4, dice.Number(0, 4));
  row.number = NumberOf(dice, 0, 400);
  row.facility = NumberOf(dice, -1, 20);
  row.idCode = NumberOf(dice, 0, 15);
  row.sequence = NumberOf(dice, 0, 9);
  row.button = NumberOf(dice, 1, 4);
  return row;
}

// What the store holds for a cell.
Value Stored(const Value& cell) {
  const auto* date = cell.As<qorcred::Date>();
  return date == nullptr ? cell : Value(qorhost::dialect::CanonicalDate(*date));
}

qorhost::RowCells StoredRow(std::span<const Value> cells) {
  qorhost::RowCells row;
  for (const Value& cell : cells) row.push_back(Stored(cell));
  return row;
}

qorhost::RowCells StoredRow(std::initializer_list<Value> cells) {
  return StoredRow(std::span(cells.begin(), cells.size()));
}

}  // namespace

std::uint64_t Seed() {
  static const std::uint64_t seed = [] {
    const char* given = std::getenv("QORCRED_SEED");
    const std::uint64_t chosen = given == nullptr ? kUsualSeed : std::strtoull(given, nullptr, 10);
    std::cout << "QORCRED_SEED=" << chosen << '\n';
    return chosen;
  }();
  return seed;
}

Population MakePopulation(Dice& dice, const PopulationSize& size) {
  Population population;
  const auto fill = [](auto& rows, std::size_t count, auto make) {
    for (std::size_t index = 1; index <= count; ++index) {
      rows.push_back(make(static_cast<std::int32_t>(index)));
    }
  };
  fill(population.codes, size.codes, [&](std::int32_t rid) { return MakeCode(dice, rid); });
  fill(population.schedules, size.schedules, [&](std::int32_t) {
    return ScheduleRow{UnitOf(dice), Or(dice, 4, dice.Number(-1, 9)),
                       Or(dice, 5, dice.One(kScheduleNames))};
  });
  fill(population.tenants, size.tenants,
       [&](std::int32_t rid) { return MakeTenant(dice, rid, size.credentials); });
  fill(population.credentials, size.credentials,
       [&](std::int32_t rid) { return MakeCredential(dice, rid); });
  return population;
}

Population WithoutLinksToOtherUnits(Population population) {
  const auto drop = [&population](Value& link, std::int32_t unit) {
    const auto* rid = link.As<std::int32_t>();
    const auto index = rid == nullptr ? 0 : static_cast<std::size_t>(*rid);
    if (index > 0 && index <= population.credentials.size() &&
        population.credentials[index - 1].unit != unit) {
      link = Null{};
    }
  };
  for (TenantRow& tenant : population.tenants) {
    drop(tenant.credential1, tenant.unit);
    drop(tenant.credential2, tenant.unit);
  }
  return population;
}

void WritePopulation(const Population& population, qorhost::StoreConnection& store) {
  static constexpr std::array<std::string_view, 21> kCode{
      "DIRECTORYCODE",   "PHONENUMBER",       "EXTENSION",     "TIMEDELAY",        "DISPLAYNAME",
      "ACTIVE",          "STARTDATE",         "ENDDATE",       "ISDNDCHECKED",     "DNDSCHEDULEID",
      "ISCFCHECKED",     "CFSCHEDULEID",      "CFPHONENUMBER", "CFEXTENSION",      "CFTIMEDELAY",
      "SHOWDISPLAYNAME", "SHOWDIRECTORYCODE", "MODIFIED",      "OLDDIRECTORYCODE", "RID",
      "UNITKEY"};
  static constexpr std::array<std::string_view, 3> kSchedule{"UnitKey", "ScheduleID",
                                                             "ScheduleName"};
  static constexpr std::array<std::string_view, 8> kTenant{
      "RID",           "UnitKey",  "LastName",      "FirstName",
      "MiddleInitial", "Resident", "CREDENTIALID1", "CREDENTIALID2"};
  static constexpr std::array<std::string_view, 8> kCredential{
      "RID",          "UnitKey", "CredentialType", "PINNo",
      "FacilityCode", "IDCode",  "SequenceNumber", "ButtonNumber"};
  static constexpr std::array<std::string_view, 6> kField{
      "RID", "FieldName", "FieldNameDisplay", "GridType", "Display", "DisplaySeq"};
  qorhost::SqlSession& session = store.session();
  qorhost::Undoable whole(session.transaction());
  for (const char* table : {"DirectoryCode", "Schedules", "Tenants", "CredentialBank"}) {
    session.Change(std::string("DELETE FROM ") + table, {});
  }
  if (session.Select("SELECT RID FROM Units WHERE UnitKey=2").rowCount == 0) {
    session.Change("INSERT INTO Units (UnitKey, UnitName) VALUES (2, 'Other')", {});
  }
  const std::vector<qorhost::RowCells> fields{
      {68, "DirectoryCode.Modified", "State", 0, 0, 18},
      {80, "DirectoryCode.OldDirectoryCode", "Old", 0, 0, 19},
      {90, "DirectoryCode.RID", "Row", 0, 0, 20}};
  session.AddRows("TenantSelectionFields", kField, fields);
  std::vector<qorhost::RowCells> rows;
  const auto add = [&](std::string_view table, std::span<const std::string_view> columns) {
    session.AddRows(table, columns, rows);
    rows.clear();
  };
  for (const CodeRow& row : population.codes) {
    rows.push_back(StoredRow(row.cells));
    rows.back().emplace_back(row.unit);
  }
  add("DirectoryCode", kCode);
  for (const ScheduleRow& row : population.schedules) {
    rows.push_back(StoredRow({row.unit, row.id, row.name}));
  }
  add("Schedules", kSchedule);
  for (const TenantRow& row : population.tenants) {
    rows.push_back(StoredRow({row.rid, row.unit, row.lastName, row.firstName, row.middleInitial,
                              row.resident, row.credential1, row.credential2}));
  }
  add("Tenants", kTenant);
  for (const CredentialRow& row : population.credentials) {
    rows.push_back(StoredRow({row.rid, row.unit, row.type, row.number, row.facility, row.idCode,
                              row.sequence, row.button}));
  }
  add("CredentialBank", kCredential);
  whole.Keep();
}

}  // namespace qortest
