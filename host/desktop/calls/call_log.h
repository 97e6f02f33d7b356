// The lines of a trace as they come, for a table view.
#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <QTimer>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>

#include "host/store/time_stamp.h"

namespace qorhost {

/// Keeps the latest lines of one trace; older ones go, and are counted. Lines that come together
/// are shown together, a moment later. One thread.
class CallLog final : public QAbstractTableModel {
 public:
  static constexpr std::size_t kUsualMost = 200000;
  enum Column : int { kTime, kObject, kMember, kArguments, kOutcome, kColumns };

  explicit CallLog(Clock clock, std::size_t most = kUsualMost, QObject* parent = nullptr);

  /// The next line of the trace, without a line end.
  void Take(std::string_view line);
  /// For another trace.
  void Clear();
  /// Shows the lines with that text in any letter case, or those of them that are statements.
  void Narrow(const QString& text, bool statementsOnly);
  /// What comes while it stands still is shown afterwards.
  void SetPaused(bool paused);
  /// Shows what was put off.
  void Flush();
  /// Told after other lines, or other numbers of them, are shown.
  void OnChange(std::function<void()> handler) { onChange_ = std::move(handler); }

  /// Lines that are kept, whether shown or not.
  [[nodiscard]] std::size_t kept() const { return lines_.size(); }
  /// Lines that had to go.
  [[nodiscard]] std::uint64_t gone() const { return gone_; }
  /// The line in a row, as it stands in the trace.
  [[nodiscard]] const std::string& Text(int row) const { return At(row).text; }
  /// All lines that are kept: a trace that can be replayed, if none is gone.
  void WriteTo(std::ostream& out) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;

 private:
  struct Line {
    qorcred::Date at;
    std::string text;
  };

  /// Lines are counted from the first of the trace on.
  using Number = std::uint64_t;

  [[nodiscard]] const Line& At(int row) const;
  [[nodiscard]] bool IsWanted(const Line& line) const;
  [[nodiscard]] std::deque<Number> WantedFrom(Number first) const;
  void DropOldest();
  void ShowNew();

  Clock clock_;
  std::size_t most_;
  std::deque<Line> lines_;
  Number gone_ = 0;
  std::deque<Number> shown_;
  Number lookedAt_ = 0;  // lines before this one are in shown_, or are not wanted
  QString text_;
  bool statementsOnly_ = false;
  bool paused_ = false;
  QTimer later_;
  std::function<void()> onChange_;
};

}  // namespace qorhost
