// What the screens in which something is entered and saved have in common.
#pragma once

#include <QLabel>
#include <filesystem>

#include "host/desktop/screens/screen_page.h"

namespace qorhost {

/// Remembers whether something was entered and not stored.
class EntryPage : public ScreenPage {
  Q_OBJECT

 public:
  using ScreenPage::ScreenPage;

  [[nodiscard]] bool HasEntries() const override { return entered_; }

 protected:
  /// To be told of every edit: the widget's fault, when it has one, is shown no more.
  void NoteEdit(const QWidget& widget);
  void SetEntered(bool entered) { entered_ = entered; }
  /// Asks where something was entered; true when it may be left.
  [[nodiscard]] bool MayLeaveEntry() { return MayLeaveEntry(entered_); }
  /// The same of a part of the screen, in which something was entered or not.
  [[nodiscard]] bool MayLeaveEntry(bool entered);
  /// Shows the name of the file that is worked with; where it lies is told on the label.
  static void ShowFile(QLabel& label, const std::filesystem::path& file);

 private:
  bool entered_ = false;
};

}  // namespace qorhost
