#include "host/desktop/calls/call_log.h"

#include <QCoreApplication>
#include <QFont>
#include <QGuiApplication>
#include <QPalette>
#include <QTime>
#include <algorithm>

#include "frame/date.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/calls/call_line.h"

namespace qorhost {

namespace {

constexpr int kBetweenLooks = 50;      // milliseconds
constexpr int kShownCharacters = 500;  // of a cell: rows are one line high

QString TimeText(qorcred::Date at) {
  const qorcred::CivilTime civil = qorcred::ToCivil(at);
  return QTime(civil.hour, civil.minute, civil.second).toString(Qt::ISODate);
}

QString CellText(std::string_view text) {
  return ToQt(text).left(kShownCharacters);
}

bool IsStatement(const CallLine& call) {
  return call.kind == CallKind::kStatement || call.kind == CallKind::kHostStatement;
}

}  // namespace

CallLog::CallLog(Clock clock, std::size_t most, QObject* parent)
    : QAbstractTableModel(parent), clock_(std::move(clock)), most_(most) {
  later_.setSingleShot(true);
  later_.setInterval(kBetweenLooks);
  connect(&later_, &QTimer::timeout, this, [this] { Flush(); });
}

void CallLog::Take(std::string_view line) {
  lines_.push_back({clock_(), std::string(line)});
  if (lines_.size() >= 2 * most_) {
    Flush();  // an operation that lets no events run
  } else if (!later_.isActive()) {
    later_.start();
  }
}

void CallLog::Clear() {
  beginResetModel();
  lines_.clear();
  shown_.clear();
  gone_ = 0;
  lookedAt_ = 0;
  endResetModel();
  if (onChange_) {
    onChange_();
  }
}

void CallLog::Narrow(const QString& text, bool statementsOnly) {
  beginResetModel();
  text_ = text;
  statementsOnly_ = statementsOnly;
  const Number end = paused_ ? lookedAt_ : gone_ + lines_.size();
  shown_ = WantedFrom(gone_);
  while (!shown_.empty() && shown_.back() >= end) {
    shown_.pop_back();
  }
  lookedAt_ = end;
  endResetModel();
  if (onChange_) {
    onChange_();
  }
}

void CallLog::SetPaused(bool paused) {
  Flush();
  paused_ = paused;
  Flush();
}

void CallLog::Flush() {
  later_.stop();
  DropOldest();
  if (!paused_) {
    ShowNew();
  }
  if (onChange_) {
    onChange_();
  }
}

void CallLog::DropOldest() {
  if (lines_.size() <= most_) {
    return;
  }
  const std::size_t excess = lines_.size() - most_;
  const Number first = gone_ + excess;
  const auto stays = std::lower_bound(shown_.begin(), shown_.end(), first);
  if (stays != shown_.begin()) {
    beginRemoveRows({}, 0, static_cast<int>(stays - shown_.begin()) - 1);
    shown_.erase(shown_.begin(), stays);
    endRemoveRows();
  }
  lines_.erase(lines_.begin(), lines_.begin() + static_cast<std::ptrdiff_t>(excess));
  gone_ = first;
  lookedAt_ = std::max(lookedAt_, gone_);
}

void CallLog::ShowNew() {
  const std::deque<Number> wanted = WantedFrom(lookedAt_);
  lookedAt_ = gone_ + lines_.size();
  if (wanted.empty()) {
    return;
  }
  const int before = rowCount();
  beginInsertRows({}, before, before + static_cast<int>(wanted.size()) - 1);
  shown_.insert(shown_.end(), wanted.begin(), wanted.end());
  endInsertRows();
}

bool CallLog::IsWanted(const Line& line) const {
  return (!statementsOnly_ || IsStatement(ReadCallLine(line.text))) &&
         (text_.isEmpty() || ToQt(line.text).contains(text_, Qt::CaseInsensitive));
}

std::deque<CallLog::Number> CallLog::WantedFrom(Number first) const {
  std::deque<Number> wanted;
  for (Number number = first; number < gone_ + lines_.size(); ++number) {
    if (IsWanted(lines_[number - gone_])) {
      wanted.push_back(number);
    }
  }
  return wanted;
}

const CallLog::Line& CallLog::At(int row) const {
  return lines_.at(shown_.at(static_cast<std::size_t>(row)) - gone_);
}

void CallLog::WriteTo(std::ostream& out) const {
  for (const Line& line : lines_) {
    out << line.text << '\n';
  }
}

int CallLog::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int CallLog::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumns;
}

QVariant CallLog::data(const QModelIndex& index, int role) const {
  if (!index.isValid() ||
      (role != Qt::DisplayRole && role != Qt::ForegroundRole && role != Qt::FontRole)) {
    return {};
  }
  const Line& line = At(index.row());
  const CallLine call = ReadCallLine(line.text);
  if (role == Qt::ForegroundRole) {
    return IsStatement(call) ? QVariant(QGuiApplication::palette().link()) : QVariant();
  }
  if (role == Qt::FontRole) {
    QFont font;
    font.setBold(call.kind == CallKind::kStatement);
    return font.bold() ? QVariant(font) : QVariant();
  }
  switch (index.column()) {
    case kTime:
      return TimeText(line.at);
    case kObject:
      return QString(static_cast<qsizetype>(2 * call.depth), QLatin1Char(' ')) +
             CellText(call.object);
    case kMember:
      return CellText(call.member);
    case kArguments:
      return CellText(call.arguments);
    case kOutcome:
      return CellText(call.outcome);
    default:
      return {};
  }
}

QVariant CallLog::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
    return {};
  }
  switch (section) {
    case kTime:
      return QCoreApplication::translate("CallLog", "Time");
    case kObject:
      return QCoreApplication::translate("CallLog", "Object");
    case kMember:
      return QCoreApplication::translate("CallLog", "Member");
    case kArguments:
      return QCoreApplication::translate("CallLog", "Arguments");
    case kOutcome:
      return QCoreApplication::translate("CallLog", "Result");
    default:
      return {};
  }
}

}  // namespace qorhost
