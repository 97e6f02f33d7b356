// Credentials and directory codes.
#include <fmt/format.h>

#include <cmath>
#include <tuple>

#include "frame/credential_numbers.h"
#include "frame/row_state.h"
#include "frame/text.h"
#include "host/desks/credential_types.h"
#include "host/desks/listed_rows.h"
#include "host/desks/moving_in/row_rules.h"
#include "host/desks/unit_fields.h"
#include "host/desks/words.h"

namespace qorhost {

namespace {

using qorcred::Null;
using qorcred::Value;

// ---- Credentials
// ---------------------------------------------------------------------------------

struct CredentialPlaces {
  explicit CredentialPlaces(const RuleWork& work)
      : rid(work.At("RID")),
        unit(work.At("UnitKey")),
        type(work.At("CredentialType")),
        number(work.At("PINNo")),
        facility(work.At("FacilityCode")),
        idCode(work.At("IDCode")),
        sequence(work.At("SequenceNumber")),
        button(work.At("ButtonNumber")),
        door(work.At("DOORCODE")) {}

  std::size_t rid;
  std::size_t unit;
  std::size_t type;
  std::size_t number;
  std::size_t facility;
  std::size_t idCode;
  std::size_t sequence;
  std::size_t button;
  std::size_t door;
};

/// A cell that is Null is what a unit leaves out.
bool IsBetween(const Value& cell, std::int32_t lowest, std::int32_t highest) {
  const std::optional<std::int32_t> number = LongIn(cell);
  return !number || (*number >= lowest && *number <= highest);
}

/// One credential's row, against the bounds of its type.
class CredentialRow {
 public:
  CredentialRow(RuleWork& work, const CredentialPlaces& at, const AcceptedRows& accepted,
                StagedRow& row)
      : work_(work), at_(at), accepted_(accepted), row_(row), type_(LongIn(row.cells[at.type])) {}

  /// Whether it may be stored.
  bool Settle() {
    SettleType();
    SettleNumber();
    Require(at_.facility, 0,
            type_ == qorcred::kCorvinCard ? credential_bound::kCorvinFacility
                                          : credential_bound::kFacility);
    if (type_ == qorcred::kTransmitter) {
      Require(at_.idCode, 0, credential_bound::kIdCode);
      Require(at_.sequence, 0, credential_bound::kSequence);
      SettleButton();
    }
    return !row_.isRefused;
  }

  /// Of a row that is stored. The screen has no doors for transmitters.
  void SettleDoor() {
    const std::optional<std::int32_t> door = LongIn(row_.cells[at_.door]);
    const std::size_t doors = accepted_.units.at(*LongIn(row_.cells[at_.unit])).doors;
    if (type_ == qorcred::kTransmitter || !door || *door == 0) return;
    if (*door < 0 || static_cast<std::size_t>(*door) > doors) {
      work_.Keep(
          row_, at_.door, "missing-door",
          fmt::format("the unit has {}: the card cannot be edited before it has one of them, "
                      "or 0 for none",
                      Counted(doors, "door", "doors")));
    }
  }

 private:
  void SettleType() {
    if (!type_) {
      work_.Refuse(row_, at_.type, "unknown-type", "the credential has no type");
    } else if (TypeNameOf(*type_).empty()) {
      work_.Keep(row_, at_.type, "unknown-type",
                 "a type that is not known: lists have it at their end");
    }
  }

  void SettleNumber() {
    if (row_.isRefused) return;
    if (!LongIn(row_.cells[at_.number])) {
      work_.Refuse(row_, at_.number, "null-number", "the credential has no number");
    } else if (!IsBetween(row_.cells[at_.number], 1, credential_bound::kNumber)) {
      work_.Refuse(row_, at_.number, "number-range",
                   fmt::format("credentials are numbered from 1 to {}", credential_bound::kNumber));
    }
  }

  void Require(std::size_t place, std::int32_t lowest, std::int32_t highest) {
    if (!row_.isRefused && !IsBetween(row_.cells[place], lowest, highest)) {
      work_.Refuse(row_, place, "value-range",
                   fmt::format("{} to {} are for this type", lowest, highest));
    }
  }

  void SettleButton() {
    constexpr std::int32_t kFirst = 1;
    constexpr std::int32_t kFourth = 4;
    const std::optional<std::int32_t> button = LongIn(row_.cells[at_.button]);
    if (!row_.isRefused && button && *button != kFirst && *button != kFourth) {
      work_.Refuse(row_, at_.button, "value-range", "a transmitter has the buttons 1 and 4");
    }
  }

  RuleWork& work_;
  const CredentialPlaces& at_;
  const AcceptedRows& accepted_;
  StagedRow& row_;
  std::optional<std::int32_t> type_;
};

/// What tells one credential of a unit from another: cards have no more than number and facility.
std::tuple<std::int32_t, std::int32_t, std::int32_t, double, double, double, double> KeyOf(
    const StagedRow& row, const CredentialPlaces& at) {
  const std::int32_t type = *LongIn(row.cells[at.type]);
  const auto code = [&](std::size_t place) {
    return type == qorcred::kTransmitter ? NumberIn(row.cells[place]).value_or(0) : 0;
  };
  return {*LongIn(row.cells[at.unit]),
          type,
          *LongIn(row.cells[at.number]),
          NumberIn(row.cells[at.facility]).value_or(0),
          code(at.idCode),
          code(at.sequence),
          code(at.button)};
}

// ---- Directory codes
// -----------------------------------------------------------------------------

struct CodePlaces {
  explicit CodePlaces(const RuleWork& work)
      : rid(work.At("RID")),
        unit(work.At("UNITKEY")),
        code(work.At("DIRECTORYCODE")),
        former(work.At("OLDDIRECTORYCODE")),
        phone(work.At("PHONENUMBER")),
        delay(work.At("TIMEDELAY")),
        undisturbed(work.At("ISDNDCHECKED")),
        undisturbedSchedule(work.At("DNDSCHEDULEID")),
        forwarded(work.At("ISCFCHECKED")),
        forwardedSchedule(work.At("CFSCHEDULEID")),
        forwardedPhone(work.At("CFPHONENUMBER")),
        forwardedDelay(work.At("CFTIMEDELAY")),
        start(work.At("STARTDATE")),
        end(work.At("ENDDATE")),
        state(work.At("MODIFIED")) {}

  std::size_t rid;
  std::size_t unit;
  std::size_t code;
  std::size_t former;
  std::size_t phone;
  std::size_t delay;
  std::size_t undisturbed;
  std::size_t undisturbedSchedule;
  std::size_t forwarded;
  std::size_t forwardedSchedule;
  std::size_t forwardedPhone;
  std::size_t forwardedDelay;
  std::size_t start;
  std::size_t end;
  std::size_t state;
};

constexpr std::int32_t kMostDigits = unit_bound::kDigits;
constexpr double kNoCode = -1;

bool IsWholeCode(double code) {
  return code == std::trunc(code) && std::abs(code) < std::pow(10.0, kMostDigits);
}

std::int32_t DigitsOf(double code) {
  return static_cast<std::int32_t>(fmt::format("{:.0f}", code).size());
}

std::string DigitsOfCodes() {
  return fmt::format("a code has 1 to {} digits and no fraction", kMostDigits);
}

bool IsNothing(const Value& cell) {
  return qorcred::Trim(TextIn(cell)).empty();
}

/// The rest of a code's row, whose number is sound.
class CodeRow {
 public:
  CodeRow(RuleWork& work, const CodePlaces& at, const AcceptedRows& accepted, StagedRow& row)
      : work_(work), at_(at), accepted_(accepted), row_(row), unit_(*LongIn(row.cells[at.unit])) {}

  void Settle() {
    SettleDigits();
    SettleFormer();
    SettleSchedule(at_.undisturbed, at_.undisturbedSchedule, "Do Not Disturb");
    SettleSchedule(at_.forwarded, at_.forwardedSchedule, "Call Forwarding");
    SettleDelay(at_.delay);
    SettleDelay(at_.forwardedDelay);
    SettleState();
    // A code below 0 is in no list: nobody is called by it, at any time.
    if (const double code = *NumberIn(Cell(at_.code)); code < 0) {
      if (code != kNoCode) {
        work_.Keep(row_, at_.code, "number-range",
                   "below 0 there is -1 alone, for no code: it is in no list and no report");
      }
      return;
    }
    if (IsNothing(Cell(at_.phone))) {
      work_.Keep(row_, at_.phone, "missing-phone", "there is no phone number to be called");
    }
    if (FlagIn(Cell(at_.forwarded)) && IsNothing(Cell(at_.forwardedPhone))) {
      work_.Keep(row_, at_.forwardedPhone, "missing-phone",
                 "Call Forwarding is on, and there is no phone number to forward to");
    }
    SettlePeriod();
  }

 private:
  [[nodiscard]] const Value& Cell(std::size_t place) const { return row_.cells[place]; }

  void SettleDigits() {
    const std::optional<std::int32_t> most = accepted_.units.at(unit_).codeDigits;
    const double code = *NumberIn(Cell(at_.code));
    if (most && code >= 0 && DigitsOf(code) > *most) {
      work_.Keep(row_, at_.code, "number-range",
                 fmt::format("it has more digits than the {} of the unit's codes", *most));
    }
  }

  /// The number under which the unit has the row, if it is one that a unit can have.
  void SettleFormer() {
    const std::optional<double> former = NumberIn(Cell(at_.former));
    if (former && (!IsWholeCode(*former) || *former < kNoCode)) {
      work_.Adjust(row_, at_.former, Null{}, "number-range", DigitsOfCodes());
    }
  }

  void SettleSchedule(std::size_t flag, std::size_t schedule, std::string_view what) {
    const std::optional<std::int32_t> id = LongIn(Cell(schedule));
    if (id && !accepted_.schedules.contains({unit_, *id})) {
      work_.Adjust(row_, schedule, Null{}, "missing-schedule", "the unit has no such schedule");
    }
    if (!id && FlagIn(Cell(flag))) {
      work_.Keep(row_, schedule, "missing-schedule",
                 fmt::format("{} is on, without a schedule", what));
    }
  }

  /// It stays: any other would be a guess.
  void SettleDelay(std::size_t place) {
    if (LongIn(Cell(place)).value_or(0) < 0) {
      work_.Keep(row_, place, "value-range",
                 "a delay is 0 or more: no entry takes this one, and no unit's file holds it");
    }
  }

  void SettlePeriod() {
    constexpr std::size_t kToTheMinute = 16;
    const std::string_view start = TextIn(Cell(at_.start));
    const std::string_view end = TextIn(Cell(at_.end));
    if (start.empty() || end.empty()) return;
    if (end.substr(0, kToTheMinute) <= start.substr(0, kToTheMinute)) {
      work_.Keep(row_, at_.end, "period",
                 end < start ? "the period ends before it begins"
                             : "the period begins and ends in one minute");
    }
  }

  void SettleState() {
    const std::optional<std::int32_t> state = LongIn(Cell(at_.state));
    if (state && (*state < qorcred::row_state::kInUnit || *state > qorcred::row_state::kDeleted)) {
      work_.Adjust(row_, at_.state, std::int32_t{qorcred::row_state::kChanged}, "value-range",
                   "0 to 3 have a meaning: it counts as changed since the unit had it");
    }
  }

  RuleWork& work_;
  const CodePlaces& at_;
  const AcceptedRows& accepted_;
  StagedRow& row_;
  std::int32_t unit_;
};

}  // namespace

void SettleCredentials(RuleWork& work, AcceptedRows& accepted) {
  RequireUnit(work, accepted);
  const CredentialPlaces at(work);
  std::set<decltype(KeyOf(std::declval<const StagedRow&>(), at))> seen;
  work.Each([&](StagedRow& row) {
    CredentialRow credential(work, at, accepted, row);
    if (!credential.Settle()) return;
    if (!seen.insert(KeyOf(row, at)).second) {
      work.Refuse(row, at.number, "duplicate-credential",
                  "a row before it is the same credential of the unit");
      return;
    }
    credential.SettleDoor();
    const std::int32_t unit = *LongIn(row.cells[at.unit]);
    accepted.unitOfCredential.emplace(*LongIn(row.cells[at.rid]), unit);
    ++accepted.units.at(unit).codesInUse;
  });
}

void SettleDirectoryCodes(RuleWork& work, AcceptedRows& accepted) {
  RequireUnit(work, accepted);
  const CodePlaces at(work);
  std::set<std::pair<std::int32_t, double>> listed;
  std::set<std::pair<std::int32_t, double>> all;
  work.Each([&](StagedRow& row) {
    const std::optional<double> code = NumberIn(row.cells[at.code]);
    const std::int32_t unit = *LongIn(row.cells[at.unit]);
    if (!code) {
      work.Refuse(row, at.code, "null-number", "there is no code");
      return;
    }
    if (!IsWholeCode(*code)) {
      work.Refuse(row, at.code, "number-range", DigitsOfCodes());
      return;
    }
    // Deleted ones stay until the unit knows of it, and another may have the code meanwhile.
    if (IsListedCode(row.cells[at.code], row.cells[at.state])) {
      if (!listed.emplace(unit, *code).second) {
        work.Refuse(row, at.code, "duplicate-directory-code",
                    "a row before it has the code at the same unit");
        return;
      }
      ++accepted.units.at(unit).codesInUse;
    }
    if (!all.emplace(unit, *code).second && *code >= 0) {
      work.Keep(row, at.code, "duplicate-directory-code",
                "a row before it has the code, and one of them is deleted");
    }
    CodeRow(work, at, accepted, row).Settle();
    accepted.unitOfCode.emplace(*LongIn(row.cells[at.rid]), unit);
  });
}

}  // namespace qorhost
