#include "host/desktop/shell/bringing_in.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <optional>

#include "host/desks/moving_in/moving_in.h"
#include "host/desks/store_file.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/running/messages.h"
#include "host/desktop/shell/moving_dialog.h"
#include "host/desktop/words/desk_words.h"

namespace qorhost {

namespace {

struct Moving {
  Q_DECLARE_TR_FUNCTIONS(Moving)
};

std::optional<MovingPlan> Planned(QWidget& window, OperationRunner& runner,
                                  const MovingOrder& order) {
  try {
    std::optional<MovingPlan> plan;
    runner.Run(Moving::tr("Reading the building"), [&] { plan.emplace(PlanMoving(order)); });
    return plan;
  } catch (const std::exception& failure) {
    TellFailure(&window, Moving::tr("%1 cannot be brought in.").arg(ToQt(order.file.string())),
                Told(failure.what()));
  }
  return std::nullopt;
}

std::filesystem::path Made(QWidget& window, OperationRunner& runner,
                           const WorkSurroundings& surroundings, const MovingPlan& plan,
                           const std::string& from) {
  // Nothing that stands already is replaced: the program says so itself.
  const QString chosen = QFileDialog::getSaveFileName(
      &window, Moving::tr("Make the new store"), QStringLiteral("building.db"),
      Moving::tr("Stores (*.db)"), nullptr, QFileDialog::DontConfirmOverwrite);
  if (chosen.isEmpty()) {
    return {};
  }
  const std::filesystem::path file(FromQt(chosen));
  try {
    const bool ran = runner.Run(Moving::tr("Bringing the building in"), [&] {
      PutStore(file,
               {false, surroundings.clock, surroundings.author, Trial::kNo,
                [&](SqlSession& session) { BringIn(session, plan, from, runner.progress()); }},
               Standing::kStays, runner.patience());
    });
    return ran ? file : std::filesystem::path();
  } catch (const std::exception& failure) {
    if (!runner.cancelled()) {
      TellFailure(&window, Moving::tr("No store can be made at %1.").arg(chosen),
                  Told(failure.what()));
    }
  }
  return {};
}

}  // namespace

std::filesystem::path BringBuildingIn(QWidget& window, OperationRunner& runner,
                                      const WorkSurroundings& surroundings) {
  const QString chosen =
      QFileDialog::getOpenFileName(&window, Moving::tr("Bring an existing building in"), {},
                                   Moving::tr("Desktop databases (*.mdb *.accdb);;All files (*)"));
  if (chosen.isEmpty()) {
    return {};
  }
  MovingOrder order;
  order.file = FromQt(chosen);
  order.reading.reader = surroundings.desktopReader;
  auto plan = Planned(window, runner, order);
  if (!plan) {
    return {};
  }
  const std::string name = order.file.filename().string();
  MovingDialog dialog(&window, ToQt(name), std::move(*plan), [&](std::optional<std::int32_t> unit) {
    order.unit = unit;
    return Planned(window, runner, order);
  });
  if (dialog.exec() != QDialog::Accepted) {
    return {};
  }
  return Made(window, runner, surroundings, dialog.plan(), name);
}

}  // namespace qorhost
