// A directory code in the cells of one line.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/dir_code_desk.h"
#include "host/desks/dir_code_entry.h"
#include "host/desks/entry_index.h"
#include "host/desks/import_run.h"
#include "host/desks/import_words.h"
#include "host/files/import_file.h"

namespace qorhost {

/// The columns of a directory code, in their order behind the first of them.
namespace dir_code_column {
enum : std::size_t {
  kCode,
  kPhone,
  kExtension,
  kDelay,
  kDisplayName,
  kStatus,
  kStart,
  kEnd,
  kDnd,
  kDndSchedule,
  kForwarding,
  kCfSchedule,
  kCfPhone,
  kCfExtension,
  kCfDelay,
  kShowName,
  kShowCode,
  kCount
};
}  // namespace dir_code_column

/// They are named as the report of directory codes names its own.
[[nodiscard]] std::span<const ImportColumn, dir_code_column::kCount> DirCodeColumns();

/// The inputs of the directory-code screen that these columns hold, when the first is `first`.
[[nodiscard]] std::vector<ColumnField> DirCodeFields(std::size_t first);

/// The column whose cell is typed into a control of the directory-code screen, when the first is
/// `first`: that of the code where no cell is.
[[nodiscard]] std::size_t ColumnOfDirCodeControl(std::string_view control, std::size_t first);

/// A display name that can be stored: with typographic apostrophes where they are replaced. Raises
/// InputFault, with the name as it has to stand, where they are not.
[[nodiscard]] std::string StorableName(const std::string& name, const ImportRules& rules);

/// Reads the lines of a file for a directory-code screen.
class DirCodeLines {
 public:
  /// `first` is the place of the first of the columns above. The desk and the rules must live as
  /// long.
  DirCodeLines(DirCodeDesk& desk, std::size_t first, const ImportRules& rules);

  /// What the cells of a line say but for the code itself. Ticks the boxes for Do Not Disturb and
  /// Call Forwarding on the screen. Raises InputFault for cells that say nothing that is known.
  [[nodiscard]] DirCodeEntry Read(const ImportLine& line, ImportNotes& notes) const;

 private:
  [[nodiscard]] std::string_view Trimmed(const ImportLine& line, std::size_t column) const {
    return line.Trimmed(first_ + column);
  }
  [[nodiscard]] std::string CellOf(const ImportLine& line, std::size_t column) const;
  [[nodiscard]] std::optional<bool> ReadTrueFalse(const ImportLine& line, std::size_t column) const;
  [[nodiscard]] std::optional<std::string> ReadSchedule(const ImportLine& line,
                                                        std::size_t column) const;
  [[nodiscard]] std::optional<std::string> ReadDelay(const ImportLine& line, std::size_t extension,
                                                     std::size_t delay, ImportNotes& notes) const;
  void ReadPhone(const ImportLine& line, DirCodeEntry& entry, ImportNotes& notes) const;
  void ReadDnd(const ImportLine& line, DirCodeEntry& entry, ImportNotes& notes) const;
  void ReadForwarding(const ImportLine& line, DirCodeEntry& entry, ImportNotes& notes) const;
  void ReadPeriod(const ImportLine& line, DirCodeEntry& entry, ImportNotes& notes) const;

  DirCodeDesk& desk_;
  std::size_t first_;
  const ImportRules& rules_;
  EntryIndex schedules_;
};

}  // namespace qorhost
