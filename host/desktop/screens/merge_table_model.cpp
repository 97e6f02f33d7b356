#include "host/desktop/screens/merge_table_model.h"

#include <algorithm>
#include <set>
#include <tuple>

#include "frame/convert.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/words/list_words.h"

namespace qorhost {

namespace {

enum Column : int { kAccept, kAction, kCode, kWhat, kMergeColumns };

QString WordOf(MergeAction action) {
  switch (action) {
    case MergeAction::kInsert:
      return MergeTableModel::tr("add");
    case MergeAction::kUpdate:
      return MergeTableModel::tr("change");
    case MergeAction::kDelete:
      break;
  }
  return MergeTableModel::tr("delete");
}

}  // namespace

void MergeTableModel::Show(const UnitMerge* merge, const std::vector<UnitCode>& unit) {
  using Key = std::tuple<MergeAction, double, std::int32_t>;
  const auto key = [](const Difference& one) {
    return Key(one.action, one.subject.number, one.subject.rid.value_or(0));
  };
  std::set<Key> before;
  for (const std::size_t step : Accepted()) {
    before.insert(key(differences_[step]));
  }
  differences_.clear();
  accepted_.clear();
  if (merge != nullptr) {
    for (const MergeStep& step : merge->plan().steps) {
      differences_.push_back(
          {step.action, SubjectOf(step, unit, merge->stored()), ShownDifferences(step.what)});
      accepted_.push_back(before.contains(key(differences_.back())));
    }
  }
  ShowAsAsked();
}

void MergeTableModel::Narrow(const QString& text) {
  text_ = WantedText(text);
  ShowAsAsked();
}

void MergeTableModel::ShowAsAsked() {
  beginResetModel();
  shown_.clear();
  for (std::size_t step = 0; step < differences_.size(); ++step) {
    const auto cells = [&] {
      QStringList texts;
      for (int column = kAction; column < kMergeColumns; ++column) {
        texts.append(TextAt(step, column));
      }
      return texts;
    };
    if (text_.Shows(cells)) {
      shown_.push_back(step);
    }
  }
  endResetModel();
}

void MergeTableModel::Accept(int row, bool accepted) {
  accepted_.at(StepAt(row)) = accepted;
  TellAccepted();
}

void MergeTableModel::AcceptShown() {
  for (const std::size_t step : shown_) {
    accepted_[step] = true;
  }
  TellAccepted();
}

void MergeTableModel::AcceptNone() {
  std::fill(accepted_.begin(), accepted_.end(), false);
  TellAccepted();
}

void MergeTableModel::TellAccepted() {
  if (!shown_.empty()) {
    Q_EMIT dataChanged(index(0, kAccept), index(rowCount() - 1, kAccept), {Qt::CheckStateRole});
  }
  if (onAccept_) {
    onAccept_();
  }
}

std::vector<std::size_t> MergeTableModel::Accepted() const {
  std::vector<std::size_t> steps;
  for (std::size_t step = 0; step < accepted_.size(); ++step) {
    if (accepted_[step]) {
      steps.push_back(step);
    }
  }
  return steps;
}

int MergeTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int MergeTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kMergeColumns;
}

QString MergeTableModel::TextAt(std::size_t step, int column) const {
  const Difference& difference = differences_[step];
  switch (column) {
    case kAction:
      return WordOf(difference.action);
    case kCode:
      return ToQt(qorcred::NumberText(difference.subject.number));
    case kWhat:
      return difference.what;
    default:
      return {};
  }
}

QVariant MergeTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) {
    return {};
  }
  const std::size_t step = StepAt(index.row());
  if (role == Qt::CheckStateRole && index.column() == kAccept) {
    return accepted_[step] ? Qt::Checked : Qt::Unchecked;
  }
  if (role == Qt::AccessibleTextRole && index.column() == kAccept) {
    return accepted_[step] ? MergeTableModel::tr("accepted") : MergeTableModel::tr("not accepted");
  }
  return role == Qt::DisplayRole || role == Qt::ToolTipRole ? TextAt(step, index.column())
                                                            : QVariant();
}

bool MergeTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!index.isValid() || role != Qt::CheckStateRole || index.column() != kAccept) {
    return false;
  }
  Accept(index.row(), value.toInt() == Qt::Checked);
  return true;
}

QVariant MergeTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
    return {};
  }
  switch (section) {
    case kAccept:
      return MergeTableModel::tr("Accept");
    case kAction:
      return MergeTableModel::tr("In the store");
    case kCode:
      return MergeTableModel::tr("Code");
    default:
      return MergeTableModel::tr("What differs or is lost");
  }
}

Qt::ItemFlags MergeTableModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  return index.column() == kAccept ? flags | Qt::ItemIsUserCheckable : flags;
}

}  // namespace qorhost
