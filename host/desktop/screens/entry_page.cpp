#include "host/desktop/screens/entry_page.h"

#include "host/desktop/running/messages.h"

namespace qorhost {

void EntryPage::NoteEdit(const QWidget& widget) {
  entered_ = true;
  if (mark().marked() == &widget) {
    mark().Clear();
  }
}

bool EntryPage::MayLeaveEntry(bool entered) {
  if (place().runner().busy()) {
    return false;  // a list's finder that looked meanwhile
  }
  const bool may = !entered || AskToGoOn(this, tr("What you entered is not saved. Leave it?"));
  if (may) {
    place().Tell({});  // what was told was told of the entry that is left
  }
  return may;
}

void EntryPage::ShowFile(QLabel& label, const std::filesystem::path& file) {
  label.setText(QString::fromStdString(file.filename().string()));
  label.setToolTip(QString::fromStdString(file.string()));
}

}  // namespace qorhost
