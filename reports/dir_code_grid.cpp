// Shows the rows of the directory-code report in the host's grid.
#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "frame/convert.h"
#include "frame/format.h"
#include "frame/sql_text.h"
#include "frame/trap.h"
#include "reports/cls_dir_code_report.h"
#include "reports/report_grid.h"

namespace qorcred {

namespace {

// Columns of the layout.
constexpr std::int32_t kCaption = 0;
constexpr std::int32_t kWidth = 1;
constexpr std::int32_t kFieldName = 2;

// The layout for stores without one; it says nothing about widths.
constexpr std::array<std::string_view, 17> kFixedCaptions{
    "Directory Code",     "Phone No.",        "Phone No. Extension",  "Phone No. Delay",
    "Display Name",       "Directory Status", "Directory Start Date", "Directory End Date",
    "Do Not Disturb",     "DND Schedule",     "Call Forwarding",      "CF Schedule",
    "CF Phone No.",       "CF Extension",     "CF Time Delay",        "Show Display Name",
    "Show Directory Code"};

/// What becomes of a column's cells.
enum class Treatment : std::uint8_t {
  kNone,
  kCode,
  kStartDate,
  kEndDate,
  kYesNo,
  kStatus,
  kSchedule,
};

struct CaptionTreatment {
  std::string_view caption;
  Treatment treatment;
};

constexpr CaptionTreatment kTreatments[] = {
    {"Directory Code", Treatment::kCode},        {"Directory Start Date", Treatment::kStartDate},
    {"Directory End Date", Treatment::kEndDate}, {"Do Not Disturb", Treatment::kYesNo},
    {"Directory Status", Treatment::kStatus},    {"DND Schedule", Treatment::kSchedule},
    {"Call Forwarding", Treatment::kYesNo},      {"CF Schedule", Treatment::kSchedule},
    {"Show Display Name", Treatment::kYesNo},    {"Show Directory Code", Treatment::kYesNo},
};

Treatment TreatmentOf(std::string_view caption) {
  const auto* found = std::find_if(
      std::begin(kTreatments), std::end(kTreatments),
      [caption](const CaptionTreatment& treatment) { return treatment.caption == caption; });
  return found == std::end(kTreatments) ? Treatment::kNone : found->treatment;
}

void FillFixedLayout(const TableView& layout) {
  const auto last = static_cast<std::int32_t>(kFixedCaptions.size()) - 1;
  layout.ReDim(0, last, kCaption, kFieldName);
  for (std::int32_t row = 0; row <= last; ++row) {
    layout.SetCell(row, kCaption, kFixedCaptions[static_cast<std::size_t>(row)]);
  }
}

// Layout rows and grid columns match by position; columns without a row are removed.
void ApplyLayout(const GridColumns& columns, const TableView& layout) {
  const std::int32_t count = columns.Count();
  const std::int32_t used = std::min(count, layout.UpperRow() + 1);
  for (std::int32_t index = 0; index < used; ++index) {
    const GridColumn column = columns.At(index);
    column.SetCaption(TextOrEmpty(layout.Cell(index, kCaption)));
    const Value width = layout.Cell(index, kWidth);
    if (!IsEmptyText(width)) column.SetWidth(width);
    column.SetVisible(true);
  }
  for (std::int32_t index = count - 1; index >= used; --index) columns.Remove(index);
}

/// A stored value and what a column shows for it.
struct Translation {
  Value stored;
  std::string shown;
};
using Translations = std::vector<Translation>;

Translations YesNoTranslations(std::string_view yes, std::string_view no) {
  return {{-1, std::string(yes)}, {0, std::string(no)}};
}

Translations ScheduleTranslations(const TableView& schedules) {
  Translations translations;
  if (!schedules.HasNoRows()) {
    for (std::int32_t row = schedules.LowerRow(), last = schedules.UpperRow(); row <= last; ++row) {
      Value stored = schedules.Cell(row, 0);
      std::string shown = TextOrEmpty(schedules.Cell(row, 1));
      translations.push_back({std::move(stored), std::move(shown)});
    }
  }
  translations.push_back({"", "<None>"});
  return translations;
}

/// Gives columns their value items. Fills one item over and over: the columns take copies.
class ColumnTranslator {
 public:
  /// `item` is the host's; without one the grid's own is asked for at the first column.
  ColumnTranslator(const ReportGrid& grid, ObjectRef item) : grid_(grid), item_(std::move(item)) {}

  /// `presentation` nothing leaves the column's as it is.
  void Translate(const GridColumn& column, const Translations& translations,
                 std::optional<std::int32_t> presentation) {
    if (item_ == nullptr) item_ = grid_.NewValueItem();
    if (item_ == nullptr) return;
    const ValueItem item(item_);
    const ValueItems items = column.Items();
    for (const Translation& translation : translations) {
      item.SetValue(translation.stored);
      item.SetDisplayValue(translation.shown);
      items.Add(item);
    }
    if (presentation.has_value()) items.SetPresentation(*presentation);
    items.SetTranslate(true);
  }

 private:
  const ReportGrid& grid_;
  ObjectRef item_;
};

/// The columns whose cells are rewritten; the last one of a kind counts.
struct FormattedColumns {
  std::optional<std::int32_t> code;
  std::optional<std::int32_t> start;
  std::optional<std::int32_t> end;
};

void FormatCell(const TableView& rows, std::int32_t row, std::optional<std::int32_t> column,
                std::string_view picture) {
  if (!column.has_value()) return;
  const Value cell = rows.Cell(row, *column);
  if (!IsEmptyText(cell)) rows.SetCell(row, *column, Format(cell, picture));
}

// A picture of `count` digits. No code comes near the most.
std::string Zeros(std::int32_t count) {
  constexpr std::int32_t kMost = 255;
  return std::string(static_cast<std::size_t>(std::clamp(count, 0, kMost)), '0');
}

constexpr std::string_view kOperation = "pvDirCodeReportResult";

/// What one operation works with.
struct Query {
  Host& host;
  const ObjectRef& connection;
  const DatabaseManager& manager;
  DatabaseError& error;
  std::int32_t unitKey;

  [[nodiscard]] TableView Select(std::string sql) const {
    return manager.ExecuteSelect(connection, std::move(sql), error);
  }
};

TableView ReadLayout(const Query& query) {
  TableView layout = query.Select(
      "SELECT FieldNameDisplay, DisplayWidth, FieldName FROM TenantSelectionFields WHERE FieldName "
      "LIKE 'DirectoryCode._%'  AND Display = 1 ORDER BY DisplaySeq");
  if (layout.HasNoRows()) FillFixedLayout(layout);
  return layout;
}

TableView ReadSchedules(const Query& query) {
  return query.Select(Concat("SELECT ScheduleID, ScheduleName FROM Schedules WHERE UnitKey = ",
                             query.unitKey, " ORDER BY UnitKey, ScheduleID"));
}

void TranslateColumn(const Query& query, ColumnTranslator& translator, const GridColumn& column,
                     Treatment treatment) {
  constexpr std::int32_t kShowText = 1;
  if (treatment == Treatment::kStatus) {
    translator.Translate(column, YesNoTranslations("Active", "Inactive"), kShowText);
  } else if (treatment == Treatment::kYesNo) {
    translator.Translate(column, YesNoTranslations("True", "False"), kShowText);
  } else if (treatment == Treatment::kSchedule) {
    translator.Translate(column, ScheduleTranslations(ReadSchedules(query)), std::nullopt);
  }
}

// Gives coded columns their value items and finds those whose cells are to be rewritten.
FormattedColumns TreatColumns(const Query& query, ColumnTranslator& translator,
                              const GridColumns& columns) {
  FormattedColumns formatted;
  const std::int32_t count = columns.Count();
  for (std::int32_t index = 0; index < count; ++index) {
    const GridColumn column = columns.At(index);
    const Treatment treatment = TreatmentOf(column.Caption());
    if (treatment == Treatment::kCode) {
      formatted.code = index;
    } else if (treatment == Treatment::kStartDate) {
      formatted.start = index;
    } else if (treatment == Treatment::kEndDate) {
      formatted.end = index;
    } else {
      // A column that cannot be translated does not stop the others.
      Trap(query.host, kOperation, [&] { TranslateColumn(query, translator, column, treatment); });
    }
  }
  return formatted;
}

// Rewrites the cells of codes and dates, as far as the table has such columns: one without rows
// has a single column.
void FormatCells(const TableView& rows, const FormattedColumns& columns,
                 std::string_view codePicture) {
  constexpr std::string_view kDatePicture = "DD MMM YYYY HH:MM";
  const std::int32_t lastColumn = rows.UpperColumn();
  const auto inTable = [lastColumn](std::optional<std::int32_t> column) {
    return column.has_value() && *column <= lastColumn ? column : std::nullopt;
  };
  const std::optional<std::int32_t> code = inTable(columns.code);
  const std::optional<std::int32_t> start = inTable(columns.start);
  const std::optional<std::int32_t> end = inTable(columns.end);
  for (std::int32_t row = rows.LowerRow(), last = rows.UpperRow(); row <= last; ++row) {
    FormatCell(rows, row, code, codePicture);
    FormatCell(rows, row, start, kDatePicture);
    FormatCell(rows, row, end, kDatePicture);
  }
}

// Whether row 0 is there only because a table cannot be empty. A Null is a row's.
bool HasBlankRow(const TableView& rows) {
  const Value first = rows.Cell(0, 0);
  return IsEmptyText(first) && !first.Is(ValueType::kNull);
}

}  // namespace

void clsDirCodeReport::pvDirCodeReportResult(std::int32_t lngUnitKey, const ObjectRef& objCon,
                                             const ObjectRef& objGrid, std::string_view strSQL,
                                             ObjectRef& objColGrid, const ObjectRef& colValueItem) {
  Trap(host(), kOperation, [&] {
    const DatabaseManager manager = NewManager();
    const Query query{host(), objCon, manager, error(), lngUnitKey};
    const ReportGrid grid(objGrid);
    const GridColumns columns = grid.Columns();

    const TableView layout = ReadLayout(query);
    objColGrid = layout.reference();
    ApplyLayout(columns, layout);

    error() = {};  // one of an earlier statement must not hide the report
    const TableView rows = query.Select(std::string(strSQL));
    if (error().flag || !error().text.empty()) return;

    ColumnTranslator translator(grid, colValueItem);
    const FormattedColumns formatted = TreatColumns(query, translator, columns);
    const std::int32_t codeLength = formatted.code.has_value() ? pbGetEntryLength(objCon, true) : 0;
    FormatCells(rows, formatted, Zeros(codeLength));

    grid.SetArray(rows.reference());
    if (HasBlankRow(rows)) rows.DeleteRow(0);
    grid.ReBind();
    grid.Refresh();
  });
}

}  // namespace qorcred
