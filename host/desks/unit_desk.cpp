#include "host/desks/unit_desk.h"

#include <fmt/format.h>

#include <array>
#include <limits>
#include <utility>

#include "frame/capacity.h"
#include "frame/convert.h"
#include "frame/credential_numbers.h"
#include "frame/schedules.h"
#include "frame/text.h"
#include "host/components/application_object.h"
#include "host/desks/credential_types.h"
#include "host/desks/input_fault.h"
#include "host/desks/listed_rows.h"
#include "host/desks/own_work.h"
#include "host/desks/stored_row.h"
#include "host/desks/typed_input.h"
#include "host/desks/unit_default_end.h"
#include "host/desks/unit_settings.h"
#include "host/desks/words.h"

namespace qorhost {

namespace {

using qorcred::Null;
using qorcred::Value;

using Fields = std::vector<Field>;

std::string OfUnit(std::int32_t unitKey) {
  return fmt::format("UnitKey={}", unitKey);
}

std::string TypeIn(DeskSession& session, std::int32_t unitKey) {
  return qorcred::TextOrEmpty(session.sql().Scalar(
      fmt::format("SELECT UNITTYPE FROM UnitSettings WHERE {}", OfUnit(unitKey))));
}

std::string OfType(std::string_view type) {
  return "DESCRIPTION=" + LiteralOf(Value(type));
}

std::string NameWithKey(std::int32_t key, std::string_view name) {
  return name.empty() ? fmt::format("unit {}", key) : fmt::format("unit {}, {}", key, name);
}

std::string NonEmpty(std::string_view field, const std::string& given) {
  std::string text(qorcred::Trim(TypedText(field, given)));
  if (text.empty()) {
    throw InputFault(field, given, "{field} '{value}' is empty");
  }
  return text;
}

bool Flag(std::string_view field, const std::string& given) {
  const auto flag = YesOrNo(qorcred::Trim(given));
  if (!flag) {
    throw InputFault(field, given, "{field} '{value}' is neither yes nor no");
  }
  return *flag;
}

void AddNumber(std::string_view column, std::string_view field,
               const std::optional<std::string>& given, NumberRange range, Fields& fields) {
  if (given) {
    fields.push_back({column, ReadLong(field, *given, range)});
  }
}

/// The settings that are given, but for the type.
Fields SettingsOf(const UnitEntry& entry) {
  constexpr NumberRange kDigits{1, unit_bound::kDigits};
  Fields fields;
  AddNumber("MaxDigitsDirectoryCode", unit_input::kCodeDigits, entry.codeDigits, kDigits, fields);
  AddNumber("MaxDigitsEntryCode", unit_input::kEntryDigits, entry.entryDigits, kDigits, fields);
  AddNumber("CARDDEFAULTFACILITYCODE", unit_input::kCardFacility, entry.cardFacility,
            {0, credential_bound::kFacility}, fields);
  AddNumber("RFDEFAULTFACILITYCODE", unit_input::kTransmitterFacility, entry.transmitterFacility,
            {0, credential_bound::kFacility}, fields);
  if (entry.ignoresFacility) {
    fields.push_back(
        {"IGNOREFACILITYCODE", Flag(unit_input::kIgnoresFacility, *entry.ignoresFacility)});
  }
  if (entry.defaultEnd) {
    for (Field& field : ReadDefaultEnd(*entry.defaultEnd)) {
      fields.push_back(std::move(field));
    }
  }
  return fields;
}

/// A SELECT on units, with the column of their key first and that of their name behind.
std::vector<UnitName> UnitsIn(DeskSession& session, const std::string& select) {
  std::vector<UnitName> units;
  const QueryResult found = session.sql().Select(select);
  for (const ResultRow row : found.rows()) {
    units.push_back({qorcred::ToLong(row[0]), qorcred::TextOrEmpty(row[1])});
  }
  return units;
}

std::vector<UnitName> UnitsOfType(DeskSession& session, std::string_view type) {
  return UnitsIn(session, fmt::format("SELECT U.UnitKey, U.UnitName FROM Units U, UnitSettings S "
                                      "WHERE S.UnitKey=U.UnitKey AND S.UNITTYPE={} ORDER BY "
                                      "U.UnitKey",
                                      LiteralOf(Value(type))));
}

std::string Listed(const std::vector<UnitName>& units) {
  std::string text;
  for (const UnitName& unit : units) {
    text += (text.empty() ? "" : "; ") + NameWithKey(unit.key, unit.name);
  }
  return text;
}

std::string KnownTypes(DeskSession& session) {
  std::string types;
  for (const std::string& type : UnitTypes(session)) {
    types += fmt::format("{}'{}'", types.empty() ? "" : ", ", type);
  }
  return types.empty() ? "none" : types;
}

/// Writes a unit's name and settings inside a unit of work.
class UnitWriting {
 public:
  UnitWriting(DeskSession& session, std::int32_t unitKey, OtherUnits others)
      : session_(session), unitKey_(unitKey), others_(others) {}

  /// The number of fields that were others.
  std::size_t Write(const UnitEntry& entry) {
    std::size_t changed = 0;
    if (entry.name) {
      const std::array fields{Field{"UnitName", Value(NonEmpty(unit_input::kName, *entry.name))}};
      changed += WriteChanged(session_, "Units", OfUnit(unitKey_), fields);
    }
    changed += WriteChanged(session_, "UnitSettings", OfUnit(unitKey_), SettingsOf(entry));
    if (entry.type || entry.capacity) {
      changed += WriteType(entry);
    }
    RequireDigits(entry);
    return changed;
  }

 private:
  std::size_t WriteType(const UnitEntry& entry) {
    const std::string type =
        entry.type ? NonEmpty(unit_input::kType, *entry.type) : TypeIn(session_, unitKey_);
    if (type.empty()) {
      throw InputFault(unit_input::kCapacity, *entry.capacity,
                       "{field} is that of a type, and the unit has none: give {type} as well");
    }
    std::size_t changed = WriteCapacity(type, entry);
    const std::array fields{Field{"UNITTYPE", Value(type)}};
    changed += WriteChanged(session_, "UnitSettings", OfUnit(unitKey_), fields);
    RequireRoom(type);
    return changed;
  }

  std::size_t WriteCapacity(const std::string& type, const UnitEntry& entry) {
    const std::string ofType = OfType(type);
    const bool isKnown = RowsWhere(session_, "UNITTYPES", ofType) > 0;
    if (!entry.capacity) {
      if (!isKnown) {
        throw InputFault(
            unit_input::kType, type,
            fmt::format("there is no type '{{value}}': give one of {}, or {{capacity}} as well for "
                        "a new one",
                        InReason(KnownTypes(session_))));
      }
      return 0;
    }
    const std::string total = qorcred::CapacityText(
        ReadLong(unit_input::kCapacity, *entry.capacity, {1, unit_bound::kCapacity}));
    if (!isKnown) {
      session_.sql().AddRow("UNITTYPES", Fields{{"DESCRIPTION", type}, {"TOTAL", total}});
      return 1;
    }
    const std::array fields{Field{"TOTAL", Value(total)}};
    const std::size_t changed = WriteChanged(session_, "UNITTYPES", ofType, fields);
    if (changed > 0 && others_ == OtherUnits::kAsked) {
      RequireNoOthers(type);
    }
    return changed;
  }

  void RequireNoOthers(const std::string& type) {
    std::vector<UnitName> others = UnitsOfType(session_, type);
    std::erase_if(others, [this](const UnitName& unit) { return unit.key == unitKey_; });
    if (!others.empty()) {
      throw SharedType(fmt::format("The capacity of the type '{}' is that of {} as well.", type,
                                   Listed(others)));
    }
  }

  /// Of every unit of the type: its capacity may be another one now.
  void RequireRoom(const std::string& type) {
    for (const UnitName& unit : UnitsOfType(session_, type)) {
      const UnitStatus status = ReadUnitStatus(session_.sql(), unit.key);
      const std::int64_t used = status.credentials + status.entryCodes + status.directoryCodes;
      const std::optional<std::int32_t> capacity = CapacityOf(session_, unit.key);
      if (capacity && used > *capacity) {
        throw RefusedError(
            fmt::format("{} codes are in use in {}, more than a capacity of {}: "
                        "nothing was changed",
                        used, NameWithKey(unit.key, unit.name), *capacity));
      }
    }
  }

  /// No stored code may be longer than its unit takes.
  void RequireDigits(const UnitEntry& entry) {
    if (!entry.codeDigits) {
      return;
    }
    const Value highest =
        session_.sql().Scalar(fmt::format("SELECT MAX(DIRECTORYCODE) FROM DirectoryCode WHERE {} "
                                          "AND {}",
                                          OfUnit(unitKey_), kIsNotDeleted));
    const std::string code = qorcred::TextOrEmpty(highest);
    const auto digits = static_cast<std::size_t>(
        ReadLong(unit_input::kCodeDigits, *entry.codeDigits, {1, unit_bound::kDigits}));
    if (!code.starts_with('-') && code.size() > digits) {
      throw RefusedError(
          fmt::format("the directory code {} in {} is longer than {}: nothing was changed", code,
                      NameWithKey(unitKey_, ""), Counted(digits, "digit", "digits")));
    }
  }

  DeskSession& session_;
  std::int32_t unitKey_;
  OtherUnits others_;
};

/// Those of a new unit.
void AddSettings(DeskSession& session, std::int32_t unitKey) {
  constexpr int kUsualDigits = 4;
  session.sql().AddRow("UnitSettings", Fields{{"UnitKey", unitKey},
                                              {"IGNOREFACILITYCODE", false},
                                              {"RECORDDEACTIVATION", std::int32_t{kNever}},
                                              {"MaxDigitsDirectoryCode", kUsualDigits},
                                              {"MaxDigitsEntryCode", kUsualDigits},
                                              {"CARDDEFAULTFACILITYCODE", 0},
                                              {"RFDEFAULTFACILITYCODE", 0},
                                              {"CARDTYPE", int{qorcred::kCorvinCard}},
                                              {"RFTYPE", int{qorcred::kTransmitter}}});
}

/// What the controllers need of a unit, as a new one has it.
void AddSurroundings(DeskSession& session, std::int32_t unitKey) {
  constexpr int kDoors = 4;
  SqlSession& sql = session.sql();
  sql.AddRow("Units", Fields{{"UnitKey", unitKey}});
  AddSettings(session, unitKey);
  for (int door = 1; door <= kDoors; ++door) {
    sql.AddRow(
        "DOORS",
        Fields{{"UNITKEY", unitKey}, {"DOORID", door}, {"DOORNAME", fmt::format("Door {}", door)}});
  }
  for (const qorcred::FixedSchedule& fixed : {qorcred::kNoAccess, qorcred::kFullAccess}) {
    sql.AddRow(
        "Schedules",
        Fields{{"ScheduleID", fixed.id}, {"ScheduleName", fixed.name}, {"UnitKey", unitKey}});
  }
  sql.AddRow("TenantGroup", Fields{{"UnitKey", unitKey}, {"IsGroupZero", true}});
}

std::int32_t KeyOfNew(DeskSession& session, const std::optional<std::string>& given) {
  if (given) {
    const std::int32_t key =
        ReadLong(unit_input::kKey, *given, {1, std::numeric_limits<std::int32_t>::max()});
    if (RowsWhere(session, "Units", OfUnit(key)) > 0) {
      throw RefusedError(fmt::format("there is a unit {} already: give another key", key));
    }
    return key;
  }
  const double highest = qorcred::NumericValue(
      session.sql().Scalar("SELECT MAX(UnitKey) FROM Units WHERE UnitKey > 0"));
  if (highest >= std::numeric_limits<std::int32_t>::max()) {
    throw RefusedError("the highest key is taken: give one that is free");
  }
  return static_cast<std::int32_t>(highest) + 1;
}

std::string NameOfUnit(DeskSession& session, std::int32_t unitKey) {
  return qorcred::TextOrEmpty(
      session.sql().Scalar(fmt::format("SELECT UnitName FROM Units WHERE {}", OfUnit(unitKey))));
}

RowsOfTable RidsIn(DeskSession& session, std::string_view table, const std::string& condition) {
  RowsOfTable rows{table, {}};
  const QueryResult found =
      session.sql().Select(fmt::format("SELECT RID FROM {} WHERE {}", table, condition));
  for (const ResultRow row : found.rows()) {
    rows.rids.push_back(qorcred::ToLong(row[0]));
  }
  return rows;
}

ChangedUnit AsItIsNow(DeskSession& session, std::int32_t unitKey) {
  const UnitName unit{unitKey, NameOfUnit(session, unitKey)};
  return {{}, unit, UnitSettingsList(session, {unit}).rows.front()};
}

void RequireUnit(DeskSession& session, std::int32_t unitKey) {
  if (RowsWhere(session, "Units", OfUnit(unitKey)) == 0) {
    throw RefusedError(fmt::format("there is no unit {} any more", unitKey));
  }
}

}  // namespace

ChangedUnit AddUnit(DeskSession& session, const std::optional<std::string>& key,
                    const UnitEntry& entry, OtherUnits others, Trial trial) {
  if (!entry.name) {
    throw InputFault(unit_input::kName, "", "a new unit needs {field}");
  }
  if (!entry.type) {
    throw InputFault(unit_input::kType, "",
                     "a new unit needs {field}: one that is stored, or the name of a new one "
                     "with its capacity; without nothing can be stored");
  }
  // A key is free only while nobody else writes: the work names no unit before it is known.
  OwnWork work(session, {}, "add unit " + *entry.name);
  const std::int32_t unitKey = KeyOfNew(session, key);
  AddSurroundings(session, unitKey);
  UnitWriting(session, unitKey, others).Write(entry);
  ChangedUnit added = AsItIsNow(session, unitKey);
  work.End(trial);
  return added;
}

ChangedUnit EditUnit(DeskSession& session, std::int32_t unitKey, const UnitEntry& entry,
                     OtherUnits others, Trial trial, const std::optional<SeenRow>& seen) {
  // A capacity is that of other units, too.
  std::vector<std::int32_t> units;
  if (!entry.capacity) {
    units.push_back(unitKey);
  }
  OwnWork work(session, std::move(units), fmt::format("edit unit {}", unitKey));
  if (const auto overtaken = FindUnitOvertaken(session, unitKey, seen)) {
    return {*overtaken, {unitKey, ""}, {}};
  }
  RequireUnit(session, unitKey);
  const bool hadSettings = RowsWhere(session, "UnitSettings", OfUnit(unitKey)) > 0;
  if (!hadSettings) {
    AddSettings(session, unitKey);
  }
  const std::size_t changed = UnitWriting(session, unitKey, others).Write(entry);
  ChangedUnit edited = AsItIsNow(session, unitKey);
  edited.unchanged = hadSettings && changed == 0;
  work.End(trial);
  return edited;
}

std::vector<ChangedUnit> EditUnits(DeskSession& session, const std::vector<std::int32_t>& unitKeys,
                                   const UnitEntry& entry, OtherUnits others, Trial trial) {
  std::vector<ChangedUnit> edited;
  if (unitKeys.size() == 1) {
    edited.push_back(EditUnit(session, unitKeys.front(), entry, others, trial));
    return edited;
  }
  OwnWork work(session, {}, fmt::format("edit units {}", fmt::join(unitKeys, ", ")));
  for (const std::int32_t unitKey : unitKeys) {
    edited.push_back(EditUnit(session, unitKey, entry, others, Trial::kNo));
  }
  work.End(trial);
  return edited;
}

std::vector<std::string> UnitTypes(DeskSession& session) {
  std::vector<std::string> types;
  const QueryResult found =
      session.sql().Select("SELECT DESCRIPTION FROM UNITTYPES ORDER BY DESCRIPTION");
  for (const ResultRow row : found.rows()) {
    types.push_back(qorcred::TextOrEmpty(row[0]));
  }
  return types;
}

List UnitSettingsList(DeskSession& session, const std::vector<UnitName>& units) {
  List list;
  list.title = "Settings of units";
  list.fields = {{"Unit", "unit", FieldKind::kNumber},
                 {"Name", "name"},
                 {"Type", "type"},
                 {"Capacity", "capacity", FieldKind::kNumber},
                 {"Code digits", "code_digits", FieldKind::kNumber},
                 {"Entry digits", "entry_digits", FieldKind::kNumber},
                 {"Default end", "default_end"},
                 {"Ignores facility", "ignores_facility", FieldKind::kYesNo},
                 {"Card facility", "card_facility", FieldKind::kNumber},
                 {"Transmitter facility", "transmitter_facility", FieldKind::kNumber}};
  for (const UnitName& unit : units) {
    const QueryResult found = session.sql().Select(fmt::format(
        "SELECT UNITTYPE, MaxDigitsDirectoryCode, MaxDigitsEntryCode, RECORDDEACTIVATION, "
        "DEACTIVATIONDATE, DEACTIVATIONDAYS, IGNOREFACILITYCODE, CARDDEFAULTFACILITYCODE, "
        "RFDEFAULTFACILITYCODE FROM UnitSettings WHERE {}",
        OfUnit(unit.key)));
    if (found.rowCount == 0) {
      list.rows.emplace_back(list.fields.size(), Value(Null{}));
      list.rows.back()[0] = unit.key;
      list.rows.back()[1] = unit.name;
    }
    for (const ResultRow row : found.rows()) {
      const auto capacity = CapacityOf(session, unit.key);
      list.rows.push_back({unit.key, unit.name, row[0], capacity ? Value(*capacity) : Value(Null{}),
                           row[1], row[2], DefaultEndShown(row[3], row[4], row[5]), row[6], row[7],
                           row[8]});
    }
  }
  return list;
}

std::optional<Outcome> FindUnitOvertaken(DeskSession& session, std::int32_t unitKey,
                                         const std::optional<SeenRow>& seen) {
  if (!seen) {
    return std::nullopt;
  }
  const std::array parts{RidsIn(session, "Units", OfUnit(unitKey)),
                         RidsIn(session, "UnitSettings", OfUnit(unitKey)),
                         RidsIn(session, "UNITTYPES", OfType(TypeIn(session, unitKey)))};
  const bool isGone = parts.front().rids.empty();
  const List now = UnitSettingsList(session, {{unitKey, NameOfUnit(session, unitKey)}});
  return FindOvertaken(session, unitKey, *seen, isGone ? std::vector<Value>() : now.rows.front(),
                       parts);
}

}  // namespace qorhost
