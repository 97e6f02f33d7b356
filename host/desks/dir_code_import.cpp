#include "host/desks/dir_code_import.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "host/desks/dir_code_desk.h"
#include "host/desks/dir_code_entry.h"
#include "host/desks/dir_code_line.h"
#include "host/files/import_file.h"

namespace qorhost {

namespace {

constexpr std::size_t kFirst = 0;  // of the columns

class DirCodeImport {
 public:
  DirCodeImport(DeskSession& session, std::int32_t unitKey, const ImportRules& rules)
      : desk_(session, unitKey), lines_(desk_, kFirst, rules), fresh_(desk_.screen().Snapshot()) {}

  Outcome Enter(const ImportLine& line, ImportNotes& notes) {
    desk_.screen().Restore(fresh_);
    const DirCodeEntry entry = lines_.Read(line, notes);
    EnterNewCode(desk_, std::string(line.Trimmed(dir_code_column::kCode)), entry);
    const SavedDirCode saved = desk_.SaveNew();
    if (!saved.done()) {
      throw RefusedLine(WithoutFacts(saved),
                        ColumnOfDirCodeControl(desk_.screen().focused(), kFirst));
    }
    return WithoutFacts(saved);
  }

 private:
  DirCodeDesk desk_;
  DirCodeLines lines_;
  ScreenSnapshot fresh_;  // the screen as every line finds it
};

}  // namespace

std::span<const ImportColumn> DirCodeImportColumns() {
  // What a list shows beside them is not the code's own.
  static const auto kColumns = [] {
    constexpr std::array<ImportColumn, 4> kOfLists{{{"RID", false, {}, {}, true},
                                                    {"Unit", false, {}, {}, true},
                                                    {"Tenants", false, {}, {}, true},
                                                    {"State", false, {}, {}, true}}};
    std::array<ImportColumn, dir_code_column::kCount + kOfLists.size()> columns{};
    const auto codes = DirCodeColumns();
    std::copy(kOfLists.begin(), kOfLists.end(),
              std::copy(codes.begin(), codes.end(), columns.begin()));
    return columns;
  }();
  return kColumns;
}

ImportReport ImportDirCodes(DeskSession& session, std::int32_t unitKey, ImportFile& file,
                            const ImportRules& rules, const Progress& progress) {
  const std::vector<FieldWord> words = WordsOf(file, DirCodeFields(kFirst));
  ImportRun run(session, {{unitKey}, "import directory codes", {}}, rules, words);
  DirCodeImport entering(session, unitKey, rules);
  return run.Run(
      file,
      [&entering](const ImportLine& line, ImportNotes& notes) {
        return entering.Enter(line, notes);
      },
      progress);
}

}  // namespace qorhost
