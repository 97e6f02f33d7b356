#include "host/store/demo.h"

#include <fmt/format.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/capacity.h"
#include "frame/convert.h"
#include "frame/credential_numbers.h"
#include "frame/schedules.h"
#include "host/store/demo_names.h"
#include "host/store/store_error.h"
#include "host/store/transaction.h"

namespace qorhost {

namespace {

constexpr std::string_view kStamp = "2026-01-15 09:30:00";

struct UnitType {
  std::string_view description;
  int capacity;
};

constexpr std::array kUnitTypes{UnitType{"Entry Panel 500", 500},
                                UnitType{"Entry Panel 2000", 2000},
                                UnitType{"Entry Panel 8000", 8000}};

struct DemoUnit {
  std::int32_t key;
  std::string_view name;
  std::string_view type;
  bool ignoresFacilityCode;
  int deactivation;  // 0 never, 1 on a date, 2 after a number of days
  std::optional<std::string_view> deactivationDate;
  std::optional<int> deactivationDays;
  int digits;  // of directory and entry codes
  std::array<std::string_view, 4> doors;
  std::array<std::string_view, 4> schedules;  // beside the two that every unit has
  int tenants;
  int facility;
  int cardsA;
  int cardsB;
  int transmitters;
  int directoryCodes;
};

constexpr std::array kUnits{
    DemoUnit{demo::kNearlyFullUnit,
             "Harbour Court",
             "Entry Panel 500",
             false,
             0,
             std::nullopt,
             std::nullopt,
             4,
             {"Main", "Garage", "Roof Terrace", "Bicycle Cellar"},
             {"Weekdays 8 to 18", "Weekends", "Cleaning Staff", "Deliveries"},
             60,
             12,
             300,
             138,
             50,
             10},
    DemoUnit{demo::kLongDoorNamesUnit,
             "Linden Park",
             "Entry Panel 2000",
             false,
             1,
             "2026-12-31 00:00:00",
             std::nullopt,
             4,
             {"Front Entrance Door", "Underground Car Park", "Garden Gate North Side",
              "Service Corridor Level Two"},
             {"Early Shift", "Late Shift", "Night Shift", "Management"},
             75,
             7,
             80,
             40,
             25,
             6},
    DemoUnit{demo::kNoFacilityCodeUnit,
             "Mill Street Lofts",
             "Entry Panel 8000",
             true,
             2,
             std::nullopt,
             90,
             6,
             {"Lobby", "Courtyard", "Loading Bay", "Gym"},
             {"Business Hours", "Gym Opening Hours", "Contractors", "Holiday Guests"},
             65,
             0,
             70,
             20,
             20,
             4},
};

qorcred::Value OrNull(std::optional<std::string_view> text) {
  return text.has_value() ? qorcred::Value(*text) : qorcred::Value(qorcred::Null{});
}

qorcred::Value OrNull(std::optional<int> number) {
  return number.has_value() ? qorcred::Value(*number) : qorcred::Value(qorcred::Null{});
}

using Fields = std::vector<Field>;

/// Adds the rows as long as somebody wants them.
class DemoRows {
 public:
  DemoRows(SqlSession& session, const GoOn& goOn) : session_(session), goOn_(goOn) {}

  std::int32_t Add(std::string_view table, std::span<const Field> fields) const {
    if (goOn_ && !goOn_()) {
      throw StoreError("The demo building was not made: cancelled");
    }
    return session_.AddRow(table, fields);
  }

 private:
  SqlSession& session_;
  const GoOn& goOn_;
};

void AddUnitTypes(const DemoRows& rows) {
  for (const UnitType& type : kUnitTypes) {
    rows.Add("UNITTYPES", Fields{{"DESCRIPTION", type.description},
                                 {"TOTAL", qorcred::CapacityText(type.capacity)}});
  }
}

void AddSettings(const DemoRows& rows, const DemoUnit& unit) {
  rows.Add("UnitSettings", Fields{{"UnitKey", unit.key},
                                  {"UNITTYPE", unit.type},
                                  {"IGNOREFACILITYCODE", unit.ignoresFacilityCode},
                                  {"RECORDDEACTIVATION", unit.deactivation},
                                  {"DEACTIVATIONDATE", OrNull(unit.deactivationDate)},
                                  {"DEACTIVATIONDAYS", OrNull(unit.deactivationDays)},
                                  {"MaxDigitsDirectoryCode", unit.digits},
                                  {"MaxDigitsEntryCode", unit.digits},
                                  {"CARDDEFAULTFACILITYCODE", unit.facility},
                                  {"RFDEFAULTFACILITYCODE", unit.facility},
                                  {"CARDTYPE", int{qorcred::kCorvinCard}},
                                  {"RFTYPE", int{qorcred::kTransmitter}}});
}

void AddSurroundings(const DemoRows& rows, const DemoUnit& unit) {
  rows.Add("Units", Fields{{"UnitKey", unit.key}, {"UnitName", unit.name}});
  AddSettings(rows, unit);
  int door = 0;
  for (const std::string_view name : unit.doors) {
    rows.Add("DOORS", Fields{{"UNITKEY", unit.key}, {"DOORID", ++door}, {"DOORNAME", name}});
  }
  const auto addSchedule = [&](int id, std::string_view name) {
    rows.Add("Schedules",
             Fields{{"ScheduleID", id}, {"ScheduleName", name}, {"UnitKey", unit.key}});
  };
  for (const qorcred::FixedSchedule& fixed : {qorcred::kNoAccess, qorcred::kFullAccess}) {
    addSchedule(fixed.id, fixed.name);
  }
  int schedule = qorcred::kFullAccess.id;
  for (const std::string_view name : unit.schedules) {
    addSchedule(++schedule, name);
  }
}

struct Credentials {
  std::vector<std::int32_t> cards;
  std::vector<std::int32_t> transmitters;
};

Credentials AddCredentials(const DemoRows& rows, const DemoUnit& unit) {
  constexpr int kFirstCardA = 1001;
  constexpr int kFirstCardB = 20001;
  constexpr int kFirstTransmitter = 301;
  constexpr int kIdCodes = 27;
  constexpr int kSequences = 3;
  const auto add = [&](int type, int number, int idCode, int sequence, int button) {
    return rows.Add("CredentialBank", Fields{{"UnitKey", unit.key},
                                             {"CredentialType", type},
                                             {"PINNo", number},
                                             {"FacilityCode", unit.facility},
                                             {"IDCode", idCode},
                                             {"SequenceNumber", sequence},
                                             {"ButtonNumber", button},
                                             {"DOORCODE", 0},
                                             {"LASTMODIFIEDDATE", kStamp}});
  };
  Credentials added;
  for (int number = 0; number < unit.cardsA; ++number) {
    added.cards.push_back(add(qorcred::kCorvinCard, kFirstCardA + number, 0, 0, 1));
  }
  for (int number = 0; number < unit.cardsB; ++number) {
    added.cards.push_back(add(qorcred::kStandardCard, kFirstCardB + number, 0, 0, 1));
  }
  for (int number = 0; number < unit.transmitters; ++number) {
    added.transmitters.push_back(add(qorcred::kTransmitter, kFirstTransmitter + number,
                                     number % kIdCodes, number % kSequences,
                                     number % 4 == 3 ? 4 : 1));
  }
  return added;
}

std::vector<std::int32_t> AddDirectoryCodes(const DemoRows& rows, const DemoUnit& unit) {
  constexpr int kFirstCode = 101;
  const auto when = [](bool given, qorcred::Value value) {
    return given ? std::move(value) : qorcred::Value(qorcred::Null{});
  };
  std::vector<std::int32_t> added;
  for (int number = 0; number < unit.directoryCodes; ++number) {
    const bool forwarded = number % 3 == 2;
    const bool undisturbed = number % 4 == 3;  // during the unit's third schedule
    const bool extended = number % 4 == 1;
    const int code = kFirstCode + number;
    added.push_back(
        rows.Add("DirectoryCode",
                 Fields{{"UNITKEY", unit.key},
                        {"DIRECTORYCODE", code},
                        {"PHONENUMBER", fmt::format("555-01{:02}", number)},
                        {"EXTENSION", when(extended, std::to_string(10 + number))},
                        {"TIMEDELAY", extended ? 5 : 2},
                        {"DNDSCHEDULEID", when(undisturbed, 4)},
                        {"ISDNDCHECKED", undisturbed},
                        {"CFSCHEDULEID", when(forwarded, 2)},
                        {"ISCFCHECKED", forwarded},
                        {"CFPHONENUMBER", when(forwarded, fmt::format("555-02{:02}", number))},
                        {"CFTIMEDELAY", 2},
                        {"LASTMODIFIEDDATE", kStamp},
                        {"ACTIVE", true},
                        {"DISPLAYNAME", fmt::format("Apartment {}", code)},
                        {"SHOWDISPLAYNAME", true},
                        {"SHOWDIRECTORYCODE", true},
                        {"MODIFIED", 0},
                        {"OLDDIRECTORYCODE", code}}));
  }
  return added;
}

// `firstPerson` runs through all units, so that no name comes twice.
void AddTenants(const DemoRows& rows, const DemoUnit& unit, std::size_t firstPerson,
                const Credentials& credentials, const std::vector<std::int32_t>& codes) {
  constexpr int kFirstNameStep = 11;
  constexpr int kLastNameStep = 7;
  constexpr int kEveryWithoutInitial = 6;
  constexpr int kEveryResident = 20;
  constexpr int kEverySecondCredential = 5;
  const std::int32_t groupZero =
      rows.Add("TenantGroup", Fields{{"UnitKey", unit.key}, {"IsGroupZero", true}});
  rows.Add("TenantGroup", Fields{{"UnitKey", unit.key}, {"IsGroupZero", false}});
  const auto orNull = [](const std::vector<std::int32_t>& rids, int at) {
    const auto index = static_cast<std::size_t>(at);
    return index < rids.size() ? qorcred::Value(rids[index]) : qorcred::Value(qorcred::Null{});
  };
  for (int number = 0; number < unit.tenants; ++number) {
    const std::size_t person = firstPerson + static_cast<std::size_t>(number);
    const std::string_view last =
        demo::kLastNames[person * kLastNameStep % demo::kLastNames.size()];
    const std::string_view first =
        demo::kFirstNames[person * kFirstNameStep % demo::kFirstNames.size()];
    const std::string_view initial = demo::kInitials.substr(person % demo::kInitials.size(), 1);
    const bool hasInitial = number % kEveryWithoutInitial != kEveryWithoutInitial - 1;
    const bool hasSecond = number % kEverySecondCredential == 0;
    rows.Add("Tenants", Fields{{"UnitKey", unit.key},
                               {"LastName", last},
                               {"FirstName", first},
                               {"MiddleInitial", hasInitial ? qorcred::Value(initial)
                                                            : qorcred::Value(qorcred::Null{})},
                               {"NameAtUnit", fmt::format("{} {}", first, last)},
                               {"Resident", number % kEveryResident == kEveryResident - 1 ? 1 : 0},
                               {"GROUPID", groupZero},
                               {"LINKCODE", number + 1},
                               {"ACTIVETENANT", 0},
                               {"DOORSCHEDULE1", 1},
                               {"DOORSCHEDULE2", 1},
                               {"DOORSCHEDULE3", 2 + number % 4},
                               {"DOORSCHEDULE4", 0},
                               {"CREDENTIALID1", orNull(credentials.cards, number)},
                               {"CREDENTIALID2", hasSecond ? orNull(credentials.transmitters,
                                                                    number / kEverySecondCredential)
                                                           : qorcred::Value(qorcred::Null{})},
                               {"DIRECTORYCODE", orNull(codes, number)},
                               {"LASTMODIFIEDDATE", kStamp}});
  }
  rows.Add("UnitCounters", Fields{{"UnitKey", unit.key}, {"NextLinkCode", unit.tenants + 1}});
}

}  // namespace

void CreateDemoData(SqlSession& session, const GoOn& goOn) {
  for (const std::string_view query :
       {"SELECT COUNT(*) FROM Units", "SELECT COUNT(*) FROM UNITTYPES"}) {
    if (qorcred::ToLong(session.Scalar(query)) != 0) {
      throw StoreError("The store has units already: demo data needs an empty one");
    }
  }
  WorkGuard whole(session.work(), {{}, "demo building", {}});
  session.work().Lock();
  const DemoRows rows(session, goOn);
  AddUnitTypes(rows);
  std::size_t person = 0;
  for (const DemoUnit& unit : kUnits) {
    AddSurroundings(rows, unit);
    const Credentials credentials = AddCredentials(rows, unit);
    AddTenants(rows, unit, person, credentials, AddDirectoryCodes(rows, unit));
    person += static_cast<std::size_t>(unit.tenants);
  }
  whole.Commit();
}

}  // namespace qorhost
