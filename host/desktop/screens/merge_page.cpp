#include "host/desktop/screens/merge_page.h"

#include <screens/ui_merge_page.h>

#include <QShortcut>
#include <algorithm>
#include <array>
#include <string_view>

#include "frame/convert.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/running/file_choice.h"
#include "host/desktop/running/messages.h"
#include "host/desktop/screens/empty_hint.h"
#include "host/desktop/screens/fitted_table.h"
#include "host/desktop/screens/typing_pause.h"
#include "host/desktop/words/desk_words.h"
#include "host/files/input_file.h"

namespace qorhost {

namespace {

constexpr std::size_t kMostFaults = 4;  // that are shown

QString TextOf(const std::vector<LineFault>& faults) {
  QStringList lines;
  for (const LineFault& fault : faults) {
    if (static_cast<std::size_t>(lines.size()) == kMostFaults) {
      lines.append(
          MergePage::tr("and %1 more").arg(static_cast<qulonglong>(faults.size() - kMostFaults)));
      break;
    }
    lines.append(MergePage::tr("Line %1: %2")
                     .arg(static_cast<qulonglong>(fault.line))
                     .arg(Told(fault.reason)));
  }
  return lines.join(QLatin1Char('\n'));
}

/// A unit's file writes what is on or off in digits.
void ShowFlags(Table& table) {
  constexpr std::array<std::string_view, 5> kFlags{"do not disturb", "call forwarding", "active",
                                                   "start used", "end used"};
  for (auto& row : table.rows) {
    if (std::find(kFlags.begin(), kFlags.end(), qorcred::TextOrEmpty(row[0])) == kFlags.end()) {
      continue;
    }
    for (const std::size_t side : {1U, 2U}) {
      const std::string digit = qorcred::TextOrEmpty(row[side]);
      if (digit == "1" || digit == "0") {
        row[side] = digit == "1";
      }
    }
  }
}

}  // namespace

MergePage::MergePage(Workplace& place) : EntryPage(place), ui_(std::make_unique<Ui::MergePage>()) {
  ui_->setupUi(this);
  SetUp(*ui_->differences, differences_);
  SetUp(*ui_->sides, sides_);
  EmptyHint::Show(*ui_->differences, [this] { return HintForNone(); });
  EmptyHint::Show(*ui_->sides, [] { return tr("Choose a difference to see both sides."); });
  ConnectWidgets();
  ShowNothing();
}

MergePage::~MergePage() = default;

void MergePage::ConnectWidgets() {
  connect(ui_->chooseButton, &QPushButton::clicked, this, [this] { ChooseFile(); });
  connect(ui_->skipBadLines, &QCheckBox::clicked, this, [this] { CompareAgain(); });
  NarrowBy(*ui_->findDifference, [this](const QString& text) {
    differences_.Narrow(text);
    ShowSides();
  });
  connect(ui_->acceptAllButton, &QPushButton::clicked, this,
          [this] { differences_.AcceptShown(); });
  connect(ui_->acceptNoneButton, &QPushButton::clicked, this,
          [this] { differences_.AcceptNone(); });
  connect(ui_->mergeButton, &QPushButton::clicked, this, [this] { Merge(); });
  connect(ui_->differences->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this] { ShowSides(); });
  auto* toggle = new QShortcut(QKeySequence(Qt::Key_Space), ui_->differences);
  toggle->setContext(Qt::WidgetShortcut);
  connect(toggle, &QShortcut::activated, this, [this] { ToggleChosen(); });
  differences_.OnAccept([this] {
    SetEntered(!differences_.Accepted().empty());
    ShowState();
  });
}

QString MergePage::HintForNone() const {
  if (!ui_->findDifference->text().isEmpty()) {
    return HintOrNotFound(*ui_->findDifference, {})();
  }
  return merge_ == nullptr
             ? tr("Choose the file that was read from the unit: what it has otherwise than the "
                  "store is listed here.")
             : tr("There is nothing to accept.");
}

void MergePage::ToggleChosen() {
  const QModelIndexList chosen = ui_->differences->selectionModel()->selectedRows();
  const bool accept = !chosen.isEmpty() && !differences_.IsAccepted(chosen.front().row());
  for (const QModelIndex& row : chosen) {
    differences_.Accept(row.row(), accept);
  }
}

void MergePage::ChooseFile() {
  if (!MayLeaveEntry()) {
    return;
  }
  const QString file = AskForFile(this, tr("Choose the unit’s file"));
  if (!file.isEmpty()) {
    Open(std::filesystem::path(FromQt(file)));
  }
}

void MergePage::Open(const std::filesystem::path& file) {
  (void)Run(tr("The unit’s file cannot be read."), [&] {
    InputFile in(file, "unit file");
    UnitReading reading = ReadUnitFile(in);
    ShowNothing();
    reading_ = std::move(reading);
    if (!reading_.isUnitFile) {
      throw RefusedError(
          FromQt(tr("%1 is no unit file.").arg(QString::fromStdString(file.string()))));
    }
    ShowFile(*ui_->fileName, file);
    ui_->skipBadLines->setEnabled(true);
    Compare();
  });
}

void MergePage::Refresh() {
  CompareAgain();
}

void MergePage::CompareAgain() {
  if (ui_->skipBadLines->isEnabled()) {
    (void)Run(tr("The unit’s file cannot be compared with the store."), [this] { Compare(); });
  }
}

/// A file with bad lines that may not be left out is not merged: they are shown.
void MergePage::Compare() {
  merge_.reset();
  const bool skips = ui_->skipBadLines->isChecked();
  if (reading_.faults.empty() || skips) {
    merge_ = std::make_unique<UnitMerge>(session(), place().unitKey(), reading_,
                                         skips ? BadLines::kLeftOut : BadLines::kRefused);
    (void)merge_->Look();
  }
  ShowDifferences();
}

void MergePage::ShowNothing() {
  differences_.Show(nullptr, {});
  FitColumns(*ui_->differences);
  merge_.reset();
  reading_ = {};
  SetEntered(false);
  ui_->fileName->setText(tr("No file is chosen."));
  ui_->skipBadLines->setChecked(false);
  ui_->skipBadLines->setEnabled(false);
  ui_->badLines->hide();
  ShowSides();
  ShowState();
}

void MergePage::ShowDifferences() {
  differences_.Show(merge_.get(), reading_.file.codes);
  FitColumns(*ui_->differences);
  SetEntered(!differences_.Accepted().empty());
  ShowBadLines();
  ShowSides();
  ShowState();
}

void MergePage::ShowBadLines() {
  std::vector<LineFault> faults = reading_.faults;
  if (merge_ != nullptr) {
    faults.insert(faults.end(), merge_->plan().faults.begin(), merge_->plan().faults.end());
  }
  QString told = TextOf(faults);
  if (!faults.empty() && !ui_->skipBadLines->isChecked()) {
    told += QLatin1Char('\n') +
            tr("Nothing is merged with bad lines: mend the file, or leave them out.");
  } else if (faults.empty() && !reading_.isCounted) {
    told =
        tr("The file has no end line, as files of an older version: whether it is whole cannot "
           "be told.");
  }
  ui_->badLines->setText(told);
  ui_->badLines->setVisible(!told.isEmpty());
}

void MergePage::ShowSides() {
  const QModelIndex chosen = ui_->differences->currentIndex();
  const bool any = merge_ != nullptr && chosen.isValid();
  Table table;
  if (any) {
    table = StepTable(merge_->plan().steps[differences_.StepAt(chosen.row())], reading_.file.codes,
                      merge_->stored());
    ShowFlags(table);
    table.columns[0].title = FromQt(tr("Field"));
    table.columns[1].title = FromQt(tr("Store"));
    table.columns[2].title = FromQt(tr("Unit"));
  }
  sides_.Show(table);
  FitColumns(*ui_->sides);
}

void MergePage::ShowState() {
  const bool any = differences_.rowCount() > 0;
  const auto accepted = static_cast<qulonglong>(differences_.Accepted().size());
  ui_->acceptAllButton->setEnabled(any);
  ui_->acceptNoneButton->setEnabled(accepted > 0);
  ui_->mergeButton->setEnabled(accepted > 0);
  if (merge_ == nullptr) {
    ui_->summary->clear();
    return;
  }
  const MergePlan& plan = merge_->plan();
  ui_->summary->setText(plan.steps.empty()
                            ? tr("The unit and the store have the same %1 directory codes.")
                                  .arg(static_cast<qulonglong>(plan.unchanged))
                            : tr("Differences: %1, accepted: %2. The same on both sides: %3.")
                                  .arg(static_cast<qulonglong>(plan.steps.size()))
                                  .arg(accepted)
                                  .arg(static_cast<qulonglong>(plan.unchanged)));
}

bool MergePage::MayDelete(const std::vector<std::size_t>& steps) {
  MergeReport::Losses losses;
  losses.stored = merge_->stored().size();
  for (const std::size_t at : steps) {
    const MergeStep& step = merge_->plan().steps[at];
    if (step.action == MergeAction::kDelete) {
      const StoredCode& lost = merge_->stored()[step.stored];
      losses.codes.emplace(lost.rid, lost.number);
    }
  }
  return losses.codes.empty() ||
         AskToGoOn(this, tr("Of the unit’s %1 directory codes will be deleted: %2. Go on?")
                             .arg(static_cast<qulonglong>(losses.stored))
                             .arg(static_cast<qulonglong>(losses.codes.size())));
}

void MergePage::Merge() {
  const std::vector<std::size_t> steps = differences_.Accepted();
  if (steps.empty() || !MayDelete(steps)) {
    return;
  }
  MergeReport report;
  place().Tell({});
  const bool ran = Run(tr("The differences cannot be made."),
                       [&] { report = merge_->ApplyAccepted(steps, place().runner().progress()); });
  if (!ran) {
    return;
  }
  if (Tell(report, "unit")) {
    differences_.AcceptNone();
    TellDone(report);
    place().TellChanged();
  }
  CompareAgain();
}

void MergePage::TellDone(const MergeReport& report) {
  place().Tell(tr("Added: %1. Changed: %2. Deleted: %3. Tenants without a code now: %4. Steps "
                  "withdrawn: %5.")
                   .arg(static_cast<qulonglong>(report.inserted))
                   .arg(static_cast<qulonglong>(report.updated))
                   .arg(static_cast<qulonglong>(report.deleted))
                   .arg(static_cast<qulonglong>(report.aftermath.tenantsReleased))
                   .arg(static_cast<qulonglong>(report.aftermath.stepsWithdrawn)));
}

}  // namespace qorhost
