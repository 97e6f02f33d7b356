#include "host/desktop/screens/list_finder.h"

#include <algorithm>
#include <utility>

#include "host/desktop/binding/qt_text.h"
#include "host/desktop/screens/typing_pause.h"
#include "host/desktop/screens/wanted_text.h"

namespace qorhost {

std::int32_t FindEntryWith(const ListModel& list, const QString& text, std::int32_t start) {
  const std::int32_t count = list.count();
  const WantedText wanted(text);
  for (std::int32_t step = 0; step < count; ++step) {
    const std::int32_t index = (std::max(start, 0) + step) % count;
    if (wanted.IsIn(ToQt(list.Text(index)))) {
      return index;
    }
  }
  return ListModel::kNone;
}

void FindEntriesBy(QLineEdit& line, std::function<const ListModel&()> list,
                   std::function<void(std::int32_t index)> choose) {
  new TypingPause(line, [&line, list = std::move(list), choose = std::move(choose)](bool next) {
    if (line.text().isEmpty()) {
      return;
    }
    const ListModel& entries = list();
    const std::int32_t found =
        FindEntryWith(entries, line.text(), entries.selected() + (next ? 1 : 0));
    if (found != ListModel::kNone && found != entries.selected()) {
      choose(found);
    }
  });
}

}  // namespace qorhost
