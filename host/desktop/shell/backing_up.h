// Backups of the store that is open, and the way back from one.
#pragma once

#include <QString>
#include <QWidget>
#include <filesystem>
#include <optional>

#include "frame/date.h"
#include "host/desktop/running/workplace.h"

namespace qorhost {

/// Asks where to, writes the copy, and tells what came of it. A store in memory has none.
void BackUpStore(Workplace& place);

/// A backup, and the store in whose place it is put.
struct Restoring {
  std::filesystem::path backup;
  std::filesystem::path store;
};

/// Asks for the backup, and for the store where none is open ("": no file's), and whether what
/// stands there is to make room. Nothing for somebody who has thought better of it.
[[nodiscard]] std::optional<Restoring> AskWhatToRestore(QWidget& window,
                                                        const std::filesystem::path& open);

struct RestoreEnding {
  bool done = false;
  QString told;  ///< in one line; "" where a box has told it
};

/// Puts the backup in the store's place; what stood there is kept beside it, under a name with
/// `now`. The window may not have the store open meanwhile.
[[nodiscard]] RestoreEnding PutBackupInPlace(QWidget& window, OperationRunner& runner,
                                             const Restoring& restoring, qorcred::Date now);

}  // namespace qorhost
