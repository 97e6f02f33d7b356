// The fields that the directory-code report can be narrowed by.
#include <string>
#include <utility>
#include <vector>

#include "frame/convert.h"
#include "frame/trap.h"
#include "reports/cls_dir_code_report.h"

namespace qorcred {

namespace {

struct FieldChoice {
  Value rid;
  std::string caption;
};

std::vector<FieldChoice> ChoicesIn(const TableView& fields) {
  std::vector<FieldChoice> choices;
  if (fields.HasNoRows()) return choices;
  for (std::int32_t row = fields.LowerRow(), last = fields.UpperRow(); row <= last; ++row) {
    Value rid = fields.Cell(row, 0);
    std::string caption = TextOrEmpty(fields.Cell(row, 1));
    choices.push_back({std::move(rid), std::move(caption)});
  }
  return choices;
}

}  // namespace

std::string clsDirCodeReport::pbComboData(const ObjectRef& objConn) {
  std::string captions;
  Trap(host(), "pbComboData", [&] {
    const DatabaseManager manager = NewManager();
    const std::vector<FieldChoice> choices = ChoicesIn(manager.ExecuteSelect(
        objConn,
        "SELECT RID, FieldNameDisplay FROM TenantSelectionFields WHERE GridType = 0 AND FieldName "
        "LIKE 'DirectoryCode._%' ORDER BY Display DESC, DisplaySeq ASC ",
        error()));

    const ControlArray lists = RequireFilterScreen().Array("cboField");
    const std::int32_t count = lists.Count();
    for (std::int32_t index = 0; index < count; ++index) {
      const ListControl list = lists.List(index);
      list.Clear();
      for (const FieldChoice& choice : choices) list.AddItemWithData(choice.caption, choice.rid);
    }

    for (const FieldChoice& choice : choices) {
      if (&choice != &choices.front()) captions += '|';
      captions += choice.caption;
    }
  });
  return captions;
}

}  // namespace qorcred
