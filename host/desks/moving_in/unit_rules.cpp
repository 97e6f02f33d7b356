// Units, their types and settings.
#include <fmt/format.h>

#include <charconv>
#include <limits>

#include "frame/base64.h"
#include "frame/capacity.h"
#include "frame/text.h"
#include "host/desks/moving_in/row_rules.h"
#include "host/desks/unit_fields.h"
#include "host/desks/unit_settings.h"

namespace qorhost {

namespace {

/// The text that a capacity stands for; nothing where it is no Base64 of ASCII.
std::optional<std::string> DecodedText(std::string_view text) {
  if (text.empty() || text.size() % 4 != 0) return std::nullopt;
  std::string decoded;
  std::uint32_t bits = 0;
  int count = 0;
  for (const char letter : text.substr(0, text.find('='))) {
    const std::size_t value = qorcred::kBase64Alphabet.find(letter);
    if (value == std::string_view::npos) return std::nullopt;
    bits = bits << 6U | static_cast<std::uint32_t>(value);
    count += 6;
    if (count >= 8) {
      count -= 8;
      decoded.push_back(static_cast<char>(bits >> count & 0xFFU));
    }
  }
  // The way back leads to the same text only from Base64.
  return qorcred::EncodeBase64(decoded) == text ? std::optional(decoded) : std::nullopt;
}

std::optional<std::int32_t> WholeNumber(std::string_view text) {
  std::int32_t number = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (text.empty() || failure != std::errc() || end != text.data() + text.size()) {
    return std::nullopt;
  }
  return number;
}

/// What a type's TOTAL says, settled where it is odd.
std::optional<std::int32_t> SettleCapacity(RuleWork& work, StagedRow& row, std::size_t total) {
  const std::string text(TextIn(row.cells[total]));
  constexpr std::string_view kMeans = "nothing can be added to units of this type";
  if (text.empty()) {
    work.Keep(row, total, "capacity-missing", fmt::format("there is no capacity: {}", kMeans));
    return std::nullopt;
  }
  // In Base64 digits never begin with a digit, so this is a number as it is read.
  std::optional<std::int32_t> capacity;
  if (qorcred::IsDigits(text)) {
    capacity = WholeNumber(text);
    if (capacity && *capacity >= 1 && *capacity <= unit_bound::kCapacity) {
      work.Adjust(row, total, qorcred::CapacityText(*capacity), "capacity-plain",
                  "a number as it is read, where Base64 of one is kept");
      return capacity;
    }
  } else if (const std::optional<std::string> decoded = DecodedText(text)) {
    capacity = WholeNumber(*decoded);
  }
  if (!capacity) {
    work.Keep(row, total, "capacity-words",
              fmt::format("it is neither Base64 of a number nor a number: {}", kMeans));
    return std::nullopt;
  }
  if (*capacity < 1 || *capacity > unit_bound::kCapacity) {
    work.Keep(row, total, "capacity-range",
              fmt::format("{} codes, where 1 to {} can be: {}", *capacity, unit_bound::kCapacity,
                          kMeans));
  }
  return capacity;
}

bool AreDigits(std::int32_t digits) {
  return digits >= 1 && digits <= unit_bound::kDigits;
}

/// Numbers that no entry may have. They stay: any other would be a guess.
void SettleBounds(RuleWork& work, const StagedRow& row) {
  const auto cell = [&](std::string_view column) { return LongIn(row.cells[work.At(column)]); };
  for (const SettingBound* bound : BrokenBounds(cell)) {
    work.Keep(row, work.At(bound->column), "value-range",
              fmt::format("{} to {} can be: 'units edit {} {}' mends it", bound->lowest,
                          bound->highest, *cell("UnitKey"), bound->option));
  }
}

}  // namespace

void SettleUnits(RuleWork& work, AcceptedRows& accepted) {
  const std::size_t key = work.At("UnitKey");
  work.Each([&](StagedRow& row) {
    const std::optional<std::int32_t> unit = LongIn(row.cells[key]);
    if (!unit) {
      work.Refuse(row, key, "null-key", "the unit has no key");
    } else if (!accepted.units.try_emplace(*unit).second) {
      work.Refuse(row, key, "duplicate-key", "a unit before it has the key");
    }
  });
}

void SettleUnitTypes(RuleWork& work, AcceptedRows& accepted) {
  const std::size_t name = work.At("DESCRIPTION");
  const std::size_t total = work.At("TOTAL");
  work.Each([&](StagedRow& row) {
    const std::string_view description = TextIn(row.cells[name]);
    if (row.cells[name].Is(qorcred::ValueType::kNull)) {
      work.Refuse(row, name, "null-type", "the type has no name");
      return;
    }
    if (accepted.capacities.contains(description)) {
      work.Refuse(row, name, "duplicate-type",
                  "a type before it has the name, for letter case does not count");
      return;
    }
    accepted.capacities.emplace(description, SettleCapacity(work, row, total));
  });
}

void SettleUnitSettings(RuleWork& work, AcceptedRows& accepted) {
  constexpr std::int32_t kNever = 0;
  constexpr std::int32_t kAfterDays = 2;
  RequireUnit(work, accepted);
  const std::size_t key = work.At("UnitKey");
  const std::size_t type = work.At("UNITTYPE");
  const std::size_t deactivation = work.At("RECORDDEACTIVATION");
  const std::size_t digits = work.At("MaxDigitsDirectoryCode");
  work.Each([&](StagedRow& row) {
    AcceptedRows::Unit& unit = accepted.units.at(*LongIn(row.cells[key]));
    if (unit.hasSettings) {
      work.Refuse(row, key, "duplicate-key", "a row before it has the settings of the unit");
      return;
    }
    unit.hasSettings = true;
    unit.codeDigits = LongIn(row.cells[digits]);
    if (unit.codeDigits && !AreDigits(*unit.codeDigits)) unit.codeDigits.reset();
    if (const auto found = accepted.capacities.find(TextIn(row.cells[type]));
        found != accepted.capacities.end()) {
      unit.type = found->first;
    }
    if (!unit.type) {
      work.Keep(row, type, "missing-type",
                fmt::format("there is no such type: nothing can be added to the unit before 'units "
                            "edit {} --type TYPE' gives it another one",
                            *LongIn(row.cells[key])));
    }
    const std::optional<std::int32_t> ends = LongIn(row.cells[deactivation]);
    if (ends && (*ends < kNever || *ends > kAfterDays)) {
      work.Adjust(row, deactivation, kNever, "value-range",
                  "0, 1 and 2 have a meaning: new periods have no end by default");
    }
    SettleBounds(work, row);
  });
}

void TellOfUnits(RuleWork& units, RuleWork& settings, const AcceptedRows& accepted) {
  const std::size_t key = units.At("UnitKey");
  units.Each([&](StagedRow& row) {
    if (!accepted.units.at(*LongIn(row.cells[key])).hasSettings) {
      units.Keep(row, key, "no-settings",
                 fmt::format("the unit has no settings: nothing can be added to it before 'units "
                             "edit {} --type TYPE' gives it some",
                             *LongIn(row.cells[key])));
    }
  });
  const std::size_t settingsKey = settings.At("UnitKey");
  settings.Each([&](StagedRow& row) {
    const AcceptedRows::Unit& unit = accepted.units.at(*LongIn(row.cells[settingsKey]));
    if (!unit.type) return;
    const std::optional<std::int32_t> capacity = accepted.capacities.at(*unit.type);
    if (capacity && *capacity >= 0 && unit.codesInUse > static_cast<std::size_t>(*capacity)) {
      settings.Keep(row, settingsKey, "over-full",
                    fmt::format("the unit has {} codes and takes {}: nothing can be added to it",
                                unit.codesInUse, *capacity));
    }
  });
}

}  // namespace qorhost
