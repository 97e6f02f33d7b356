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
/// A file to be written, which is called `name` at first; "" when none was chosen.
[[nodiscard]] QString AskWhereTo(QWidget* parent, const QString& title, const QString& name,
                                 const QString& filter = {},
                                 Existing existing = Existing::kIsAskedAbout);

/// The folder in which the next dialog of the program begins; "" before the first one.
[[nodiscard]] QString FolderOfFiles();
void SetFolderOfFiles(const QString& folder);

}  // namespace qorhost
