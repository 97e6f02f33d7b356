// The name of a store on a server, asked for.
#pragma once

#include <QString>
#include <QWidget>
#include <optional>
#include <string>

namespace qorhost {

/// The name without the password that somebody has typed into it, to be shown.
[[nodiscard]] QString WithoutPassword(QString name);

/// Asks until the name is one of a store on a server; `last` stands there at first, and `title`
/// over it: "" where one is opened. "" when nothing was chosen.
[[nodiscard]] QString AskForServer(QWidget& window, const QString& last, const QString& title = {});

/// Asks for the password of a store on a server, which is not shown as it is typed; nothing for
/// somebody who does not give it.
[[nodiscard]] std::optional<std::string> AskForPassword(QWidget& window, const QString& store);

}  // namespace qorhost
