// Messages as modal boxes.
#pragma once

#include <QString>
#include <QWidget>
#include <string_view>

#include "frame/host.h"

namespace qorhost {

/// Shows a controller's message with its icon, its title and its first button as the default, and
/// returns the button that closed it. Escape is No, or OK.
[[nodiscard]] qorcred::MessageButton ShowMessageBox(QWidget* parent, std::string_view text,
                                                    qorcred::MessageStyle style,
                                                    std::string_view title);

/// Tells of something that went wrong outside the controllers: `what` was tried, and why it failed.
void TellFailure(QWidget* parent, const QString& what, const QString& why);

/// Asks a question of the program's own before something is lost; true for Yes, No is the default.
[[nodiscard]] bool AskToGoOn(QWidget* parent, const QString& question);

}  // namespace qorhost
