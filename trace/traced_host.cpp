#include "trace/traced_host.h"

#include <utility>

#include "frame/sql_text.h"
#include "trace/trace_text.h"

namespace qorcred::trace {

namespace {

/// Runs `service` between the two ends of its line; `spelled` gives what it came to.
template <typename Service, typename Spelling>
auto Told(Tracer& tracer, std::string call, Service&& service, Spelling&& spelled) {
  tracer.Begin(std::move(call));
  try {
    auto result = service();
    tracer.End(" -> " + spelled(result));
    return result;
  } catch (...) {
    tracer.End(SpelledFailure(CurrentFailure()));
    throw;
  }
}

std::string_view AsText(std::span<const std::uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}  // namespace

TracedHost::TracedHost(Host& inner, std::shared_ptr<Tracer> tracer)
    : inner_(inner), tracer_(std::move(tracer)) {}

ObjectRef TracedHost::CreateComponent(std::string_view programmaticId) {
  return Told(
      *tracer_, "CreateObject(progId: " + SpelledText(programmaticId) + ")",
      [&] {
        return tracer_->TracedComponent(inner_.CreateComponent(programmaticId), programmaticId);
      },
      [&](const ObjectRef& component) { return tracer_->Spelled(component, programmaticId); });
}

MessageButton TracedHost::ShowMessage(std::string_view text, MessageStyle style,
                                      std::string_view title) {
  return Told(
      *tracer_,
      Concat("MsgBox(text: ", SpelledText(text), ", style: ", static_cast<int>(style),
             ", title: ", SpelledText(title), ")"),
      [&] { return inner_.ShowMessage(text, style, title); },
      [](MessageButton button) { return std::to_string(static_cast<int>(button)); });
}

Date TracedHost::Now() {
  return Told(
      *tracer_, "Now()", [&] { return inner_.Now(); },
      [&](Date now) { return tracer_->Spelled(now); });
}

void TracedHost::LetEventsRun() {
  tracer_->Begin("DoEvents()");
  try {
    inner_.LetEventsRun();
    tracer_->End("");
  } catch (...) {
    tracer_->End(SpelledFailure(CurrentFailure()));
    throw;
  }
}

void TracedHost::ReportFailure(std::string_view operation, const RuntimeError& failure) noexcept {
  try {
    tracer_->Note(Concat("Trapped(operation: ", SpelledText(operation), ")") +
                  SpelledFailure(failure));
  } catch (...) {
    // The failure itself still has to reach the host.
    inner_.ReportFailure(operation, failure);
    return;
  }
  inner_.ReportFailure(operation, failure);
}

std::string TracedHost::DateText(Date date) {
  return Told(
      *tracer_, "DateText(date: " + tracer_->Spelled(date) + ")",
      [&] { return inner_.DateText(date); },
      [](const std::string& text) { return SpelledText(text); });
}

std::vector<std::uint8_t> TracedHost::TextToAnsi(std::string_view text) {
  return Told(
      *tracer_, "TextToAnsi(text: " + SpelledText(text) + ")",
      [&] { return inner_.TextToAnsi(text); },
      [](const std::vector<std::uint8_t>& bytes) { return SpelledBytes(AsText(bytes)); });
}

std::string TracedHost::AnsiToText(std::span<const std::uint8_t> bytes) {
  return Told(
      *tracer_, "AnsiToText(bytes: " + SpelledBytes(AsText(bytes)) + ")",
      [&] { return inner_.AnsiToText(bytes); },
      [](const std::string& text) { return SpelledText(text); });
}

}  // namespace qorcred::trace
