// What stands over a screen.
#pragma once

#include <QLabel>

namespace qorhost {

/// A label in larger letters, which the program's look gives to this class.
class Heading final : public QLabel {
  Q_OBJECT

 public:
  using QLabel::QLabel;
};

}  // namespace qorhost
