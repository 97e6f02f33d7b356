// The scenarios' traces: a trace is a case of its own, for the controllers run again from it do the
// same.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/scenarios/scenarios.h"
#include "tests/trace/trace_replay.h"
#include "trace/traced_call.h"
#include "trace/traced_host.h"
#include "trace/tracer.h"

namespace qortest {
namespace {

using qorcred::InvokeKind;
using qorcred::Member;
using qorcred::Value;
using qorcred::trace::Tracer;

/// A controller by name whose operations a trace tells.
class TracedByName final : public qorcred::Object {
 public:
  TracedByName(const Scenario& scenario, qorcred::Host& host, std::shared_ptr<Tracer> tracer)
      : tracer_(std::move(tracer)), name_(tracer_->NewName(scenario.className)) {
    tracer_->Begin("new " + name_);
    controller_ = scenario.create(host);
    tracer_->End("");
  }
  ~TracedByName() override {
    tracer_->Begin("Release " + name_);
    controller_.reset();
    tracer_->End("");
  }
  TracedByName(const TracedByName&) = delete;
  TracedByName& operator=(const TracedByName&) = delete;

  Value Invoke(std::string_view name, InvokeKind kind, qorcred::Arguments arguments) override {
    const Member* member = qorcred::FindMember(controller_->Members(), name);
    if (member == nullptr) throw qorcred::RuntimeError(qorcred::ErrorNumber::kUnknownMember);
    std::vector<Value> whole(arguments.begin(), arguments.end());
    for (std::size_t at = 0; at < member->parameters.size(); ++at) {
      const qorcred::Parameter& parameter = member->parameters[at];
      if (at == whole.size()) whole.push_back(parameter.Omitted());
      whole[at] = qorcred::ConvertArgument(parameter.type, whole[at]);
    }
    Value result = RunTraced(*tracer_, name_, *controller_, *member, kind, whole);
    std::move(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(arguments.size()),
              arguments.begin());
    return result;
  }

 private:
  std::shared_ptr<Tracer> tracer_;
  std::string name_;
  std::shared_ptr<qorcred::Controller> controller_;
};

/// A scenario's trace; `transcript` gets what reached its host.
std::vector<std::string> TraceOf(const Scenario& scenario, std::string& transcript) {
  std::vector<std::string> lines;
  const auto tracer =
      std::make_shared<Tracer>([&lines](std::string_view line) { lines.emplace_back(line); });
  RecordingHost host(scenario.screen);
  scenario.arrange(host);
  qorcred::trace::TracedHost tracedHost(host.host(), tracer);
  std::string result;
  {
    TracedByName controller(scenario, tracedHost, tracer);
    qorcred::Put(controller, scenario.screenProperty, host.screen());
    result =
        scenario.act({host, controller, host.screen(), host.connectionScreen(), host.connection(),
                      scenario.screen == ScreenKind::kReportFilter ? host.grid() : nullptr});
  }
  transcript = Transcript(host, result);
  return lines;
}

TEST(TracesOfScenarios, GiveThemselvesWhenTheyAreReplayed) {
  for (const Scenario& scenario : Scenarios()) {
    std::string transcript;
    const std::vector<std::string> trace = TraceOf(scenario, transcript);
    EXPECT_GE(trace.size(), 5U) << scenario.name;
    EXPECT_EQ(DifferenceInReplay(trace), "") << scenario.name;
  }
}

// Being traced changes nothing that the host sees.
TEST(TracesOfScenarios, AreOfTheSameCoursesOfWork) {
  for (const Scenario& scenario : Scenarios()) {
    std::string transcript;
    (void)TraceOf(scenario, transcript);
    EXPECT_EQ(transcript, RunNatively(scenario)) << scenario.name;
  }
}

TEST(TracesOfScenarios, WithAnotherAnswerAreOtherTraces) {
  std::size_t tried = 0;
  for (const Scenario& scenario : Scenarios()) {
    std::string transcript;
    std::vector<std::string> trace = TraceOf(scenario, transcript);
    // A statement that fails where it had rows, or the other way round.
    const auto query = std::find_if(trace.begin(), trace.end(), [](const std::string& line) {
      return line.find(".ExecuteSelect(") != std::string::npos &&
             line.find(") -> rows@") != std::string::npos;
    });
    if (query == trace.end()) continue;
    ++tried;
    *query = query->substr(0, query->find(") -> rows@") + 1) + " ! 1004 \"no\"";
    EXPECT_NE(DifferenceInReplay(trace), "") << scenario.name;
  }
  EXPECT_GE(tried, 5U);
}

}  // namespace
}  // namespace qortest
