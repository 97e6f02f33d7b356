// Tables whose columns are as wide as they need, and narrower where there is no room.
#include "host/desktop/screens/fitted_table.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QScrollBar>
#include <QToolTip>

#include "host/desktop/screens/list_table_model.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

const std::string kLong(200, 'x');

class FittedTables : public testing::Test {
 protected:
  enum Column : int { kNumbers, kTexts, kDays };

  FittedTables() {
    List list;
    list.fields = {{"Number", "number", FieldKind::kNumber}, {"Text", "text"}, {"Day", "day"}};
    list.rows = {{std::int32_t{1}, kLong, std::string("2026-01-31")}};
    model_.Show(std::move(list));
    qorhost::SetUp(view_, model_);  // the test has one, too
    view_.resize(500, 200);
    view_.show();
  }

  [[nodiscard]] bool Scrolls() const { return view_.horizontalScrollBar()->maximum() > 0; }
  [[nodiscard]] int TitleOf(int column) const {
    return view_.horizontalHeader()->sectionSizeHint(column);
  }
  QString TipAt(int column) {
    const QPoint place = view_.visualRect(model_.index(0, column)).center();
    QHelpEvent rests(QEvent::ToolTip, place, view_.viewport()->mapToGlobal(place));
    QApplication::sendEvent(view_.viewport(), &rests);
    return QToolTip::isVisible() ? QToolTip::text() : QString();
  }

  ListTableModel model_;
  QTableView view_;
};

TEST_F(FittedTables, AreAsWideAsTheirRowsNeed) {
  Settle();
  EXPECT_TRUE(Scrolls());
  EXPECT_GT(view_.columnWidth(kTexts), view_.width());
}

TEST_F(FittedTables, GiveTheWidestColumnWhatIsLeftWhenSqueezed) {
  SqueezeColumns(view_);
  Settle();
  EXPECT_FALSE(Scrolls());
  const int day = view_.fontMetrics().horizontalAdvance(QStringLiteral("2026-01-31"));
  EXPECT_GE(view_.columnWidth(kNumbers), TitleOf(kNumbers));
  EXPECT_GE(view_.columnWidth(kDays), day);
  EXPECT_GT(view_.columnWidth(kTexts), view_.columnWidth(kDays));
}

TEST_F(FittedTables, CutShortTextsBeforeMoments) {
  const std::string moment("2026-01-31 14:05:09");
  List list;
  list.fields = {{"Table", "table"}, {"Before", "before"}, {"After", "after"}};
  list.rows = {{std::string("LASTMODIFIEDD"), moment, moment},
               {std::string("DISPLAYNAMES"), qorcred::Null{}, std::string("no")}};
  model_.Show(std::move(list));
  SqueezeColumns(view_);
  FitColumns(view_);
  Settle();
  const int needed = view_.fontMetrics().horizontalAdvance(QString::fromStdString(moment));
  view_.resize(2 * needed + needed * 3 / 4, 200);
  Settle();
  EXPECT_FALSE(Scrolls());
  EXPECT_GE(view_.columnWidth(1), needed);
  EXPECT_GE(view_.columnWidth(2), needed);
  EXPECT_LT(view_.columnWidth(0),
            view_.fontMetrics().horizontalAdvance(QStringLiteral("LASTMODIFIEDD")));
}

TEST_F(FittedTables, FollowTheWindowWhenSqueezed) {
  SqueezeColumns(view_);
  Settle();
  const int before = view_.columnWidth(kTexts);
  view_.resize(700, 200);
  Settle();
  EXPECT_EQ(view_.columnWidth(kTexts), before + 200);
  view_.resize(400, 200);
  Settle();
  EXPECT_EQ(view_.columnWidth(kTexts), before - 100);
  EXPECT_FALSE(Scrolls());
}

TEST_F(FittedTables, LeaveWhatAPersonHasMadeWide) {
  SqueezeColumns(view_);
  Settle();
  view_.setColumnWidth(kTexts, 450);
  view_.resize(480, 200);
  Settle();
  EXPECT_EQ(view_.columnWidth(kTexts), 450);
}

TEST_F(FittedTables, KeepTheirTitlesWhereThereIsNoRoom) {
  SqueezeColumns(view_);
  view_.resize(60, 200);
  Settle();
  EXPECT_TRUE(Scrolls());
  for (const Column column : {kNumbers, kTexts, kDays}) {
    EXPECT_GE(view_.columnWidth(column), TitleOf(column)) << column;
  }
}

TEST_F(FittedTables, TellWhatIsCutAndNothingElse) {
  SqueezeColumns(view_);
  Settle();
  EXPECT_EQ(TipAt(kNumbers).toStdString(), "");
  EXPECT_EQ(TipAt(kTexts).toStdString(), kLong);
}

}  // namespace
}  // namespace qorhost::test
