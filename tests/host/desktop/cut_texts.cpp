#include "tests/host/desktop/cut_texts.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QTabBar>
#include <QTableView>
#include <QToolButton>
#include <algorithm>

namespace qorhost::test {
namespace {

void ExpectFits(const QSize& needed, const QSize& room, const QWidget& in, const QString& text,
                const std::string& where) {
  EXPECT_TRUE(needed.width() <= room.width() && needed.height() <= room.height())
      << where << ", " << in.objectName().toStdString() << ": " << text.toStdString() << " needs "
      << needed.width() << " x " << needed.height() << " and has " << room.width() << " x "
      << room.height();
}

QSize SizeOf(const QString& text, const QWidget& in) {
  return in.fontMetrics().size(Qt::TextShowMnemonic, text);
}

void ExpectFits(const QLabel& label, const std::string& where) {
  const QRect room = label.contentsRect();
  if (!label.wordWrap()) {
    ExpectFits(label.sizeHint(), label.size(), label, label.text(), where);
    return;
  }
  EXPECT_LE(label.heightForWidth(label.width()), label.height())
      << where << ", " << label.objectName().toStdString() << ": " << label.text().toStdString();
  if (label.textFormat() == Qt::PlainText) {  // its longest word
    const QRect words =
        label.fontMetrics().boundingRect(0, 0, room.width(), 0, Qt::TextWordWrap, label.text());
    EXPECT_LE(words.width(), room.width())
        << where << ", " << label.objectName().toStdString() << ": " << label.text().toStdString();
  }
}

/// What the style leaves for the text of a button of its kind.
QSize RoomOf(const QAbstractButton& button) {
  QStyleOptionButton option;
  option.initFrom(&button);
  option.text = button.text();
  const bool isBox = qobject_cast<const QCheckBox*>(&button) != nullptr;
  const bool isOption = qobject_cast<const QRadioButton*>(&button) != nullptr;
  const bool isPush = qobject_cast<const QPushButton*>(&button) != nullptr;
  if (!isBox && !isOption && !isPush) {
    return button.contentsRect().size();
  }
  const QStyle::SubElement contents = isBox      ? QStyle::SE_CheckBoxContents
                                      : isOption ? QStyle::SE_RadioButtonContents
                                                 : QStyle::SE_PushButtonContents;
  return button.style()->subElementRect(contents, &option, &button).size();
}

void ExpectFits(const QAbstractButton& button, const std::string& where) {
  const auto* tool = qobject_cast<const QToolButton*>(&button);
  if (button.text().isEmpty() ||
      (tool != nullptr && tool->toolButtonStyle() == Qt::ToolButtonIconOnly)) {
    return;
  }
  ExpectFits(SizeOf(button.text(), button), RoomOf(button), button, button.text(), where);
}

void ExpectFits(const QComboBox& combo, const std::string& where) {
  QStyleOptionComboBox option;
  option.initFrom(&combo);
  option.editable = combo.isEditable();
  option.frame = combo.hasFrame();
  const QRect room = combo.style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                   QStyle::SC_ComboBoxEditField, &combo);
  const QString shown = combo.currentIndex() < 0 ? combo.placeholderText() : combo.currentText();
  ExpectFits({combo.fontMetrics().horizontalAdvance(shown), combo.fontMetrics().height()},
             room.size(), combo, shown, where);
}

void ExpectFits(const QGroupBox& group, const std::string& where) {
  const int title = SizeOf(group.title(), group).width();
  EXPECT_LE(title, group.contentsRect().width())
      << where << ", " << group.objectName().toStdString() << ": " << group.title().toStdString();
}

void ExpectFits(const QTabBar& tabs, const std::string& where) {
  for (int tab = 0; tab < tabs.count(); ++tab) {
    ExpectFits(SizeOf(tabs.tabText(tab), tabs), tabs.tabRect(tab).size(), tabs, tabs.tabText(tab),
               where);
    EXPECT_TRUE(tabs.rect().contains(tabs.tabRect(tab)))
        << where << ": " << tabs.tabText(tab).toStdString();
  }
}

void ExpectFits(const QHeaderView& titles, const std::string& where) {
  if (titles.orientation() != Qt::Horizontal || titles.model() == nullptr) {
    return;
  }
  for (int column = 0; column < titles.count(); ++column) {
    if (!titles.isSectionHidden(column)) {
      EXPECT_GE(titles.sectionSize(column), titles.sectionSizeHint(column))
          << where << ", " << titles.parentWidget()->objectName().toStdString() << ": "
          << titles.model()->headerData(column, Qt::Horizontal).toString().toStdString();
    }
  }
}

void ExpectRowsFit(const QTableView& table, const std::string& where) {
  EXPECT_GE(table.verticalHeader()->defaultSectionSize(), table.fontMetrics().height())
      << where << ", " << table.objectName().toStdString();
}

}  // namespace

void ExpectNothingCut(const QWidget& on, const std::string& where) {
  for (const QWidget* widget : on.findChildren<QWidget*>()) {
    if (!widget->isVisible()) {
      continue;
    }
    if (const auto* label = qobject_cast<const QLabel*>(widget)) {
      ExpectFits(*label, where);
    } else if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
      ExpectFits(*button, where);
    } else if (const auto* combo = qobject_cast<const QComboBox*>(widget)) {
      ExpectFits(*combo, where);
    } else if (const auto* group = qobject_cast<const QGroupBox*>(widget)) {
      ExpectFits(*group, where);
    } else if (const auto* tabs = qobject_cast<const QTabBar*>(widget)) {
      ExpectFits(*tabs, where);
    } else if (const auto* titles = qobject_cast<const QHeaderView*>(widget)) {
      ExpectFits(*titles, where);
    } else if (const auto* table = qobject_cast<const QTableView*>(widget)) {
      ExpectRowsFit(*table, where);
    }
  }
}

}  // namespace qorhost::test
