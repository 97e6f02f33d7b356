#include "host/desktop/screens/list_finder.h"

#include <algorithm>

#include "host/desktop/binding/qt_text.h"
#include "host/desktop/screens/wanted_text.h"

namespace qorhost {

namespace {
constexpr int kPause = 200;  // milliseconds between the keys of somebody who types
}

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

ListFinder::ListFinder(QLineEdit& line, std::function<const ListModel&()> list,
                       std::function<void(std::int32_t index)> choose)
    : QObject(&line), line_(line), list_(std::move(list)), choose_(std::move(choose)) {
  pause_.setSingleShot(true);
  pause_.setInterval(kPause);
  connect(&pause_, &QTimer::timeout, this, [this] { Find(false); });
  connect(&line_, &QLineEdit::textEdited, this, [this] { pause_.start(); });
  connect(&line_, &QLineEdit::returnPressed, this, [this] { Find(!pause_.isActive()); });
}

void ListFinder::Find(bool next) {
  pause_.stop();
  if (line_.text().isEmpty()) {
    return;
  }
  const ListModel& list = list_();
  const std::int32_t found = FindEntryWith(list, line_.text(), list.selected() + (next ? 1 : 0));
  if (found != ListModel::kNone && found != list.selected()) {
    choose_(found);
  }
}

}  // namespace qorhost
