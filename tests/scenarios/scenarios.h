// Courses of work at the screens, each from a scripted host to its whole transcript. Every compiler
// and every way into the library has to give the transcripts that tests/golden/scenarios.txt keeps.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "frame/member_table.h"
#include "frame/object.h"
#include "tests/support/recording_host.h"

namespace qortest {

/// What a scenario is given: the controller by member name, and the host's objects in the form in
/// which this way in takes them.
struct Stage {
  RecordingHost& host;
  qorcred::Object& controller;
  qorcred::ObjectRef screen;
  qorcred::ObjectRef connectionScreen;
  qorcred::ObjectRef connection;
  qorcred::ObjectRef grid;

  /// Runs an operation and returns its result as text, for the transcript.
  [[nodiscard]] std::string Run(std::string_view operation,
                                std::vector<qorcred::Value> arguments) const;
};

struct Scenario {
  const char* name;
  const char* className;
  std::shared_ptr<qorcred::Controller> (*create)(qorcred::Host& host);
  ScreenKind screen;
  const char* screenProperty;
  const char* reaches;  ///< a part of its transcript, near the end
  void (*arrange)(RecordingHost& host);
  std::string (*act)(const Stage& stage);
};

/// None of them shows a message, reads the clock or has a failure trapped.
[[nodiscard]] std::span<const Scenario> Scenarios();

/// All calls that reached the host, one a line, and the result.
[[nodiscard]] std::string Transcript(RecordingHost& host, const std::string& result);

[[nodiscard]] std::string RunNatively(const Scenario& scenario);

/// The part of the file of transcripts that a scenario takes, with its heading.
[[nodiscard]] std::string KeptText(const Scenario& scenario, const std::string& transcript);
/// The scenario's transcript in the text `kept` of that file; "(none)" when it has none.
[[nodiscard]] std::string KeptTranscript(std::string_view kept, const Scenario& scenario);

}  // namespace qortest
