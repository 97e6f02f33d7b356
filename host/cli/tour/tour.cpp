#include "host/cli/tour/tour.h"

#include <fmt/format.h>

#include <memory>
#include <optional>
#include <string>

#include "frame/convert.h"
#include "frame/text.h"
#include "host/cli/tour/tour_stage.h"
#include "host/store/demo.h"
#include "host/store/engines/opening.h"

namespace qorhost {

namespace {

std::unique_ptr<Store> DemoStore(const Clock& clock) {
  std::unique_ptr<Store> store = OpenMemoryStore();
  CreateDemoData(*store->StartSession(clock));
  return store;
}

/// The tenant, or the directory code as it is now, or as the unit knows it.
std::string SubjectOf(DeskSession& session, const ProgramStep& step) {
  if (step.kind == step::kProgramTenant) {
    return std::string(qorcred::Trim(qorcred::TextOrEmpty(session.sql().Scalar(fmt::format(
        "SELECT FirstName & ' ' & LastName FROM Tenants WHERE TenantID={}", step.subjectRid)))));
  }
  const std::string code = qorcred::TextOrEmpty(session.sql().Scalar(
      fmt::format("SELECT DIRECTORYCODE FROM DIRECTORYCODE WHERE RID={}", step.subjectRid)));
  return step.code.empty() ? code : fmt::format("{} to {}", step.code, code);
}

void ShowSteps(const TourStage& stage) {
  stage.guide.Chapter("The programming steps that now wait for the units");
  const std::vector<ProgramStep> steps = stage.session.sql().steps().List(std::nullopt);
  for (const ProgramStep& step : steps) {
    stage.guide.Fact(
        fmt::format("{:3}  unit {}", step.rid, step.unitKey),
        fmt::format("{} {}: {}", step.kind, step.subjectRid, SubjectOf(stage.session, step)));
  }
  stage.guide.Expect(!steps.empty(), "steps are queued");
  stage.guide.Result(fmt::format("{} steps queued", steps.size()));
}

}  // namespace

ExitStatus RunTour(const GlobalOptions& global, Console& console) {
  TourGuide guide(console);
  DeskSession session(DemoStore(console.environment.clock),
                      SurroundingsOf(global, console,
                                     [&guide](std::string_view text, qorcred::MessageStyle style,
                                              std::string_view title) {
                                       return guide.ShowMessage(text, style, title);
                                     }));
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
