// What a person would see of texts that do not fit into their widgets.
#pragma once

#include <QWidget>
#include <string>

namespace qorhost::test {

/// Fails the test for each visible label, button, box, title of a group, tab or header, and entry
/// that a combo box shows, below a widget whose own text does not fit into the room that the style
/// leaves for it. `where` is told with it.
void ExpectNothingCut(const QWidget& on, const std::string& where);

}  // namespace qorhost::test
