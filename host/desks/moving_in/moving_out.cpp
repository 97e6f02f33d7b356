#include "host/desks/moving_in/moving_out.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <string>
#include <system_error>

#include "frame/convert.h"
#include "frame/text.h"
#include "host/desks/moving_in/known_tables.h"
#include "host/dialect/canonical_date.h"
#include "host/files/file_error.h"
#include "host/files/file_kind.h"
#include "host/files/fresh_file.h"

namespace qorhost {

namespace fs = std::filesystem;

namespace {

using dialect::ColumnType;
using qorcred::Value;

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kLongestText = 255;  // of a column of texts; longer ones are of another type

/// Quoted whatever it holds: so "" is an empty text, and nothing is Null.
std::string Quoted(std::string_view text) {
  return '"' + qorcred::ReplaceAll(text, "\"", "\"\"") + '"';
}

std::string NumberText(double number) {
  constexpr double kWhole = 1e15;
  const bool isWhole = number == std::trunc(number) && std::abs(number) < kWhole;
  return isWhole ? fmt::format("{:.0f}", number) : fmt::format("{}", number);
}

std::string CellText(const Value& cell) {
  if (cell.Is(qorcred::ValueType::kNull)) return "";
  if (const auto* text = cell.As<std::string>()) return Quoted(*text);
  if (const auto* flag = cell.As<bool>()) return *flag ? "-1" : "0";
  if (const auto* date = cell.As<qorcred::Date>()) return dialect::CanonicalDate(*date);
  return NumberText(qorcred::ToDouble(cell));
}

/// How schema.ini calls a column's type, by what the column holds.
class ColumnKind {
 public:
  explicit ColumnKind(ColumnType type) : type_(type) {}

  void See(const Value& cell) {
    if (const auto* text = cell.As<std::string>()) {
      hasTexts_ = true;
      isLong_ = isLong_ || qorcred::Utf16Length(*text) > kLongestText;
    }
  }
  [[nodiscard]] std::string Name() const {
    if (type_ == ColumnType::kText || hasTexts_) {
      return isLong_ ? "Memo" : fmt::format("Text Width {}", kLongestText);
    }
    switch (type_) {
      case ColumnType::kDouble:
        return "Double";
      case ColumnType::kBoolean:
        return "Bit";
      case ColumnType::kDate:
        return "DateTime";
      default:
        return "Long";
    }
  }

 private:
  ColumnType type_;
  bool hasTexts_ = false;  // also in a column of numbers, where a store takes them
  bool isLong_ = false;
};

[[noreturn]] void CannotWrite(const fs::path& place, int reason) {
  throw FileError(FileProblem::kUnreachable,
                  fmt::format("cannot write the folder '{}': {}", place.string(),
                              std::generic_category().message(reason)));
}

/// A folder beside its place, which becomes the place when all is in it; gone unless it did.
class FreshFolder {
 public:
  explicit FreshFolder(const fs::path& place) : place_(place) {
    std::string name = (FolderOf(place) / ".qorhost-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) CannotWrite(place_, errno);
    path_ = name;
  }
  ~FreshFolder() {
    std::error_code ignored;
    if (!path_.empty()) fs::remove_all(path_, ignored);
  }
  FreshFolder(const FreshFolder&) = delete;
  FreshFolder& operator=(const FreshFolder&) = delete;

  void Write(std::string_view name, const std::string& text) const {
    const fs::path file = path_ / name;
    std::ofstream out(file, std::ios::binary);
    out << text << std::flush;
    if (!out) CannotWrite(place_, errno == 0 ? EIO : errno);
    if (const int reason = SyncFile(file); reason != 0) CannotWrite(place_, reason);
  }
  /// An empty folder that stands there makes room, and nothing else does.
  void PutInPlace() {
    SyncFolder(path_);
    if (rename(path_.c_str(), place_.c_str()) != 0) CannotWrite(place_, errno);
    path_.clear();
    SyncFolder(FolderOf(place_));
  }

 private:
  fs::path place_;
  fs::path path_;
};

void RequireRoom(const fs::path& folder) {
  const FileKind stands = KindOf(folder, Links::kAreSeen);
  if (stands == FileKind::kNone) {
    RequireFolderOf(folder);
    return;
  }
  if (stands != FileKind::kFolder) {
    throw FileError(FileProblem::kOccupied,
                    fmt::format("'{}' is {}: name a folder", folder.string(), NameOf(stands)));
  }
  std::error_code failed;
  if (!fs::is_empty(folder, failed) || failed) {
    throw FileError(
        FileProblem::kExists,
        fmt::format("the folder '{}' holds something: name another one", folder.string()));
  }
}

/// The files as they are to be written.
class Files {
 public:
  explicit Files(FreshFolder* folder) : folder_(folder) {}

  void Add(const KnownTable& known, const QueryResult& rows) {
    const std::span<const dialect::Column> columns = LayoutOf(known).columns;
    std::vector<ColumnKind> kinds;
    std::string text;
    for (const dialect::Column& column : columns) {
      kinds.emplace_back(column.type);
      text += fmt::format("{}{}", text.empty() ? "" : ",", Quoted(column.name));
    }
    text += kLineEnd;
    for (const ResultRow row : rows.rows()) {
      for (std::size_t at = 0; at < columns.size(); ++at) {
        const Value& cell = row[static_cast<std::int32_t>(at)];
        kinds[at].See(cell);
        if (at > 0) text += ',';
        text += CellText(cell);
      }
      text += kLineEnd;
    }
    Put(fmt::format("{}.csv", known.name), text);
    Note(known, kinds);
  }

  void End() const { Put("schema.ini", schema_); }

 private:
  void Put(std::string_view name, const std::string& text) const {
    if (folder_ != nullptr) folder_->Write(name, text);
  }

  void Note(const KnownTable& known, const std::vector<ColumnKind>& kinds) {
    constexpr std::string_view kUtf8 = "65001";
    schema_ += fmt::format(
        "[{}.csv]{}ColNameHeader=True{}Format=CSVDelimited{}MaxScanRows=0{}CharacterSet={}{}"
        "DateTimeFormat=yyyy-mm-dd hh:nn:ss{}DecimalSymbol=.{}",
        known.name, kLineEnd, kLineEnd, kLineEnd, kLineEnd, kUtf8, kLineEnd, kLineEnd, kLineEnd);
    const std::span<const dialect::Column> columns = LayoutOf(known).columns;
    for (std::size_t at = 0; at < columns.size(); ++at) {
      schema_ +=
          fmt::format("Col{}=\"{}\" {}{}", at + 1, columns[at].name, kinds[at].Name(), kLineEnd);
    }
    schema_ += kLineEnd;
  }

  FreshFolder* folder_;
  std::string schema_;
};

QueryResult RowsOf(DeskSession& session, const KnownTable& known,
                   std::optional<std::int32_t> unit) {
  std::string names;
  for (const dialect::Column& column : LayoutOf(known).columns) {
    names += fmt::format("{}{}", names.empty() ? "" : ", ", column.name);
  }
  const bool isOfUnits = dialect::FindColumn(LayoutOf(known), "UnitKey") != nullptr;
  return session.sql().Select(
      fmt::format("SELECT {} FROM {}{} ORDER BY RID", names, known.name,
                  unit && isOfUnits ? fmt::format(" WHERE UnitKey={}", *unit) : ""));
}

}  // namespace

std::vector<MovedOutTable> MoveOut(DeskSession& session, const fs::path& folder,
                                   std::optional<std::int32_t> unit, Trial trial) {
  fs::path place = folder;
  if (!place.has_filename()) place = place.parent_path();  // "folder/"
  RequireRoom(place);
  std::optional<FreshFolder> fresh;
  if (trial == Trial::kNo) fresh.emplace(place);
  Files files(fresh ? &*fresh : nullptr);
  std::vector<MovedOutTable> moved;
  {
    const Undoable oneState = session.OneState();
    for (const KnownTable& known : KnownTables()) {
      const QueryResult rows = RowsOf(session, known, unit);
      files.Add(known, rows);
      moved.push_back({known.name, rows.rowCount});
    }
  }
  files.End();
  if (fresh) fresh->PutInPlace();
  return moved;
}

}  // namespace qorhost
