// The fields of the directory-code report.
#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>

#include "frame/text.h"
#include "host/desks/moving_in/row_rules.h"
#include "host/dialect/catalog.h"

namespace qorhost {

namespace {

/// Whether "Table.Column" is in the store.
bool IsColumn(std::string_view field) {
  const std::size_t point = field.find('.');
  if (point == std::string_view::npos) return false;
  const dialect::Table* table = dialect::FindTable(field.substr(0, point));
  return table != nullptr && dialect::FindColumn(*table, field.substr(point + 1)) != nullptr;
}

/// A field's place in the report; a store has one without a number in front of all others.
std::int64_t PlaceIn(const qorcred::Value& sequence) {
  return LongIn(sequence) ? std::int64_t{*LongIn(sequence)}
                          : std::numeric_limits<std::int64_t>::min();
}

/// The report takes values by the places of the fields that it displays: those that it does not
/// must stand behind them, or every value comes into another one's column.
void SettleOrder(RuleWork& work) {
  constexpr std::string_view kOfReport = "DIRECTORYCODE.";
  constexpr std::int32_t kDisplayed = 1;
  constexpr std::int64_t kLastPlace = std::numeric_limits<std::int32_t>::max();
  constexpr const char* kReason =
      "a field that is not displayed stands behind those that are, or the report shows "
      "values in the columns of others";
  const std::size_t name = work.At("FieldName");
  const std::size_t display = work.At("Display");
  const std::size_t sequence = work.At("DisplaySeq");
  std::optional<std::int64_t> lastDisplayed;
  std::int64_t last = 0;
  std::vector<StagedRow*> hidden;
  work.Each([&](StagedRow& row) {
    if (!qorcred::UpperAscii(TextIn(row.cells[name])).starts_with(kOfReport)) return;
    const std::int64_t place = PlaceIn(row.cells[sequence]);
    last = std::max(last, place);
    if (LongIn(row.cells[display]) == kDisplayed) {
      lastDisplayed = std::max(lastDisplayed.value_or(place), place);
    } else {
      hidden.push_back(&row);
    }
  });
  if (!lastDisplayed) return;
  std::stable_sort(hidden.begin(), hidden.end(), [&](const StagedRow* one, const StagedRow* other) {
    return PlaceIn(one->cells[sequence]) < PlaceIn(other->cells[sequence]);
  });
  for (StagedRow* row : hidden) {
    // In one place with a displayed field it may come before that one.
    if (PlaceIn(row->cells[sequence]) > *lastDisplayed) continue;
    if (*lastDisplayed == kLastPlace) {
      work.Keep(*row, sequence, "field-order", kReason);
      continue;
    }
    last = std::min(last + 1, kLastPlace);
    work.Adjust(*row, sequence, static_cast<std::int32_t>(last), "field-order", kReason);
  }
}

/// The grid takes no width below 0, and the whole report would fail for one.
void SettleWidths(RuleWork& work) {
  const std::size_t width = work.At("DisplayWidth");
  work.Each([&](StagedRow& row) {
    if (LongIn(row.cells[width]).value_or(0) < 0) {
      work.Adjust(row, width, qorcred::Null{}, "value-range",
                  "a width is 0 or more, and the report would fail: the column has the usual one");
    }
  });
}

}  // namespace

void SettleReportFields(RuleWork& work) {
  const std::size_t name = work.At("FieldName");
  std::set<std::string> seen;
  work.Each([&](StagedRow& row) {
    const std::string_view field = TextIn(row.cells[name]);
    if (field.empty()) {
      work.Refuse(row, name, "null-name", "the field has no name");
    } else if (!IsColumn(field)) {
      work.Refuse(row, name, "unknown-field", "no table has such a column: the report would fail");
    } else if (!seen.insert(qorcred::UpperAscii(field)).second) {
      work.Refuse(row, name, "duplicate-field", "a row before it has the field");
    }
  });
  SettleWidths(work);
  SettleOrder(work);
}

}  // namespace qorhost
