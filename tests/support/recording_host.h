// The surroundings of a controller under test: scripted services and a screen in memory, with every
// call that reaches them written down.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "frame/host.h"
#include "frame/object.h"
#include "host/screens/grid_model.h"
#include "host/screens/screen_model.h"
#include "tests/support/fault_gate.h"
#include "tests/support/scripted_database.h"
#include "tests/support/scripted_services.h"
#include "tests/support/tracing_host.h"
#include "tests/support/transcript_record.h"

namespace qortest {

/// The screens that the controllers serve.
enum class ScreenKind {
  kCredential,
  kTenantCreating,  ///< the credential screen whose Name is "frmTBL"
  kDirectoryCode,
  kReportFilter,  ///< with kFilterRows rows, beside a data grid
};

/// The rows of the filter screen: more than the directory-code report reads.
inline constexpr std::int32_t kFilterRows = 7;

/// A host whose answers are scripted and whose calls are recorded. What a test arranges through
/// controls() and the functions beside it neither shows in the transcript nor counts as a call.
class RecordingHost {
 public:
  explicit RecordingHost(ScreenKind kind = ScreenKind::kCredential);
  RecordingHost(const RecordingHost&) = delete;
  RecordingHost& operator=(const RecordingHost&) = delete;

  /// What the controller under test is given.
  [[nodiscard]] qorcred::Host& host() { return tracingHost_; }
  [[nodiscard]] const qorcred::ObjectRef& screen() const { return tracedScreen_; }
  [[nodiscard]] const qorcred::ObjectRef& connectionScreen() const { return tracedLinkScreen_; }
  [[nodiscard]] const qorcred::ObjectRef& connection() const { return tracedConnection_; }
  /// The data grid, "objGrid" in the transcript; null unless the screen is kReportFilter.
  [[nodiscard]] const qorcred::ObjectRef& grid() const { return tracedGrid_; }
  /// `object` under `name`: its calls are written down, count and can be made to fail.
  [[nodiscard]] qorcred::ObjectRef Watched(std::string name, qorcred::ObjectRef object);
  /// The answer that is a watched table of one row, "rows" in the transcript.
  [[nodiscard]] Answer WatchedRow(const Row& cells);

  /// What lies behind it.
  [[nodiscard]] ServiceScript& script() { return script_; }
  [[nodiscard]] DatabaseScript& database() { return script_.database; }
  [[nodiscard]] FaultGate& gate() { return gate_; }
  [[nodiscard]] TranscriptRecord& transcript() { return transcript_; }
  [[nodiscard]] const ScriptedHost& services() const { return services_; }
  [[nodiscard]] const ScriptedConnection& transactions() const { return *connection_; }

  /// Forgets the lines, the count of calls and the trapped failures so far.
  void StartOver();

  // Arranging and looking at the screen by the names of its controls and variables.
  [[nodiscard]] qorhost::ScreenModel& controls() { return *rawScreen_; }
  [[nodiscard]] qorhost::GridModel& shownGrid() { return *rawGrid_; }
  /// The screen has a new data grid with that many columns.
  void ReplaceGrid(std::size_t columns);
  void AddItem(std::string_view list, std::string_view text, std::int32_t data);
  void Select(std::string_view list, std::int32_t index) { controls().List(list).Select(index); }
  void SetText(std::string_view box, std::string_view text);
  [[nodiscard]] std::string TextOf(std::string_view box) { return controls().Box(box).text(); }
  /// The firmware that the unit reported when the link was made.
  void SetFirmware(std::string_view firmware);

 private:
  FaultGate gate_;
  ServiceScript script_;
  TranscriptRecord transcript_;
  std::shared_ptr<ScriptedConnection> connection_;
  ScriptedHost services_;
  TracingHost tracingHost_;
  std::shared_ptr<qorhost::ScreenModel> rawScreen_;
  std::shared_ptr<qorhost::ScreenModel> rawLinkScreen_;
  qorcred::ObjectRef tracedScreen_;
  qorcred::ObjectRef tracedLinkScreen_;
  qorcred::ObjectRef tracedConnection_;
  std::shared_ptr<qorhost::GridModel> rawGrid_;
  qorcred::ObjectRef tracedGrid_;
};

}  // namespace qortest
