// What the tests of the credential controller share: a recording host, the controller on its screen
// and the verbs that act on it.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "tests/support/noted_controllers.h"
#include "tests/support/recording_host.h"

namespace qortest {

inline constexpr std::int32_t kUnit = 3;

/// Item data of the credential types in `cboCredentialType`; also their places in the list.
inline constexpr std::int32_t kCard30 = 0;
inline constexpr std::int32_t kCard26 = 1;
inline constexpr std::int32_t kTransmitter = 2;

/// The query for a unit's capacity.
inline constexpr std::string_view kCapacityQuery =
    "SELECT TOTAL FROM UNITTYPES T, UNITSETTINGS S WHERE S.UnitKey = 3 AND S.UNITTYPE = "
    "T.DESCRIPTION";

/// A controller on a recording host. The transcript starts behind the controller's creation.
class CredentialScreen {
 public:
  /// `missingAtCreation` is the identifier of a component that can be created only afterwards.
  explicit CredentialScreen(ScreenKind kind = ScreenKind::kCredential,
                            std::string_view missingAtCreation = {});

  [[nodiscard]] RecordingHost& host() { return *host_; }
  [[nodiscard]] UnderTest<qorcred::clsCredential>& controller() { return *controller_; }
  void ReleaseController() { controller_.reset(); }

  // The operations, on the recording host's connection and the unit kUnit.
  bool SaveNew(std::int32_t* rid = nullptr);
  bool SaveNewWithTenants(std::int32_t* rid = nullptr);
  bool SaveEdited();
  bool Delete(std::int32_t rid);
  bool Renumber(std::int32_t number);

  // Ready screens.
  /// The three types, one of them selected, numbers from `start` to `end`, facility code 12, room
  /// for 500 codes. For transmitters ID code 5, sequence code 1. The mode is "Range".
  void EnterRange(std::int32_t type, std::string_view start, std::string_view end);
  /// The same in single mode, with an empty ending number.
  void EnterSingle(std::int32_t type, std::string_view start);
  /// Lists of schedules with an entry selected in each (ids 1, 0, 5, 9), active from
  /// 11/21/2026 to 11/21/2027 11:59:59 PM, group zero in row 77. Needs the tenant-creating screen.
  void EnterTenantDefaults();
  /// "<Add New>" and a transmitter, a card 26 and a card 30 with the rows 17, 18 and 19 in
  /// `cboCredentials`, the one at `selected` chosen; doors to activate; tenants 55 and 56 behind
  /// "<Unassigned>", the one at `tenant` chosen.
  void ShowStored(std::int32_t selected, std::int32_t tenant);
  /// The unit's type allows that many codes.
  void AllowCodes(std::string_view most);
  void CountCodes(std::string_view credentials, std::string_view entryCodes,
                  std::string_view directoryCodes);

 private:
  std::unique_ptr<RecordingHost> host_;
  std::unique_ptr<UnderTest<qorcred::clsCredential>> controller_;
};

/// Base of the test suites.
class CredentialTest : public ::testing::Test {
 protected:
  explicit CredentialTest(ScreenKind kind = ScreenKind::kCredential) : screen_(kind) {}

  [[nodiscard]] CredentialScreen& Screen() { return screen_; }
  [[nodiscard]] UnderTest<qorcred::clsCredential>& Controller() { return screen_.controller(); }
  [[nodiscard]] RecordingHost& Host() { return screen_.host(); }
  [[nodiscard]] DatabaseScript& Database() { return screen_.host().database(); }
  [[nodiscard]] const qorcred::ObjectRef& Connection() { return screen_.host().connection(); }

  /// The whole transcript since the arrangement.
  [[nodiscard]] ::testing::AssertionResult TranscriptIs(std::string_view expected);
  /// The transcript without reads of controls and without components made and released.
  [[nodiscard]] ::testing::AssertionResult EffectsAre(std::string_view expected);

 private:
  CredentialScreen screen_;
};

/// Base of the test suites on the screen that creates tenants.
class TenantCreatingTest : public CredentialTest {
 protected:
  TenantCreatingTest() : CredentialTest(ScreenKind::kTenantCreating) {}
};

}  // namespace qortest
