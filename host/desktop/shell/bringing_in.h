// A new store of a building that another application has kept so far.
#pragma once

#include <QString>
#include <QWidget>
#include <filesystem>

#include "host/desktop/running/operation_runner.h"
#include "host/desktop/running/workplace.h"

namespace qorhost {

/// Asks for the desktop database file, shows what becomes of its rows, asks for the new store's
/// place, in a file or on a server, and makes it. What goes wrong is told. No file of the store
/// that is `open`, if any, is written over; `lastServer` is proposed. Gives the store that was
/// made; empty for none.
[[nodiscard]] std::filesystem::path BringBuildingIn(QWidget& window, OperationRunner& runner,
                                                    const WorkSurroundings& surroundings,
                                                    const std::filesystem::path& open,
                                                    const QString& lastServer);

}  // namespace qorhost
