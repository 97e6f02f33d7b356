// Gives an existing directory code a new number.
#include "dircodes/cls_dir_code.h"
#include "dircodes/code_text.h"
#include "frame/convert.h"
#include "frame/messages.h"
#include "frame/row_state.h"
#include "frame/schema.h"
#include "frame/sql_text.h"
#include "frame/text.h"
#include "frame/trap.h"

namespace qorcred {

bool clsDirCode::pbUpdateDirCode(const ObjectRef& objConn, std::int32_t lngUnitKey,
                                 std::string_view strDirCode) {
  bool updated = false;
  Trap(host_, "pbUpdateDirCode", [&] {
    const Screen screen = RequireScreen();
    if (!IsCodeAcceptable(screen, strDirCode)) return;
    const std::int32_t rid = ToLong(screen.Variable("glngrid"));
    if (!pbIsDirCodeUnique(objConn, strDirCode, lngUnitKey, rid)) return;

    std::int16_t state = ReadState(objConn, rid);
    if (state == row_state::kInUnit) state = row_state::kChanged;
    std::string update =
        Concat("UPDATE DIRECTORYCODE SET DIRECTORYCODE=", strDirCode,
               ",MODIFIED=", std::int32_t{state}, "  WHERE UNITKEY=", lngUnitKey, " AND RID=", rid);
    const Value changed = Manager().ExecuteUpdate(objConn, ReplaceEmptyWithNull(std::move(update)),
                                                  table::DIRECTORYCODE, error_,
                                                  screen.Variable("gstrLastModifiedDate"), rid);
    if (AnsweredNumber(changed) >= 1) {
      ReplaceSelectedCode(screen, strDirCode, rid);
      QueueRenumbering(objConn, lngUnitKey, rid, state);
    }
    updated = true;
  });
  return updated;
}

bool clsDirCode::IsCodeAcceptable(const Screen& screen, std::string_view code) {
  const std::string_view trimmed = Trim(code);
  if (trimmed.empty()) {
    Notify(host_, "Please enter a Directory Code.");
    return false;
  }
  const TextBox box = screen.Box("txtdirectorycode");
  if (!IsNumeric(trimmed)) {
    return RefuseEntry(box, "Please enter the Directory Code in number.");
  }
  if (Val(trimmed) < 0) {
    // The spelling differs from the save's message; hosts compare the text.
    return RefuseEntry(box, "Please enter the positvie number as Directory Code.");
  }
  return true;
}

void clsDirCode::ReplaceSelectedCode(const Screen& screen, std::string_view code,
                                     std::int32_t rid) {
  const ListControl list = screen.List("cbodirectorycode");
  const std::int32_t selected = list.ListIndex();
  list.RemoveItem(selected);
  list.AddItem(PaddedCode(Value(code), screen.Box("txtdirectorycode").MaxLength()), selected);
  list.SetItemData(list.NewIndex(), rid);
  list.SetListIndex(selected);
}

void clsDirCode::QueueRenumbering(const ObjectRef& connection, std::int32_t& unitKey,
                                  std::int32_t rid, std::int16_t state) {
  const StepSender steps(host_.CreateComponent(component::kStepSender));
  if (state == row_state::kChanged) {
    steps.ChangeDirCode(connection, unitKey, rid);
  } else if (state == row_state::kNotSent) {
    steps.ProgramDirCode(connection, unitKey, rid);
  }
}

}  // namespace qorcred
