#include "host/tour/tour.h"

#include <fmt/format.h>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "host/desks/store_file.h"
#include "host/desks/store_overview.h"
#include "host/tour/tour_stage.h"

namespace qorhost {

namespace {

void ShowSteps(const TourStage& stage) {
  stage.guide.Chapter("The programming steps that now wait for the units");
  const std::vector<ProgramStep> steps = StepsOf(stage.session, std::nullopt);
  for (const ProgramStep& step : steps) {
    stage.guide.Fact(
        fmt::format("{:3}  unit {}", step.rid, step.unitKey),
        fmt::format("{} {}: {}", step.kind, step.subjectRid, SubjectOf(stage.session, step)));
  }
  stage.guide.Expect(!steps.empty(), "steps are queued");
  stage.guide.Result(fmt::format("{} steps queued", steps.size()));
}

}  // namespace

ExitStatus RunTour(Surroundings surroundings, Console& console) {
  std::unique_ptr<Store> store = DemoStoreInMemory(surroundings.clock);
  return RunTourOn(std::move(store), std::move(surroundings), console);
}

ExitStatus RunTourOn(std::unique_ptr<Store> store, Surroundings surroundings, Console& console) {
  TourGuide guide(console);
  surroundings.messageBox = [&guide](std::string_view text, qorcred::MessageStyle style,
                                     std::string_view title) {
    return guide.ShowMessage(text, style, title);
  };
  DeskSession session(std::move(store), std::move(surroundings));
  guide.Say(
      "qorhost tour: what an operator sees of the credential screen, the directory-code screen and "
      "their reports. It works on a copy of the demo building in memory; nothing is kept.");
  const TourStage stage{guide, session};
  TourCredentials(stage);
  TourDirCodes(stage);
  ShowSteps(stage);
  TourReports(stage);
  return guide.surprises() == 0 ? ExitStatus::kDone : ExitStatus::kFailure;
}

}  // namespace qorhost
