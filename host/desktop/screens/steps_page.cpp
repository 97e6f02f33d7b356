#include "host/desktop/screens/steps_page.h"

#include <screens/ui_steps_page.h>

#include <filesystem>
#include <utility>

#include "host/desks/shown_value.h"
#include "host/desks/step_desk.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/running/file_choice.h"
#include "host/desktop/running/messages.h"
#include "host/desktop/screens/empty_hint.h"
#include "host/desktop/screens/fitted_table.h"
#include "host/desktop/screens/typing_pause.h"

namespace qorhost {

namespace {

constexpr std::size_t kStep = 0;  // the column of its number

}  // namespace

StepsPage::StepsPage(Workplace& place) : ScreenPage(place), ui_(std::make_unique<Ui::StepsPage>()) {
  ui_->setupUi(this);
  SetUp(*ui_->steps, steps_);
  SqueezeColumns(*ui_->steps);
  EmptyHint::Show(*ui_->steps, HintOrNotFound(*ui_->findStep, tr("No step waits for the unit.")));
  NarrowBy(*ui_->findStep, [this](const QString& text) { steps_.Narrow(text); });
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
  const bool ran = Run(tr("Writing the steps"), [&] {
    const StepFile steps(session(), {place().unitKey(), FromQt(place().unitName())});
    steps.WriteTo(std::filesystem::path(FromQt(file)), Standing::kReplaced, place().file());
    count = steps.count();
    written_ = steps.numbers();
  });
  if (ran) {
    place().Tell(tr("Wrote %1 steps to %2. Mark them as sent when the unit has them.")
                     .arg(static_cast<qulonglong>(count))
                     .arg(file));
  }
}

std::vector<std::string> StepsPage::Chosen() const {
  std::vector<std::string> steps;
  for (const QModelIndex& row : ui_->steps->selectionModel()->selectedRows()) {
    steps.push_back(ShownText(steps_.Row(row.row()).at(kStep)));
  }
  return steps;
}

std::vector<std::string> StepsPage::Shown() const {
  std::vector<std::string> steps;
  for (const auto& row : steps_.shown().rows) {
    steps.push_back(ShownText(row.at(kStep)));
  }
  return steps;
}

/// Never a step that nobody here has seen or written: another seat may have queued it since, and
/// the unit would not be told of it.
void StepsPage::MarkSent() {
  StepChoice choice{Chosen()};
  QString question = tr("Mark the chosen steps as sent (%1)?");
  const bool areChosen = !choice.steps.empty();
  if (!areChosen) {
    choice.steps = written_.empty() ? Shown() : written_;
    question = written_.empty() ? tr("Mark the steps that are shown as sent (%1)?")
                                : tr("Mark the steps that were written to a file as sent (%1)?");
  }
  if (choice.steps.empty()) {
    place().Tell(tr("No step is shown."));
    return;
  }
  if (!AskToGoOn(this, question.arg(static_cast<qulonglong>(choice.steps.size())))) {
    return;
  }
  if (!areChosen) {
    choice.unknown = UnknownSteps::kLeftOut;
  }
  SentSteps sent;
  const bool ran = Run(tr("Marking the steps"), [&] {
    sent = qorhost::MarkSent(session(), place().unitKey(), choice, Trial::kNo);
  });
  if (ran) {
    written_ = areChosen ? written_ : std::vector<std::string>();
    place().Tell(tr("Marked as sent: %1.").arg(static_cast<qulonglong>(sent.steps)));
    (void)LookBehind(tr("The steps cannot be shown."), [this] { ShowSteps(); });
    place().TellChanged();
  }
}

}  // namespace qorhost
