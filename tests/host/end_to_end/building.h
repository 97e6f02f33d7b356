// The credential controller on a real store, with its screen.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "credentials/cls_credential.h"
#include "host/screens/credential_screen.h"
#include "tests/host/end_to_end/store_surroundings.h"
#include "tests/support/recording_host.h"

namespace qortest {

/// Calls on the screen pass the gate as well.
class Building : public StoreSurroundings {
 public:
  explicit Building(ScreenKind kind = ScreenKind::kCredential);

  [[nodiscard]] qorcred::clsCredential& controller() { return *controller_; }
  [[nodiscard]] qorhost::ScreenModel& screen() { return *screen_; }

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

 private:
  std::shared_ptr<qorhost::ScreenModel> screen_;
  std::unique_ptr<qorcred::clsCredential> controller_;
};

}  // namespace qortest
