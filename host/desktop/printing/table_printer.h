// Tables on paper.
#pragma once

#include <QPagedPaintDevice>
#include <QString>

#include "host/desks/progress.h"
#include "host/files/table.h"

namespace qorhost {

/// Paints the title, and the table with its column titles and a page number on every page. Columns
/// are as wide as they need to be, or share the width; what does not fit ends in "…". Raises
/// CancelledError when the progress is cancelled, and FailureError when the device takes nothing.
void PrintTable(QPagedPaintDevice& device, const QString& title, const Table& table,
                const Progress& progress);

}  // namespace qorhost
