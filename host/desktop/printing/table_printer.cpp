#include "host/desktop/printing/table_printer.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QPainter>
#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

#include "host/desks/desk_error.h"
#include "host/desks/shown_value.h"
#include "host/desktop/binding/qt_text.h"

namespace qorhost {

namespace {

constexpr double kTextSize = 8;  // points
constexpr double kTitleSize = 12;
constexpr int kGapInCharacters = 2;
const QColor kLine(0x9A, 0xA2, 0xAD);

class Sheet {
 public:
  Sheet(QPagedPaintDevice& device, QString title, const Table& table)
      : device_(device), title_(std::move(title)), table_(table), right_(NumberColumns(table)) {
    if (!painter_.begin(&device)) {
      throw FailureError("the printer, or the file, takes nothing");
    }
    painter_.setFont(Font(kTextSize, false));
    height_ = painter_.fontMetrics().lineSpacing();
    Measure();
  }

  void Print(const Progress& progress) {
    const std::size_t fitting = RowsOnPage();
    const auto total = static_cast<std::int64_t>(table_.rows.size());
    BeginPage();
    std::size_t onPage = 0;
    std::int64_t done = 0;
    for (const auto& row : table_.rows) {
      if (onPage == fitting) {
        device_.newPage();
        BeginPage();
        onPage = 0;
      }
      PrintRow(row);
      ++onPage;
      if (progress && !progress(++done, total)) {
        throw CancelledError();
      }
    }
    painter_.end();
  }

 private:
  static QFont Font(double points, bool bold) {
    QFont font;
    font.setPointSizeF(points);
    font.setBold(bold);
    return font;
  }

  [[nodiscard]] QRect Page() const { return painter_.viewport(); }

  void Measure() {
    const QFontMetrics metrics = painter_.fontMetrics();
    const QFontMetrics bold(Font(kTextSize, true), &device_);
    gap_ = kGapInCharacters * metrics.averageCharWidth();
    for (const TableColumn& column : table_.columns) {
      widths_.push_back(bold.horizontalAdvance(ToQt(column.title)) + gap_);
    }
    for (const auto& row : table_.rows) {
      for (std::size_t at = 0; at < widths_.size(); ++at) {
        const QString text = ToQt(ShownText(row.at(at)));
        widths_[at] = std::max(widths_[at], metrics.horizontalAdvance(text) + gap_);
      }
    }
    const auto needed = std::accumulate(widths_.begin(), widths_.end(), std::int64_t{0});
    const auto width = static_cast<std::int64_t>(Page().width());
    if (needed > width) {
      for (int& column : widths_) {
        column = static_cast<int>(column * width / needed);
      }
    }
  }

  /// Below the title and the column titles, above the page number.
  [[nodiscard]] std::size_t RowsOnPage() const {
    constexpr int kOther = 5;  // lines
    return static_cast<std::size_t>(std::max(Page().height() / height_ - kOther, 1));
  }

  void BeginPage() {
    ++page_;
    painter_.setFont(Font(kTitleSize, true));
    painter_.drawText(QRect(0, 0, Page().width(), 2 * height_), Qt::AlignLeft | Qt::AlignTop,
                      title_);
    painter_.setFont(Font(kTextSize, false));
    painter_.drawText(QRect(0, Page().height() - height_, Page().width(), height_),
                      Qt::AlignRight | Qt::AlignBottom,
                      QCoreApplication::translate("TablePrinter", "Page %1").arg(page_));
    y_ = 5 * height_ / 2;
    painter_.setFont(Font(kTextSize, true));
    int x = 0;
    for (std::size_t at = 0; at < widths_.size(); ++at) {
      Draw(x, at, ToQt(table_.columns[at].title));
      x += widths_[at];
    }
    y_ += height_;
    painter_.setPen(kLine);
    painter_.drawLine(0, y_, std::min(x, Page().width()), y_);
    painter_.setPen(Qt::black);
    painter_.setFont(Font(kTextSize, false));
  }

  void PrintRow(const std::vector<qorcred::Value>& row) {
    int x = 0;
    for (std::size_t at = 0; at < widths_.size(); ++at) {
      Draw(x, at, ToQt(ShownText(row.at(at))));
      x += widths_[at];
    }
    y_ += height_;
  }

  void Draw(int x, std::size_t column, const QString& text) {
    const int width = widths_[column] - gap_;
    painter_.drawText(
        QRect(x, y_, width, height_),
        Qt::TextSingleLine | Qt::AlignVCenter | (right_[column] ? Qt::AlignRight : Qt::AlignLeft),
        painter_.fontMetrics().elidedText(text, Qt::ElideRight, width));
  }

  QPagedPaintDevice& device_;
  QString title_;
  const Table& table_;
  std::vector<bool> right_;
  std::vector<int> widths_;
  QPainter painter_;
  int height_ = 0;
  int gap_ = 0;
  int y_ = 0;
  int page_ = 0;
};

}  // namespace

void PrintTable(QPagedPaintDevice& device, const QString& title, const Table& table,
                const Progress& progress) {
  Sheet(device, title, table).Print(progress);
}

}  // namespace qorhost
