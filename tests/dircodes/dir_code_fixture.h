// What the tests of the directory-code controller share: a recording host, the controller on its
// screen and the verbs that act on it.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/late_bound.h"
#include "tests/support/noted_controllers.h"
#include "tests/support/recording_host.h"

namespace qortest {

inline constexpr std::int32_t kUnit = 3;

/// The row of the stored code that ShowStored() opens.
inline constexpr std::int32_t kStoredRow = 17;

/// The query for a unit's capacity.
inline constexpr std::string_view kCapacityQuery =
    "SELECT TOTAL FROM UNITTYPES T, UNITSETTINGS S WHERE S.UnitKey = 3 AND S.UNITTYPE = "
    "T.DESCRIPTION";

/// A controller on a recording host. The transcript starts behind the controller's creation.
class DirCodeScreen {
 public:
  /// `missingAtCreation` is the identifier of a component that can be created only afterwards.
  explicit DirCodeScreen(std::string_view missingAtCreation = {});

  [[nodiscard]] RecordingHost& host() { return *host_; }
  [[nodiscard]] UnderTest<qorcred::clsDirCode>& controller() { return *controller_; }
  void ReleaseController() { controller_.reset(); }

  // The operations, on the recording host's connection and the unit kUnit.
  bool SaveNew(std::int32_t* rid = nullptr);
  bool SaveEdited(std::int32_t previousIndex = 0);
  bool Delete(std::int32_t rid, bool withoutMessage = false, bool validate = false);
  bool Renumber(std::string_view code);
  bool Merge(std::string_view mode, qorcred::StringArray& details, std::int32_t rid = kStoredRow);

  // Ready screens.
  /// A new code with the phone number 5551234 and nothing else: every box unchecked, no extension,
  /// spinners at 5 and 7. Schedules as in ListSchedules(), none selected. Room for 500 codes.
  void EnterNew(std::string_view code);
  /// The stored codes 12, 34 and 56 (rows 17, 18 and 19) behind "<Add New>", the first selected and
  /// open for editing (gstrTag "EDIT"), with the phone number 5551234. The rest as in EnterNew().
  void ShowStored();
  /// Full Access (1), No Access (0), Day (5) and Night (9) in both lists of schedules.
  void ListSchedules();
  /// Checks `chkDND` and selects the schedule at `index` of `cboSchedules`.
  void CheckDoNotDisturb(std::int32_t index);
  /// Checks `chkCallForwarding`, selects the schedule at `index` and enters phone and extension.
  void CheckCallForwarding(std::int32_t index, std::string_view phone, std::string_view extension);
  void Check(std::string_view box, bool checked = true);
  void SetSpinner(std::string_view spinner, qorcred::Value number);
  /// The unit's type allows that many codes.
  void AllowCodes(std::string_view most);
  void CountCodes(std::string_view credentials, std::string_view entryCodes,
                  std::string_view directoryCodes);

 private:
  std::unique_ptr<RecordingHost> host_;
  std::unique_ptr<UnderTest<qorcred::clsDirCode>> controller_;
};

/// Texts and item data of a list, "text=data" each.
[[nodiscard]] std::vector<std::string> ItemsOf(RecordingHost& host, std::string_view list);

/// Base of the test suites.
class DirCodeTest : public ::testing::Test {
 protected:
  [[nodiscard]] DirCodeScreen& Screen() { return screen_; }
  [[nodiscard]] UnderTest<qorcred::clsDirCode>& Controller() { return screen_.controller(); }
  [[nodiscard]] RecordingHost& Host() { return screen_.host(); }
  [[nodiscard]] DatabaseScript& Database() { return screen_.host().database(); }
  [[nodiscard]] const qorcred::ObjectRef& Connection() { return screen_.host().connection(); }

  /// The whole transcript since the arrangement.
  [[nodiscard]] ::testing::AssertionResult TranscriptIs(std::string_view expected);
  /// The transcript without reads of controls and without components made and released.
  [[nodiscard]] ::testing::AssertionResult EffectsAre(std::string_view expected);

 private:
  DirCodeScreen screen_;
};

}  // namespace qortest
