#include "host/desktop/shell/faults_dialog.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <numeric>
#include <vector>

#include "host/desktop/screens/fitted_table.h"

namespace qorhost {

namespace {

constexpr QSize kUsualFaults(900, 460);
constexpr int kLinesOfOne = 3;

/// The cells of a row, one behind the other.
QString LineOf(const QAbstractItemModel& model, int row) {
  QStringList cells;
  for (int column = 0; column < model.columnCount(); ++column) {
    cells.append(model.index(row, column).data().toString());
  }
  return cells.join(QLatin1Char('\t'));
}

}  // namespace

FaultsDialog::FaultsDialog(QWidget* parent, const Table& faults)
    : QDialog(parent), table_(new QTableView(this)), whole_(new QLabel(this)) {
  setWindowTitle(tr("Check of the store"));
  auto* column = new QVBoxLayout(this);
  auto* count = new QLabel(this);
  count->setObjectName(QStringLiteral("faultCount"));
  count->setTextFormat(Qt::PlainText);
  count->setText(tr("What is wrong, and how to mend it (%1):").arg(faults.rows.size()));
  column->addWidget(count);
  table_->setObjectName(QStringLiteral("faults"));
  table_->setAccessibleName(tr("What is wrong"));
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setAlternatingRowColors(true);
  table_->setShowGrid(false);
  table_->setTabKeyNavigation(false);
  table_->setWordWrap(false);
  table_->setSortingEnabled(true);
  table_->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
  SetUp(*table_, rows_);
  SqueezeColumns(*table_);
  rows_.Show(faults);
  FitColumns(*table_);
  column->addWidget(table_, 1);
  whole_->setObjectName(QStringLiteral("wholeFault"));
  whole_->setTextFormat(Qt::PlainText);
  whole_->setWordWrap(true);
  whole_->setMinimumHeight(kLinesOfOne * fontMetrics().lineSpacing());
  whole_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  column->addWidget(whole_);
  connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& current) { TellWhole(current.row()); });
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  QPushButton* copy = buttons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
  copy->setObjectName(QStringLiteral("copyFaults"));
  copy->setToolTip(tr("Copies the chosen rows; all, where none is chosen (Ctrl+C)"));
  connect(copy, &QPushButton::clicked, this, [this] { Copy(); });
  table_->installEventFilter(this);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  column->addWidget(buttons);
  resize(kUsualFaults);
  table_->setFocus();
  table_->selectionModel()->setCurrentIndex(rows_.index(0, 0), QItemSelectionModel::NoUpdate);
}

void FaultsDialog::TellWhole(int row) {
  constexpr int kFault = 1;
  constexpr int kAdvice = 2;
  whole_->setText(row < 0 ? QString()
                          : rows_.index(row, kFault).data().toString() + QLatin1Char('\n') +
                                rows_.index(row, kAdvice).data().toString());
}

/// The table itself would copy a cell.
bool FaultsDialog::eventFilter(QObject* watched, QEvent* event) {
  if (watched == table_ && event->type() == QEvent::KeyPress &&
      dynamic_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
    Copy();
    return true;
  }
  return QDialog::eventFilter(watched, event);
}

void FaultsDialog::Copy() const {
  std::vector<int> rows;
  for (const QModelIndex& chosen : table_->selectionModel()->selectedRows()) {
    rows.push_back(chosen.row());
  }
  std::sort(rows.begin(), rows.end());
  if (rows.empty()) {
    rows.resize(static_cast<std::size_t>(rows_.rowCount()));
    std::iota(rows.begin(), rows.end(), 0);
  }
  QString text;
  for (const int row : rows) {
    text += LineOf(rows_, row) + QLatin1Char('\n');
  }
  QGuiApplication::clipboard()->setText(text);
}

}  // namespace qorhost
