#include "tests/support/recording_host.h"

#include <string>

#include "host/screens/credential_screen.h"
#include "host/trace/tracing_object.h"
#include "host/trace/tracing_services.h"

namespace qortest {

namespace {

std::shared_ptr<qorhost::HeadlessScreen> MakeScreen(ScreenKind kind, qorcred::Date today) {
  return kind == ScreenKind::kTenantCreating ? qorhost::MakeTenantCreatingScreen(today)
                                             : qorhost::MakeCredentialScreen(today);
}

}  // namespace

RecordingHost::RecordingHost(ScreenKind kind)
    : connection_(std::make_shared<ScriptedConnection>(gate_)),
      services_(gate_, script_, connection_),
      tracingHost_(services_, [this](std::string_view line) { transcript_.Add(line); }),
      rawScreen_(MakeScreen(kind, qorcred::DayOf(script_.now))) {
  const auto write = [this](std::string_view line) { transcript_.Add(line); };
  const auto spell = [screen = rawScreen_.get()](std::string_view name) {
    return screen->SpelledName(name);
  };
  tracedScreen_ = std::make_shared<qorhost::TracingScreen>(
      std::make_shared<GatedObject>("", rawScreen_, gate_), write, spell);
  tracedConnection_ = std::make_shared<qorhost::TracingConnection>(connection_, write);
}

void RecordingHost::StartOver() {
  transcript_.Clear();
  gate_.Reset();
  services_.ForgetTrapped();
}

void RecordingHost::AddItem(std::string_view list, std::string_view text, std::int32_t data) {
  qorhost::ListBox& box = controls().List(list);
  box.AddItem(std::string(text));
  qorcred::Put(box, "ItemData", box.newIndex(), data);
}

void RecordingHost::SetText(std::string_view box, std::string_view text) {
  controls().Box(box).SetText(std::string(text));
}

}  // namespace qortest
