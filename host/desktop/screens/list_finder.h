// A line in which typing finds entries of a list.
#pragma once

#include <QLineEdit>
#include <QObject>
#include <QTimer>
#include <cstdint>
#include <functional>

#include "host/screens/list_model.h"

namespace qorhost {

/// Chooses the first entry with the text that was typed, in any letter case, a moment after the
/// last key; Return goes on to the next one. Owned by the line; the list must outlive that.
class ListFinder final : public QObject {
 public:
  /// `list` gives the list to look in, `choose` is told of the entry that was found.
  ListFinder(QLineEdit& line, std::function<const ListModel&()> list,
             std::function<void(std::int32_t index)> choose);

 private:
  void Find(bool next);

  QLineEdit& line_;
  std::function<const ListModel&()> list_;
  std::function<void(std::int32_t index)> choose_;
  QTimer pause_;
};

/// The place of the first entry from `start` on, and then from the beginning, that has the text in
/// any letter case; ListModel::kNone without one.
[[nodiscard]] std::int32_t FindEntryWith(const ListModel& list, const QString& text,
                                         std::int32_t start);

}  // namespace qorhost
