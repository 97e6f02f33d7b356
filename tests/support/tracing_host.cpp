#include "tests/support/tracing_host.h"

#include <memory>
#include <utility>

#include "frame/sql_text.h"
#include "tests/support/tracing_services.h"

namespace qortest {

TracingHost::TracingHost(qorcred::Host& inner, TranscriptSink sink)
    : inner_(inner), sink_(std::move(sink)) {}

qorcred::ObjectRef TracingHost::CreateComponent(std::string_view programmaticId) {
  const std::string line = "CreateObject " + QuotedText(programmaticId);
  qorcred::ObjectRef component;
  try {
    component = inner_.CreateComponent(programmaticId);
  } catch (...) {
    sink_(line + FailureSuffix(qorcred::CurrentFailure()));
    throw;
  }
  sink_(line);
  return std::make_shared<TracingComponent>(std::string(programmaticId), std::move(component),
                                            sink_);
}

qorcred::MessageButton TracingHost::ShowMessage(std::string_view text, qorcred::MessageStyle style,
                                                std::string_view title) {
  const std::string line = qorcred::Concat("MsgBox ", static_cast<int>(style), " ",
                                           QuotedText(title), " ", QuotedText(text));
  try {
    const qorcred::MessageButton button = inner_.ShowMessage(text, style, title);
    sink_(qorcred::Concat(line, " -> ", static_cast<int>(button)));
    return button;
  } catch (...) {
    sink_(line + FailureSuffix(qorcred::CurrentFailure()));
    throw;
  }
}

qorcred::Date TracingHost::Now() {
  try {
    const qorcred::Date now = inner_.Now();
    sink_("Now -> " + TranscriptText(now));
    return now;
  } catch (...) {
    sink_("Now" + FailureSuffix(qorcred::CurrentFailure()));
    throw;
  }
}

void TracingHost::LetEventsRun() {
  sink_("DoEvents");
  inner_.LetEventsRun();
}

void TracingHost::ReportFailure(std::string_view operation,
                                const qorcred::RuntimeError& failure) noexcept {
  try {
    sink_(qorcred::Concat("Trapped ", operation, " ", static_cast<int>(failure.number()), " ",
                          QuotedText(failure.description())));
  } catch (...) {
    // The failure itself still has to reach the host.
    inner_.ReportFailure(operation, failure);
    return;
  }
  inner_.ReportFailure(operation, failure);
}

std::string TracingHost::DateText(qorcred::Date date) {
  return inner_.DateText(date);
}

std::vector<std::uint8_t> TracingHost::TextToAnsi(std::string_view text) {
  return inner_.TextToAnsi(text);
}

std::string TracingHost::AnsiToText(std::span<const std::uint8_t> bytes) {
  return inner_.AnsiToText(bytes);
}

}  // namespace qortest
