#include "tests/support/recording_host.h"

#include <memory>
#include <string>
#include <utility>

#include "frame/result_table.h"
#include "host/screens/credential_screen.h"
#include "host/screens/dir_code_screen.h"
#include "host/screens/report_filter_screen.h"
#include "tests/support/tracing_object.h"
#include "tests/support/tracing_services.h"

namespace qortest {

namespace {

constexpr std::string_view kFirmware = "mFirmwareFromHandshake";

std::shared_ptr<qorhost::ScreenModel> MakeScreen(ScreenKind kind, qorcred::Date today) {
  switch (kind) {
    case ScreenKind::kCredential:
      return qorhost::MakeCredentialScreen(today);
    case ScreenKind::kTenantCreating:
      return qorhost::MakeTenantCreatingScreen(today);
    case ScreenKind::kDirectoryCode:
      return qorhost::MakeDirectoryCodeScreen(today);
    case ScreenKind::kReportFilter:
      return qorhost::MakeReportFilterScreen(kFilterRows, today);
  }
  return nullptr;
}

qorcred::ObjectRef Recorded(const std::shared_ptr<qorhost::ScreenModel>& screen, FaultGate& gate,
                            TranscriptSink write) {
  return std::make_shared<TracingScreen>(
      std::make_shared<GatedObject>("", screen, gate), std::move(write),
      [raw = screen.get()](std::string_view name) { return raw->SpelledName(name); });
}

}  // namespace

RecordingHost::RecordingHost(ScreenKind kind)
    : connection_(std::make_shared<ScriptedConnection>(gate_)),
      services_(gate_, script_, connection_),
      tracingHost_(services_, [this](std::string_view line) { transcript_.Add(line); }),
      rawScreen_(MakeScreen(kind, qorcred::DayOf(script_.now))),
      rawLinkScreen_(qorhost::MakeConnectionScreen("FC01.006")) {
  const auto write = [this](std::string_view line) { transcript_.Add(line); };
  tracedScreen_ = Recorded(rawScreen_, gate_, write);
  tracedLinkScreen_ = Recorded(rawLinkScreen_, gate_, write);
  tracedConnection_ = std::make_shared<TracingConnection>(connection_, write);
  if (kind == ScreenKind::kReportFilter) {
    ReplaceGrid(qorhost::GridModel::kColumns);
  }
}

qorcred::ObjectRef RecordingHost::Watched(std::string name, qorcred::ObjectRef object) {
  auto gated = std::make_shared<GatedObject>(name, std::move(object), gate_);
  return std::make_shared<TracingControl>(std::move(name), std::move(gated),
                                          [this](std::string_view line) { transcript_.Add(line); });
}

Answer RecordingHost::WatchedRow(const Row& cells) {
  const auto table = std::make_shared<qorcred::ResultTable>(1, cells.size());
  for (std::size_t at = 0; at < cells.size(); ++at) {
    table->At(0, static_cast<std::int32_t>(at)) = cells[at];
  }
  return {.table = Watched("rows", table)};
}

void RecordingHost::ReplaceGrid(std::size_t columns) {
  rawGrid_ = std::make_shared<qorhost::GridModel>(columns);
  tracedGrid_ = Watched("objGrid", rawGrid_);
}

void RecordingHost::StartOver() {
  transcript_.Clear();
  gate_.Reset();
  services_.ForgetTrapped();
}

void RecordingHost::AddItem(std::string_view list, std::string_view text, std::int32_t data) {
  controls().List(list).AddItemWithData(std::string(text), data);
}

void RecordingHost::SetText(std::string_view box, std::string_view text) {
  controls().Box(box).SetText(std::string(text));
}

void RecordingHost::SetFirmware(std::string_view firmware) {
  rawLinkScreen_->SetVariable(kFirmware, firmware);
}

}  // namespace qortest
