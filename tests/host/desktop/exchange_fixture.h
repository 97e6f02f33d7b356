// Files that a person chooses on the screens for imports and merges.
#pragma once

#include <QTableView>
#include <fstream>
#include <string>

#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {

class ExchangeTest : public DesktopTest {
 protected:
  /// Writes a file and chooses it in the dialog of the screen in front.
  void ChooseFile(const std::string& name, const std::string& bytes) {
    std::ofstream(File(name), std::ios::binary) << bytes;
    answers_->Type(QString::fromStdString(File(name).string()));
    Click("chooseButton");
  }
  /// Shortcuts work in an active window alone.
  void Activate() {
    window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
  }
  [[nodiscard]] QTableView& Grid(const char* name) { return Find<QTableView>(name); }
  [[nodiscard]] int RowsOf(const char* table) { return Grid(table).model()->rowCount(); }
  [[nodiscard]] std::string CellOf(const char* table, int row, int column) {
    return Grid(table).model()->index(row, column).data().toString().toStdString();
  }
  void ClickCell(const char* table, int row, int column,
                 Qt::KeyboardModifiers keys = Qt::NoModifier) {
    QTableView& view = Grid(table);
    const QModelIndex index = view.model()->index(row, column);
    view.scrollTo(index);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, keys, view.visualRect(index).center());
    Settle();
  }
  [[nodiscard]] std::string LabelText(const char* name) {
    return Find<QLabel>(name).text().toStdString();
  }
  [[nodiscard]] std::string CountOf(const std::string& from) {
    return Cell("SELECT Count(*) FROM " + from);
  }
};

}  // namespace qorhost::test
