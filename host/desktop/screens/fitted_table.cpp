#include "host/desktop/screens/fitted_table.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QRegularExpression>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <algorithm>
#include <numeric>
#include <vector>

#include "host/desktop/screens/table_finder.h"

namespace qorhost {

namespace {

constexpr int kRowsMeasured = 200;  // those that a person may see at first

/// What columns of these widths may have of `available` together: the widest give way first, none
/// below its least.
std::vector<int> Squeezed(const std::vector<int>& wanted, const std::vector<int>& least,
                          int available) {
  std::vector<int> widths = wanted;
  int most = widths.empty() ? 0 : *std::max_element(widths.begin(), widths.end());
  while (most > 0 && std::accumulate(widths.begin(), widths.end(), 0) > available) {
    --most;
    for (std::size_t at = 0; at < widths.size(); ++at) {
      widths[at] = std::min(wanted[at], std::max(most, least[at]));
    }
  }
  return widths;
}

/// Whether a column has a day or a moment in one of its first rows.
bool HasMoments(const QAbstractItemModel& model, int column) {
  static const QRegularExpression kMoment(
      QRegularExpression::anchoredPattern(QStringLiteral("\\d{4}-\\d{2}-\\d{2}( [\\d:]+)?")));
  const int rows = std::min(model.rowCount(), kRowsMeasured);
  for (int row = 0; row < rows; ++row) {
    if (kMoment.match(model.index(row, column).data().toString()).hasMatch()) {
      return true;
    }
  }
  return false;
}

/// Tells what a column is too narrow for.
class CutTextTips final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override {
    if (event->type() != QEvent::ToolTip || index.data(Qt::ToolTipRole).isValid()) {
      return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    // Not as the view breaks it into lines, of which a row of one line shows the first.
    QStyleOptionViewItem inOneLine = option;
    inOneLine.features.setFlag(QStyleOptionViewItem::WrapText, false);
    const bool isCut = sizeHint(inOneLine, index).width() > view->visualRect(index).width();
    QToolTip::showText(event->globalPos(), isCut ? index.data().toString() : QString(), view);
    return true;
  }
};

/// Fits a table again whenever its letters change, and squeezes it whenever its width does; owned
/// by the table.
class Fitting final : public QObject {
 public:
  explicit Fitting(QTableView& view) : QObject(&view), view_(view) {
    setObjectName(kName);
    view.installEventFilter(this);
    view.viewport()->installEventFilter(this);
  }

  /// That of a table; null for one that is not kept fit.
  static Fitting* Of(const QTableView& view) {
    return dynamic_cast<Fitting*>(view.findChild<QObject*>(kName, Qt::FindDirectChildrenOnly));
  }

  void Fit() {
    view_.verticalHeader()->setDefaultSectionSize(view_.fontMetrics().height() * 3 / 2);
    view_.resizeColumnsToContents();
    if (squeezes_) {
      NoteWanted();
      Squeeze();
    }
  }

  void SqueezeFromNowOn() {
    squeezes_ = true;
    TellCutTexts(view_);
    Fit();
  }

  bool event(QEvent* event) override {
    if (event->type() == QEvent::User) {
      Fit();
      return true;
    }
    return QObject::event(event);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::FontChange && watched == &view_) {
      // Behind the event: by then the titles have their new letters, too.
      QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }
    // What a person has made wider or narrower stays so.
    if (event->type() == QEvent::Resize && watched != &view_ && squeezes_ && Widths() == given_) {
      Squeeze();
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  static constexpr QLatin1String kName{"fitting"};

  void NoteWanted() {
    const QHeaderView& titles = *view_.horizontalHeader();
    const QAbstractItemView& cells = view_;
    columns_.clear();
    wanted_.clear();
    least_.clear();
    hasMoments_.clear();
    for (int column = 0; column < titles.count(); ++column) {
      if (!titles.isSectionHidden(column)) {
        columns_.push_back(column);
        hasMoments_.push_back(HasMoments(*view_.model(), column));
        least_.push_back(titles.sectionSizeHint(column));
        wanted_.push_back(std::max(cells.sizeHintForColumn(column), least_.back()));
      }
    }
  }

  void Squeeze() {
    const int available = view_.viewport()->width();
    const std::vector<int> texts = Squeezed(wanted_, Kept(false), available);
    const std::vector<int> shortTexts = Squeezed(texts, Kept(true), available);
    const std::vector<int> widths = Squeezed(shortTexts, least_, available);
    QHeaderView& titles = *view_.horizontalHeader();
    titles.setStretchLastSection(false);
    for (std::size_t at = 0; at < columns_.size(); ++at) {
      titles.resizeSection(columns_[at], widths[at]);
    }
    titles.setStretchLastSection(true);
    given_ = Widths();
  }

  /// What columns may not go below as long as others can give way: what is as short as a moment
  /// says little when it is cut, and a moment itself, which alone is kept when `momentsAlone`,
  /// says nothing.
  [[nodiscard]] std::vector<int> Kept(bool momentsAlone) const {
    std::vector<int> kept;
    for (std::size_t at = 0; at < wanted_.size(); ++at) {
      const bool isKept = wanted_[at] <= ShortWidth() && (hasMoments_[at] || !momentsAlone);
      kept.push_back(isKept ? std::max(wanted_[at], least_[at]) : least_[at]);
    }
    return kept;
  }

  /// A moment's, with what is around it.
  [[nodiscard]] int ShortWidth() const {
    const QFontMetrics letters = view_.fontMetrics();
    return letters.horizontalAdvance(QStringLiteral("0000-00-00 00:00:00")) + letters.height();
  }

  /// Those of the columns but the last.
  [[nodiscard]] std::vector<int> Widths() const {
    std::vector<int> widths;
    for (std::size_t at = 0; at + 1 < columns_.size(); ++at) {
      widths.push_back(view_.columnWidth(columns_[at]));
    }
    return widths;
  }

  QTableView& view_;
  bool squeezes_ = false;
  std::vector<int> columns_;  // those that are shown
  std::vector<int> wanted_;   // their widths without a squeeze
  std::vector<int> least_;
  std::vector<bool> hasMoments_;
  std::vector<int> given_;
};

}  // namespace

void SetUp(QTableView& view, QAbstractItemModel& model) {
  view.setModel(&model);
  view.horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
  view.horizontalHeader()->setStretchLastSection(true);
  view.horizontalHeader()->setResizeContentsPrecision(kRowsMeasured);
  view.horizontalHeader()->setHighlightSections(false);
  view.verticalHeader()->hide();
  view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  KeepFit(view);
  TypeAhead::Watch(view);
}

void KeepFit(QTableView& view) {
  (new Fitting(view))->Fit();
}

void FitColumns(QTableView& view) {
  Fitting::Of(view)->Fit();
}

void TellCutTexts(QTableView& view) {
  view.setItemDelegate(new CutTextTips(&view));
}

void SqueezeColumns(QTableView& view) {
  Fitting::Of(view)->SqueezeFromNowOn();
}

}  // namespace qorhost
