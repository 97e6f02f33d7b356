// The rows of an import as a table in which cells are marked and mended.
#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <cstddef>
#include <functional>
#include <span>
#include <vector>

#include "host/desks/import_sheet.h"
#include "host/desktop/screens/wanted_text.h"

namespace qorhost {

/// Shows a sheet: the line, what the last check said of it, and the cells, which can be edited. The
/// sheet may be exchanged; whoever changes it otherwise calls ShowAgain().
class ImportTableModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;

  static constexpr int kState = 1;      ///< the column of what the last check said
  static constexpr int kFirstCell = 2;  ///< the column of a row's first cell

  /// Null shows nothing. The sheet and the columns must live until others are shown.
  void Show(ImportSheet* sheet, std::span<const ImportColumn> columns);
  void ShowAgain();
  /// The headings stand for other columns now.
  void ShowMeanings();
  /// Only rows with this text, in any letter case, and where asked for only refused ones.
  void Narrow(const QString& text, bool refusedOnly);
  /// Called after a person has mended a cell.
  void OnMend(std::function<void()> handler) { onMend_ = std::move(handler); }

  /// The sheet's row that is shown at a place.
  [[nodiscard]] std::size_t RowAt(int row) const {
    return shown_.at(static_cast<std::size_t>(row));
  }
  /// The next cell that is wrong behind a place, and from the beginning then: the row's line where
  /// no cell is. Invalid when nothing is refused.
  [[nodiscard]] QModelIndex NextWrong(const QModelIndex& behind) const;
  /// What the last check said of the row; "" for nothing.
  [[nodiscard]] QString ReasonAt(const QModelIndex& index) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  [[nodiscard]] QString TextAt(const QModelIndex& index) const;
  [[nodiscard]] bool IsWrong(const QModelIndex& index) const;
  [[nodiscard]] bool IsShown(std::size_t row) const;

  ImportSheet* sheet_ = nullptr;
  std::span<const ImportColumn> columns_;
  std::vector<std::size_t> shown_;
  WantedText text_;
  bool refusedOnly_ = false;
  std::function<void()> onMend_;
};

}  // namespace qorhost
