#include "host/store/demo.h"

#include <fmt/format.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/store/capacity_text.h"
#include "host/store/demo_names.h"
#include "host/store/sqlite/transaction.h"
#include "host/store/store_error.h"

namespace qorhost {

namespace {

constexpr std::string_view kStamp = "2026-01-15 09:30:00";
constexpr int kCardA = 0;
constexpr int kCardB = 1;
constexpr int kTransmitter = 2;

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
  std::array<std::string_view, 4> schedules;  // beside "No Access" and "Full Access"
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

// Runs one INSERT with these values in the order of its parameters; returns the new identity.
class Inserter {
 public:
  Inserter(Database& database, std::string_view sql)
      : database_(database), insert_(database, sql) {}

  std::int32_t Add(const std::vector<qorcred::Value>& values) {
    const StatementUse use(insert_);
    int parameter = 0;
    for (const qorcred::Value& value : values) {
      use->Bind(++parameter, value);
    }
    use->Step();
    return static_cast<std::int32_t>(database_.Number("SELECT last_insert_rowid()"));
  }

 private:
  Database& database_;
  Statement insert_;
};

qorcred::Value OrNull(std::optional<std::string_view> text) {
  return text.has_value() ? qorcred::Value(*text) : qorcred::Value(qorcred::Null{});
}

qorcred::Value OrNull(std::optional<int> number) {
  return number.has_value() ? qorcred::Value(*number) : qorcred::Value(qorcred::Null{});
}

void AddUnitTypes(Database& database) {
  Inserter types(database, "INSERT INTO UNITTYPES (DESCRIPTION, TOTAL) VALUES (?1, ?2)");
  for (const UnitType& type : kUnitTypes) {
    types.Add({type.description, CapacityText(type.capacity)});
  }
}

void AddSurroundings(Database& database, const DemoUnit& unit) {
  Inserter units(database, "INSERT INTO Units (UnitKey, UnitName) VALUES (?1, ?2)");
  units.Add({unit.key, unit.name});
  Inserter settings(
      database,
      "INSERT INTO UnitSettings (UnitKey, UNITTYPE, IGNOREFACILITYCODE, RECORDDEACTIVATION, "
      "DEACTIVATIONDATE, DEACTIVATIONDAYS, MaxDigitsDirectoryCode, MaxDigitsEntryCode, "
      "CARDDEFAULTFACILITYCODE, RFDEFAULTFACILITYCODE, CARDTYPE, RFTYPE) "
      "VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?7, ?8, ?8, 0, 2)");
  settings.Add({unit.key, unit.type, unit.ignoresFacilityCode, unit.deactivation,
                OrNull(unit.deactivationDate), OrNull(unit.deactivationDays), unit.digits,
                unit.facility});
  Inserter doors(database, "INSERT INTO DOORS (UNITKEY, DOORID, DOORNAME) VALUES (?1, ?2, ?3)");
  int door = 0;
  for (const std::string_view name : unit.doors) {
    doors.Add({unit.key, ++door, name});
  }
  Inserter schedules(
      database, "INSERT INTO Schedules (ScheduleID, ScheduleName, UnitKey) VALUES (?1, ?2, ?3)");
  schedules.Add({0, "No Access", unit.key});
  schedules.Add({1, "Full Access", unit.key});
  int schedule = 1;
  for (const std::string_view name : unit.schedules) {
    schedules.Add({++schedule, name, unit.key});
  }
}

struct Credentials {
  std::vector<std::int32_t> cards;
  std::vector<std::int32_t> transmitters;
};

Credentials AddCredentials(Database& database, const DemoUnit& unit) {
  constexpr int kFirstCardA = 1001;
  constexpr int kFirstCardB = 20001;
  constexpr int kFirstTransmitter = 301;
  constexpr int kIdCodes = 27;
  constexpr int kSequences = 3;
  Inserter credentials(
      database,
      "INSERT INTO CredentialBank (UnitKey, CredentialType, PINNo, FacilityCode, IDCode, "
      "SequenceNumber, ButtonNumber, DOORCODE, LASTMODIFIEDDATE) "
      "VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, 0, ?8)");
  Credentials added;
  for (int number = 0; number < unit.cardsA; ++number) {
    added.cards.push_back(
        credentials.Add({unit.key, kCardA, kFirstCardA + number, unit.facility, 0, 0, 1, kStamp}));
  }
  for (int number = 0; number < unit.cardsB; ++number) {
    added.cards.push_back(
        credentials.Add({unit.key, kCardB, kFirstCardB + number, unit.facility, 0, 0, 1, kStamp}));
  }
  for (int number = 0; number < unit.transmitters; ++number) {
    const int button = number % 4 == 3 ? 4 : 1;
    added.transmitters.push_back(
        credentials.Add({unit.key, kTransmitter, kFirstTransmitter + number, unit.facility,
                         number % kIdCodes, number % kSequences, button, kStamp}));
  }
  return added;
}

std::vector<std::int32_t> AddDirectoryCodes(Database& database, const DemoUnit& unit) {
  constexpr int kFirstCode = 101;
  Inserter codes(
      database,
      "INSERT INTO DirectoryCode (UNITKEY, DIRECTORYCODE, PHONENUMBER, EXTENSION, TIMEDELAY, "
      "DNDSCHEDULEID, ISDNDCHECKED, CFSCHEDULEID, ISCFCHECKED, CFPHONENUMBER, CFTIMEDELAY, "
      "LASTMODIFIEDDATE, ACTIVE, DISPLAYNAME, SHOWDISPLAYNAME, SHOWDIRECTORYCODE, MODIFIED, "
      "OLDDIRECTORYCODE) "
      "VALUES (?1, ?2, ?3, ?9, ?10, ?11, ?12, ?4, ?5, ?6, 2, ?7, -1, ?8, -1, -1, 0, ?2)");
  const auto when = [](bool given, qorcred::Value value) {
    return given ? std::move(value) : qorcred::Value(qorcred::Null{});
  };
  std::vector<std::int32_t> added;
  for (int number = 0; number < unit.directoryCodes; ++number) {
    const bool forwarded = number % 3 == 2;
    const bool undisturbed = number % 4 == 3;  // during the unit's third schedule
    const bool extended = number % 4 == 1;
    added.push_back(codes.Add({unit.key, kFirstCode + number, fmt::format("555-01{:02}", number),
                               when(forwarded, 2), forwarded,
                               when(forwarded, fmt::format("555-02{:02}", number)), kStamp,
                               fmt::format("Apartment {}", kFirstCode + number),
                               when(extended, std::to_string(10 + number)), extended ? 5 : 2,
                               when(undisturbed, 4), undisturbed}));
  }
  return added;
}

// `firstPerson` runs through all units, so that no name comes twice.
void AddTenants(Database& database, const DemoUnit& unit, std::size_t firstPerson,
                const Credentials& credentials, const std::vector<std::int32_t>& codes) {
  constexpr int kFirstNameStep = 11;
  constexpr int kLastNameStep = 7;
  constexpr int kEveryWithoutInitial = 6;
  constexpr int kEveryResident = 20;
  constexpr int kEverySecondCredential = 5;
  Inserter groups(database, "INSERT INTO TenantGroup (UnitKey, IsGroupZero) VALUES (?1, ?2)");
  const std::int32_t groupZero = groups.Add({unit.key, true});
  groups.Add({unit.key, false});
  Inserter tenants(
      database,
      "INSERT INTO Tenants (UnitKey, LastName, FirstName, MiddleInitial, NameAtUnit, Resident, "
      "GROUPID, LINKCODE, ACTIVETENANT, DOORSCHEDULE1, DOORSCHEDULE2, DOORSCHEDULE3, "
      "DOORSCHEDULE4, CREDENTIALID1, CREDENTIALID2, DIRECTORYCODE, LASTMODIFIEDDATE) "
      "VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, 0, 1, 1, ?9, 0, ?10, ?11, ?12, ?13)");
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
    tenants.Add({unit.key, last, first,
                 hasInitial ? qorcred::Value(initial) : qorcred::Value(qorcred::Null{}),
                 fmt::format("{} {}", first, last),
                 number % kEveryResident == kEveryResident - 1 ? 1 : 0, groupZero, number + 1,
                 2 + number % 4, orNull(credentials.cards, number),
                 hasSecond ? orNull(credentials.transmitters, number / kEverySecondCredential)
                           : qorcred::Value(qorcred::Null{}),
                 orNull(codes, number), kStamp});
  }
  Inserter counters(database, "INSERT INTO UnitCounters (UnitKey, NextLinkCode) VALUES (?1, ?2)");
  counters.Add({unit.key, unit.tenants + 1});
}

}  // namespace

void CreateDemoData(Database& database) {
  if (database.Number("SELECT count(*) FROM Units") != 0 ||
      database.Number("SELECT count(*) FROM UNITTYPES") != 0) {
    throw StoreError("The store has units already: demo data needs an empty one");
  }
  Transaction transaction(database);
  transaction.Begin();
  AddUnitTypes(database);
  std::size_t person = 0;
  for (const DemoUnit& unit : kUnits) {
    AddSurroundings(database, unit);
    const Credentials credentials = AddCredentials(database, unit);
    AddTenants(database, unit, person, credentials, AddDirectoryCodes(database, unit));
    person += static_cast<std::size_t>(unit.tenants);
  }
  transaction.Commit();
}

}  // namespace qorhost
