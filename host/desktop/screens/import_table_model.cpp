#include "host/desktop/screens/import_table_model.h"

#include <QColor>
#include <algorithm>

#include "host/desktop/binding/qt_text.h"
#include "host/desktop/words/desk_words.h"

namespace qorhost {

namespace {

constexpr int kLine = 0;
constexpr QColor kWrong(0xB3, 0x2D, 0x2D);  // of a fault's note

std::size_t PlaceOf(const QModelIndex& index) {
  return static_cast<std::size_t>(index.column() - ImportTableModel::kFirstCell);
}

QString StateOf(const SheetRemark* remark) {
  if (remark == nullptr) {
    return {};
  }
  return remark->refused ? ImportTableModel::tr("refused") : ImportTableModel::tr("taken in part");
}

}  // namespace

void ImportTableModel::Show(ImportSheet* sheet, std::span<const ImportColumn> columns) {
  sheet_ = sheet;
  columns_ = columns;
  ShowAgain();
}

void ImportTableModel::ShowAgain() {
  beginResetModel();
  shown_.clear();
  const std::size_t count = sheet_ == nullptr ? 0 : sheet_->rowCount();
  for (std::size_t row = 0; row < count; ++row) {
    if (IsShown(row)) {
      shown_.push_back(row);
    }
  }
  endResetModel();
}

void ImportTableModel::ShowMeanings() {
  Q_EMIT headerDataChanged(Qt::Horizontal, 0, std::max(columnCount() - 1, 0));
}

void ImportTableModel::Narrow(const QString& text, bool refusedOnly) {
  text_ = WantedText(text);
  refusedOnly_ = refusedOnly;
  ShowAgain();
}

bool ImportTableModel::IsShown(std::size_t row) const {
  const SheetRemark* remark = sheet_->RemarkOn(row);
  if (refusedOnly_ && (remark == nullptr || !remark->refused)) {
    return false;
  }
  return text_.Shows([&] {
    QStringList cells;
    for (std::size_t place = 0; place < sheet_->width(); ++place) {
      cells.append(ToQt(sheet_->Cell(row, place)));
    }
    return cells;
  });
}

QModelIndex ImportTableModel::NextWrong(const QModelIndex& behind) const {
  const int count = rowCount();
  const int start = behind.isValid() ? behind.row() + 1 : 0;
  for (int step = 0; step < count; ++step) {
    const int row = (start + step) % count;
    const SheetRemark* remark = sheet_->RemarkOn(RowAt(row));
    if (remark != nullptr && remark->refused) {
      const int column = remark->place ? kFirstCell + static_cast<int>(*remark->place) : kLine;
      return index(row, column);
    }
  }
  return {};
}

QString ImportTableModel::ReasonAt(const QModelIndex& index) const {
  const SheetRemark* remark = index.isValid() ? sheet_->RemarkOn(RowAt(index.row())) : nullptr;
  return remark == nullptr ? QString() : Told(remark->text);
}

int ImportTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int ImportTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() || sheet_ == nullptr ? 0 : kFirstCell + static_cast<int>(sheet_->width());
}

QString ImportTableModel::TextAt(const QModelIndex& index) const {
  const std::size_t row = RowAt(index.row());
  switch (index.column()) {
    case kLine:
      return QString::number(sheet_->LineOf(row));
    case ImportTableModel::kState:
      return StateOf(sheet_->RemarkOn(row));
    default:
      return ToQt(sheet_->Cell(row, PlaceOf(index)));
  }
}

/// The cell, and what stands before a row in which it is none of the cells.
bool ImportTableModel::IsWrong(const QModelIndex& index) const {
  const SheetRemark* remark = sheet_->RemarkOn(RowAt(index.row()));
  if (remark == nullptr || !remark->refused) {
    return false;
  }
  return index.column() == kState ||
         (index.column() >= kFirstCell && remark->place == PlaceOf(index));
}

QVariant ImportTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) {
    return {};
  }
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return TextAt(index);
    case Qt::ToolTipRole:
      return ReasonAt(index);
    case Qt::AccessibleDescriptionRole:
      return IsWrong(index) ? ReasonAt(index) : QVariant();
    case Qt::BackgroundRole:
      return IsWrong(index) ? QVariant(kWrong) : QVariant();
    case Qt::ForegroundRole:
      return IsWrong(index) ? QVariant(QColor(Qt::white)) : QVariant();
    default:
      return {};
  }
}

bool ImportTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!index.isValid() || role != Qt::EditRole || index.column() < kFirstCell) {
    return false;
  }
  sheet_->Mend(RowAt(index.row()), PlaceOf(index), FromQt(value.toString()));
  Q_EMIT dataChanged(this->index(index.row(), 0), this->index(index.row(), columnCount() - 1));
  if (onMend_) {
    onMend_();
  }
  return true;
}

QVariant ImportTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole || sheet_ == nullptr) {
    return {};
  }
  if (section == kLine) {
    return ImportTableModel::tr("Line");
  }
  if (section == kState) {
    return ImportTableModel::tr("Check");
  }
  const auto place = static_cast<std::size_t>(section - kFirstCell);
  if (place >= sheet_->headings().size()) {
    return ImportTableModel::tr("(no heading)");
  }
  const QString heading = ToQt(sheet_->headings()[place]);
  const QString meaning = ToQt(sheet_->MeaningOf(place, columns_));
  if (!sheet_->IsMeaningKnown(place, columns_)) {
    return QStringLiteral("%1 → ?").arg(heading);
  }
  if (meaning.isEmpty()) {
    return ImportTableModel::tr("%1 (left out)").arg(heading);
  }
  return meaning.compare(heading.trimmed(), Qt::CaseInsensitive) == 0
             ? heading
             : QStringLiteral("%1 → %2").arg(heading, meaning);
}

Qt::ItemFlags ImportTableModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  return index.isValid() && index.column() >= kFirstCell ? flags | Qt::ItemIsEditable : flags;
}

}  // namespace qorhost
