#include "host/desktop/shell/bringing_in.h"

#include <QCoreApplication>
#include <optional>
#include <utility>
#include <vector>

#include "host/desks/moving_in/moving_in.h"
#include "host/desks/store_file.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/running/file_choice.h"
#include "host/desktop/running/messages.h"
#include "host/desktop/shell/moving_dialog.h"
#include "host/desktop/shell/server_choice.h"
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

/// Empty for nobody who names one.
std::filesystem::path AskedPlace(QWidget& window, MovingTarget target, const QString& lastServer) {
  const QString place =
      target == MovingTarget::kFile
          ? AskForNewStore(&window, Moving::tr("Make the new store"))
          : AskForServer(window, lastServer, Moving::tr("Make the new store on a server"));
  return FromQt(place);
}

/// Whether the store was made; what went wrong is told.
bool Make(QWidget& window, OperationRunner& runner, const WorkSurroundings& surroundings,
          const MovingPlan& plan, const std::string& from, const std::filesystem::path& place) {
  try {
    return runner.Run(Moving::tr("Bringing the building in"), [&] {
      PutStore(place,
               {false, surroundings.clock, surroundings.author, Trial::kNo,
                [&](SqlSession& session) { BringIn(session, plan, from, runner.progress()); }},
               Standing::kStays, runner.patience());
    });
  } catch (const std::exception& failure) {
    if (!runner.cancelled()) {
      TellFailure(&window, Moving::tr("No store can be made at %1.").arg(ToQt(place.string())),
                  Told(failure.what()));
    }
  }
  return false;
}

}  // namespace

std::filesystem::path BringBuildingIn(QWidget& window, OperationRunner& runner,
                                      const WorkSurroundings& surroundings,
                                      const std::filesystem::path& open,
                                      const QString& lastServer) {
  const QString chosen = AskForFile(&window, Moving::tr("Bring an existing building in"),
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
  MovingDialog dialog(
      &window, order, std::move(*plan),
      [&](const MovingOrder& asked) { return Planned(window, runner, asked); },
      open.empty() ? std::vector<std::filesystem::path>() : FilesOfStore(open));
  // It comes back with what was chosen in it as long as there is no store.
  while (dialog.exec() == QDialog::Accepted) {
    std::filesystem::path place = AskedPlace(window, dialog.target(), lastServer);
    if (!place.empty() && Make(window, runner, surroundings, dialog.plan(), name, place)) {
      return place;
    }
  }
  return {};
}

}  // namespace qorhost
