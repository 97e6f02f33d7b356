#include "host/desktop/screens/overview_page.h"

#include <screens/ui_overview_page.h>

#include <QDate>
#include <QGroupBox>
#include <QHeaderView>
#include <QProgressBar>
#include <algorithm>
#include <map>
#include <optional>

#include "frame/date.h"
#include "host/desks/attention_list.h"
#include "host/desks/expiring.h"
#include "host/desks/store_overview.h"
#include "host/desks/unit_settings.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/screens/fitted_table.h"
#include "host/desktop/screens/table_finder.h"
#include "host/desktop/words/desk_words.h"

namespace qorhost {

namespace {

const QColor kTooMany(0xB4, 0x2B, 0x22);  // under white letters, in light and dark

QString DayText(qorcred::Date date) {
  return ToQtDay(date).toString(Qt::ISODate);
}

/// A title in which an ampersand stands for itself.
QString WithoutMnemonic(QString text) {
  return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

QString UnitText(const UnitName& unit) {
  return unit.name.empty() ? OverviewPage::tr("Unit %1").arg(unit.key)
                           : OverviewPage::tr("Unit %1, %2").arg(unit.key).arg(ToQt(unit.name));
}

QString StepsText(qlonglong waiting) {
  if (waiting == 0) {
    return OverviewPage::tr("no step waits for the unit");
  }
  return waiting == 1 ? OverviewPage::tr("one step waits for the unit")
                      : OverviewPage::tr("%1 steps wait for the unit").arg(waiting);
}

/// Codes in use as a bar, where the unit's capacity is known.
QWidget* BarOf(qlonglong inUse, std::optional<std::int32_t> capacity, QWidget* parent) {
  if (!capacity || *capacity <= 0) {
    return new QLabel(OverviewPage::tr("%1 codes in use; the capacity is unknown").arg(inUse),
                      parent);
  }
  auto* bar = new QProgressBar(parent);
  bar->setRange(0, *capacity);
  bar->setValue(static_cast<int>(std::min<qlonglong>(inUse, *capacity)));
  bar->setFormat(OverviewPage::tr("%1 of %2 codes in use").arg(inUse).arg(*capacity));
  if (inUse > *capacity) {
    bar->setFormat(OverviewPage::tr("%1: %2 too many")
                       .arg(bar->format())
                       .arg(inUse - static_cast<qlonglong>(*capacity)));
    QPalette warning = bar->palette();
    warning.setColor(QPalette::Highlight, kTooMany);
    bar->setPalette(warning);
  }
  bar->setAccessibleName(bar->format());
  return bar;
}

}  // namespace

OverviewPage::OverviewPage(Workplace& place)
    : ScreenPage(place), ui_(std::make_unique<Ui::OverviewPage>()) {
  ui_->setupUi(this);
  ui_->expiring->setColumnCount(4);
  ui_->expiring->setHorizontalHeaderLabels({tr("Ends"), tr("What"), tr("Name"), tr("Unit")});
  ui_->expiring->verticalHeader()->hide();
  ui_->expiring->horizontalHeader()->setStretchLastSection(true);
  KeepFit(*ui_->expiring);
  TypeAhead::Watch(*ui_->expiring);
  ShowStored();
}

OverviewPage::~OverviewPage() = default;

void OverviewPage::Refresh() {
  (void)Look(tr("The overview cannot be shown."), [this] { ShowStored(); });
}

void OverviewPage::ShowStored() {
  ShowExpiring();
  ShowUnits();
}

void OverviewPage::ShowUnits() {
  while (QLayoutItem* item = ui_->unitsLayout->takeAt(0)) {
    delete item->widget();
    delete item;
  }
  const std::vector<UnitName> units = session().Units();
  for (const UnitName& unit : units) {
    const auto status = UnitStatusOf(session(), unit.key);
    auto* box = new QGroupBox(WithoutMnemonic(UnitText(unit)), ui_->unitsContent);
    auto* column = new QVBoxLayout(box);
    column->addWidget(BarOf(status.CodesInUse(), CapacityOf(session(), unit.key), box));
    column->addWidget(new QLabel(tr("%1 credentials, %2 directory codes; %3")
                                     .arg(static_cast<qlonglong>(status.credentials))
                                     .arg(static_cast<qlonglong>(status.directoryCodes))
                                     .arg(StepsText(status.pendingSteps)),
                                 box));
    for (const std::string& missing : MissingSettings(session(), {unit})) {
      auto* warning = new QLabel(Told(missing), box);
      warning->setTextFormat(Qt::PlainText);
      warning->setWordWrap(true);
      column->addWidget(warning);
    }
    ui_->unitsLayout->addWidget(box);
  }
  if (units.empty()) {
    auto* none =
        new QLabel(tr("The store has no units yet. The screen “Units” makes the first one."),
                   ui_->unitsContent);
    none->setWordWrap(true);
    ui_->unitsLayout->addWidget(none);
  } else if (ui_->expiring->rowCount() == 0) {
    ui_->unitsLayout->addWidget(new QLabel(tr("Nothing ends within 30 days."), ui_->unitsContent));
  }
  ui_->unitsLayout->addStretch();
}

void OverviewPage::ShowExpiring() {
  std::map<std::int32_t, QString> names;
  for (const UnitName& unit : session().Units()) {
    names[unit.key] = UnitText(unit);
  }
  const std::vector<ExpiringPeriod> found = ExpiringWithin(session(), kUsualSoon);
  ui_->expiring->setRowCount(static_cast<int>(found.size()));
  int row = 0;
  for (const ExpiringPeriod& period : found) {
    const std::array<QString, 4> cells{DayText(period.end),
                                       period.isTenant ? tr("Tenant") : tr("Directory code"),
                                       ToQt(period.name), names[period.unitKey]};
    for (int column = 0; column < static_cast<int>(cells.size()); ++column) {
      ui_->expiring->setItem(row, column,
                             new QTableWidgetItem(cells.at(static_cast<std::size_t>(column))));
    }
    ++row;
  }
  FitColumns(*ui_->expiring);
  ui_->expiring->setVisible(!found.empty());
  ui_->expiringLabel->setVisible(!found.empty());
}

}  // namespace qorhost
