// A controller on a real store: one unit in memory, its components, the headless screen, and an
// operator whose answers are set.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "credentials/cls_credential.h"
#include "host/screens/credential_screen.h"
#include "host/siblings/store_host.h"
#include "host/store/store_connection.h"
#include "tests/support/fault_gate.h"
#include "tests/support/recording_host.h"

namespace qortest {

inline constexpr std::int32_t kUnit = 1;

/// Every call of the controller on its host, screen, connection and components passes gate().
class Building {
 public:
  explicit Building(ScreenKind kind = ScreenKind::kCredential);
  ~Building();
  Building(const Building&) = delete;
  Building& operator=(const Building&) = delete;

  [[nodiscard]] qorcred::clsCredential& controller() { return *controller_; }
  [[nodiscard]] const qorcred::ObjectRef& connection() const { return gatedConnection_; }
  [[nodiscard]] qorhost::HeadlessScreen& screen() { return *screen_; }
  [[nodiscard]] qorhost::StoreConnection& store() { return *store_; }
  [[nodiscard]] FaultGate& gate() { return gate_; }

  /// Runs SQLite text on the store, past the dialect.
  void Run(const std::string& sql) { store_->database().Run(sql); }
  [[nodiscard]] std::int64_t Number(std::string_view sql) { return store_->database().Number(sql); }
  /// The first column of every row, each followed by ";".
  [[nodiscard]] std::string Column(std::string_view sql);
  /// Every row of the tables that a controller writes to.
  [[nodiscard]] std::string Snapshot();

  /// Types an entry as an operator would; the facility code is 7, the type a 26-bit card.
  void TypeNumbers(std::string_view start, std::string_view end, std::string_view mode);
  void ChooseType(std::int32_t index) { screen_->List("cboCredentialType").Select(index); }
  void Type(std::string_view box, std::string_view text) {
    screen_->Box(box).SetText(std::string(text));
  }
  /// Fills the credential list and selects the credential `rid`.
  void SelectCredential(std::int32_t rid);
  /// Fills the tenant list and selects the tenant `id`; 0 selects "<Unassigned>".
  void SelectTenant(std::int32_t id);

  qorcred::MessageButton answer = qorcred::MessageButton::kNo;
  std::vector<std::string> messages;
  std::vector<std::string> trapped;

 private:
  class Connection;
  class GatedHost;

  FaultGate gate_;
  std::shared_ptr<qorhost::StoreConnection> store_;
  qorcred::ObjectRef gatedConnection_;
  std::shared_ptr<qorhost::HeadlessScreen> screen_;
  std::unique_ptr<qorhost::StoreHost> storeHost_;
  std::unique_ptr<qorcred::Host> host_;
  std::unique_ptr<qorcred::clsCredential> controller_;
};

}  // namespace qortest
