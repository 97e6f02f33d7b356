#include "host/desktop/calls/call_log_dock.h"

#include <calls/ui_call_log_panel.h>

#include <QAction>
#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <algorithm>

#include "host/desks/store_file.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/running/file_choice.h"
#include "host/desktop/running/messages.h"
#include "host/desktop/words/desk_words.h"
#include "host/files/whole_file.h"

namespace qorhost {

namespace {

/// The widths of the columns but the last, in characters.
constexpr std::array kWidths{13, 34, 18, 58};

void SetUpCalls(QTableView& view, int character) {
  for (int column = 0; column < static_cast<int>(kWidths.size()); ++column) {
    view.setColumnWidth(column, kWidths.at(static_cast<std::size_t>(column)) * character);
  }
  view.horizontalHeader()->setStretchLastSection(true);
  view.horizontalHeader()->setHighlightSections(false);
  view.verticalHeader()->hide();
  view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  view.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
}

}  // namespace

CallLogDock::CallLogDock(Clock clock, QWidget* parent)
    : QDockWidget(tr("Call log"), parent),
      ui_(std::make_unique<Ui::CallLogPanel>()),
      log_(std::move(clock)) {
  setObjectName(QStringLiteral("callLog"));
}

void CallLogDock::setVisible(bool visible) {
  if (visible && widget() == nullptr) {
    MakePanel();
  }
  QDockWidget::setVisible(visible);
}

/// Columns are as wide as the text needs.
void CallLogDock::changeEvent(QEvent* event) {
  QDockWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange && widget() != nullptr) {
    SetUpCalls(*ui_->calls, fontMetrics().averageCharWidth());
    ShowState();
  }
}

void CallLogDock::MakePanel() {
  auto* panel = new QWidget(this);
  ui_->setupUi(panel);
  ui_->calls->setModel(&log_);
  SetUpCalls(*ui_->calls, fontMetrics().averageCharWidth());
  setWidget(panel);
  ConnectWidgets();
  ShowState();
}

CallLogDock::~CallLogDock() = default;

void CallLogDock::ConnectWidgets() {
  const auto narrow = [this] {
    log_.Narrow(ui_->filterCalls->text(), ui_->statementsOnly->isChecked());
  };
  connect(ui_->filterCalls, &QLineEdit::textChanged, this, narrow);
  connect(ui_->statementsOnly, &QCheckBox::toggled, this, narrow);
  connect(ui_->pauseCalls, &QPushButton::toggled, this,
          [this](bool paused) { log_.SetPaused(paused); });
  connect(ui_->startCallsOver, &QPushButton::clicked, this, [this] {
    if (onStartOver_) {
      onStartOver_();
    }
  });
  connect(ui_->copyCalls, &QPushButton::clicked, this, [this] { Copy(); });
  connect(ui_->saveCalls, &QPushButton::clicked, this, [this] { Save(); });
  auto* copy = new QAction(ui_->calls);
  copy->setShortcut(QKeySequence::Copy);
  copy->setShortcutContext(Qt::WidgetShortcut);
  ui_->calls->addAction(copy);
  connect(copy, &QAction::triggered, this, [this] { Copy(); });
  connect(ui_->calls->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& row) {
            ui_->wholeCall->setPlainText(row.isValid() ? ToQt(log_.Text(row.row())).trimmed()
                                                       : QString());
          });
  // Who looks at the latest goes on doing so.
  connect(&log_, &QAbstractItemModel::rowsAboutToBeInserted, this, [this] {
    const QScrollBar& bar = *ui_->calls->verticalScrollBar();
    looksAtLatest_ = bar.value() == bar.maximum();
  });
  log_.OnChange([this] {
    ShowState();
    if (looksAtLatest_) {
      ui_->calls->scrollToBottom();
    }
  });
}

void CallLogDock::Follow(Workplace* place) {
  const bool wanted = place != nullptr && !isHidden();
  place_ = place;
  if (!wanted && !follows_) {
    return;  // the trace that the workplace began with goes on
  }
  follows_ = wanted;
  log_.Clear();
  if (place != nullptr) {
    place->TraceTo(wanted ? [this](std::string_view line) { log_.Take(line); }
                          : qorcred::trace::TraceSink());
  }
}

void CallLogDock::ShowState() {
  QTableView& view = *ui_->calls;
  view.verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 5 / 4);
  const bool any = log_.rowCount() > 0;
  ui_->copyCalls->setEnabled(any);
  ui_->saveCalls->setEnabled(log_.kept() > 0);
  QString told = tr("%1 lines").arg(static_cast<qulonglong>(log_.kept()));
  if (log_.gone() > 0) {
    told += tr("\n%1 older ones are gone").arg(static_cast<qulonglong>(log_.gone()));
  }
  ui_->callCount->setText(told);
  ui_->callCount->setMinimumWidth(ui_->callCount->sizeHint().width());
}

void CallLogDock::Copy() const {
  QModelIndexList rows = ui_->calls->selectionModel()->selectedRows();
  std::sort(rows.begin(), rows.end());
  QStringList lines;
  for (const QModelIndex& row : rows) {
    lines.append(ToQt(log_.Text(row.row())));
  }
  if (rows.isEmpty()) {
    for (int row = 0; row < log_.rowCount(); ++row) {
      lines.append(ToQt(log_.Text(row)));
    }
  }
  QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')) + QLatin1Char('\n'));
}

void CallLogDock::Save() {
  // The dialog asks before it names a file that exists.
  const QString file = AskWhereTo(this, tr("Save the trace"), QStringLiteral("calls.txt"));
  if (!file.isEmpty()) {
    SaveTo(std::filesystem::path(FromQt(file)));
  }
}

void CallLogDock::SaveTo(const std::filesystem::path& file) {
  const Writing writing{Standing::kReplaced,
                        FilesOfStore(place_ == nullptr ? std::filesystem::path() : place_->file())};
  try {
    WriteWholeFile(file, writing, [this](std::ostream& out) { log_.WriteTo(out); });
  } catch (const std::exception& failure) {
    TellFailure(window(), tr("The trace cannot be saved."), Told(failure.what()));
    return;
  }
  if (place_ != nullptr) {
    const auto lines = static_cast<qulonglong>(log_.kept());
    place_->Tell(log_.gone() == 0
                     ? tr("Saved a trace of %1 lines.").arg(lines)
                     : tr("Saved the last %1 lines: without what came before them they cannot be "
                          "replayed.")
                           .arg(lines));
  }
}

}  // namespace qorhost
