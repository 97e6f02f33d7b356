#include "host/desktop/shell/page_stack.h"

#include <QLabel>
#include <algorithm>

#include "host/desks/desk_error.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/words/desk_words.h"

namespace qorhost {

PageStack::PageStack(OperationRunner& runner, QWidget* start, QWidget* parent)
    : QStackedWidget(parent),
      runner_(runner),
      start_(start),
      made_(Screens().size(), nullptr),
      outdated_(Screens().size(), false) {
  addWidget(start_);
}

PageStack::~PageStack() {
  Drop();
}

void PageStack::Take(Workplace* place) {
  Drop();
  place_ = place;
  if (place_ == nullptr) {
    setCurrentWidget(start_);
  }
}

void PageStack::Drop() {
  for (QWidget*& made : made_) {
    delete made;
    made = nullptr;
  }
  std::fill(outdated_.begin(), outdated_.end(), false);
}

void PageStack::DropOthers() {
  for (QWidget*& made : made_) {
    if (made != currentWidget()) {
      delete made;
      made = nullptr;
    }
  }
}

void PageStack::NoteChange() {
  for (std::size_t row = 0; row < outdated_.size(); ++row) {
    outdated_[row] = made_[row] != nullptr && made_[row] != currentWidget();
  }
}

ScreenPage* PageStack::page() const {
  return qobject_cast<ScreenPage*>(currentWidget());
}

QStringList PageStack::WithEntries() const {
  QStringList titles;
  for (std::size_t row = 0; row < made_.size(); ++row) {
    const auto* screen = qobject_cast<const ScreenPage*>(made_[row]);
    if (screen != nullptr && screen->HasEntries()) {
      titles.append(TitleOf(Screens()[row]));
    }
  }
  return titles;
}

void PageStack::Show(int row) {
  if (place_ == nullptr || row < 0) {
    return;
  }
  const auto at = static_cast<std::size_t>(row);
  if (made_[at] == nullptr) {
    try {
      if (!Make(row)) {
        return;
      }
    } catch (const std::exception& failure) {
      if (!runner_.cancelled() && Screens()[at].needsUnit && place_->FindsUnitGone()) {
        place_->TellUnitGone();
      }
      ShowProblem(row, runner_.cancelled() ? tr("it was cancelled.") : Told(failure.what()));
      return;
    }
  }
  setCurrentWidget(made_[at]);
  ScreenPage* shown = page();
  if (shown != nullptr && outdated_[at] && !shown->HasEntries()) {
    outdated_[at] = false;
    shown->Refresh();
  }
}

bool PageStack::Make(int row) {
  const auto at = static_cast<std::size_t>(row);
  const ScreenEntry& screen = Screens()[at];
  std::unique_ptr<ScreenPage> made;
  const bool ran = runner_.Run(tr("Opening %1").arg(TitleOf(screen)), [&] {
    if (screen.needsUnit && place_->session().Units().empty()) {
      throw RefusedError(
          FromQt(tr("The store has no units yet: this screen shows what is in one. The screen "
                    "“Units” makes the first one.")));
    }
    made = screen.make(*place_);
  });
  if (!ran) {
    return false;
  }
  ScreenPage* page = made.get();
  made_[at] = made.release();
  addWidget(page);
  page->Begin();
  return true;
}

void PageStack::ShowProblem(int row, const QString& why) {
  const auto at = static_cast<std::size_t>(row);
  auto* problem = new QLabel(tr("%1 cannot be shown: %2").arg(TitleOf(Screens()[at]), why), this);
  problem->setTextFormat(Qt::PlainText);
  problem->setWordWrap(true);
  problem->setAlignment(Qt::AlignCenter);
  addWidget(problem);
  setCurrentWidget(problem);
  connect(this, &QStackedWidget::currentChanged, problem, &QObject::deleteLater);
}

}  // namespace qorhost
