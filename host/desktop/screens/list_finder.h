// A line in which typing finds entries of a list.
#pragma once

#include <QLineEdit>
#include <cstdint>
#include <functional>

#include "host/screens/list_model.h"

namespace qorhost {

/// The place of the first entry from `start` on, and then from the beginning, that has the text in
/// any letter case; ListModel::kNone without one.
[[nodiscard]] std::int32_t FindEntryWith(const ListModel& list, const QString& text,
                                         std::int32_t start);

/// Has the line choose the first entry with the text that was typed, in any letter case, at its
/// pauses; Return goes on to the next one. `list` gives the list to look in, `choose` is told of
/// the entry that was found. The list must outlive the line.
void FindEntriesBy(QLineEdit& line, std::function<const ListModel&()> list,
                   std::function<void(std::int32_t index)> choose);

}  // namespace qorhost
