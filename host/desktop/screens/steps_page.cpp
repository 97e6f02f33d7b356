#include "host/desktop/screens/steps_page.h"

#include <screens/ui_steps_page.h>

#include <filesystem>

#include "host/desks/shown_value.h"
#include "host/desks/step_desk.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/running/file_choice.h"
#include "host/desktop/running/messages.h"
#include "host/desktop/screens/empty_hint.h"
#include "host/desktop/screens/fitted_table.h"

namespace qorhost {

namespace {

constexpr std::size_t kStep = 0;  // the column of its number

}  // namespace

StepsPage::StepsPage(Workplace& place) : ScreenPage(place), ui_(std::make_unique<Ui::StepsPage>()) {
  ui_->setupUi(this);
  SetUp(*ui_->steps, steps_);
  SqueezeColumns(*ui_->steps);
  EmptyHint::Show(*ui_->steps, HintOrNotFound(*ui_->findStep, tr("No step waits for the unit.")));
  connect(ui_->findStep, &QLineEdit::textChanged, this,
          [this](const QString& text) { steps_.Narrow(text); });
  connect(ui_->exportButton, &QPushButton::clicked, this, [this] { Export(); });
  connect(ui_->markButton, &QPushButton::clicked, this, [this] { MarkSent(); });
  ShowSteps();
}

StepsPage::~StepsPage() = default;

void StepsPage::Refresh() {
  (void)Look(tr("The steps cannot be shown."), [this] { ShowSteps(); });
}

void StepsPage::ShowSteps() {
  List waiting = WaitingStepList(session(), place().unitKey());
  const bool any = !waiting.rows.empty();
  steps_.Show(std::move(waiting));
  FitColumns(*ui_->steps);
  ui_->exportButton->setEnabled(any);
  ui_->markButton->setEnabled(any);
}

void StepsPage::Export() {
  // The dialog asks before it names a file that exists.
  const QString file =
      AskWhereTo(this, tr("Write the steps to a file"), QStringLiteral("steps.txt"));
  if (file.isEmpty()) {
    return;
  }
  std::size_t count = 0;
  place().Tell({});
  const bool ran = Run(tr("The steps cannot be written."), [&] {
    const StepFile steps(session(), {place().unitKey(), FromQt(place().unitName())});
    steps.WriteTo(std::filesystem::path(FromQt(file)), Standing::kReplaced, place().file());
    count = steps.count();
  });
  if (ran) {
    place().Tell(tr("Wrote %1 steps to %2. Mark them as sent when the unit has them.")
                     .arg(static_cast<qulonglong>(count))
                     .arg(file));
  }
}

void StepsPage::MarkSent() {
  StepChoice choice;
  for (const QModelIndex& row : ui_->steps->selectionModel()->selectedRows()) {
    choice.steps.push_back(ShownText(steps_.Row(row.row()).at(kStep)));
  }
  const QString question =
      choice.steps.empty()
          ? tr("Mark all steps that wait for the unit as sent?")
          : tr("Mark the chosen steps as sent (%1)?").arg(static_cast<int>(choice.steps.size()));
  if (!AskToGoOn(this, question)) {
    return;
  }
  SentSteps sent;
  place().Tell({});
  const bool ran = Run(tr("The steps cannot be marked."), [&] {
    sent = qorhost::MarkSent(session(), place().unitKey(), choice, Trial::kNo);
  });
  if (ran) {
    Refresh();
    place().Tell(tr("Marked as sent: %1.").arg(static_cast<qulonglong>(sent.steps)));
    place().TellChanged();
  }
}

}  // namespace qorhost
