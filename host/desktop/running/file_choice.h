// Files that a person names in dialogs, which begin in the folder of the last one.
#pragma once

#include <QString>
#include <QWidget>

namespace qorhost {

/// Whether the dialog asks before a file that exists is named for writing; else whoever writes
/// does.
enum class Existing : bool { kIsAskedAbout, kIsTaken };

/// A file to be read; "" when none was chosen.
[[nodiscard]] QString AskForFile(QWidget* parent, const QString& title, const QString& filter = {});
/// A file to be written, which is called `name` at first, and gets its ending when it is given
/// none; "" when none was chosen.
[[nodiscard]] QString AskWhereTo(QWidget* parent, const QString& title, const QString& name,
                                 const QString& filter = {},
                                 Existing existing = Existing::kIsAskedAbout);

/// A store in a file, or a backup, to be opened; "" when none was chosen.
[[nodiscard]] QString AskForStore(QWidget* parent, const QString& title);
/// The place of a new store in a file; "" when none was chosen. Who makes it sees to it that
/// nothing which stands there already is lost.
[[nodiscard]] QString AskForNewStore(QWidget* parent, const QString& title);

/// The folder in which the next dialog of the program begins; "" before the first one.
[[nodiscard]] QString FolderOfFiles();
void SetFolderOfFiles(const QString& folder);

}  // namespace qorhost
