// What becomes of operations when the host lacks a component that they use: rows of tests, and what
// the descriptions say of the same.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <optional>
#include <ostream>
#include <set>
#include <string_view>
#include <tuple>
#include <vector>

#include "contract/contract.h"
#include "tests/support/recording_host.h"

namespace qortest {

/// Operation, component, whether it was missing when the controller was created, use.
using AbsenceKey = std::tuple<std::string_view, std::string_view, bool, std::string_view>;

/// What a class's description tells; two rows for one key fail the running test.
[[nodiscard]] std::map<AbsenceKey, qorcred::contract::Absence> DescribedAbsences(
    const qorcred::contract::Class& of);

/// Expects that every component that an operation uses has its row in the description, and that the
/// description has no row but those of `tried`. A component that the controller keeps may have been
/// missing at its creation; one that an operation creates may be missing then.
void ExpectAllTried(const qorcred::contract::Class& of, const std::set<AbsenceKey>& tried);

/// One operation without one component, and the whole transcript of what it does then. `act` gives
/// its result, nothing for one without.
template <typename Screen>
struct Lack {
  std::string_view name;
  std::string_view operation;
  std::string_view component;
  bool sinceCreation = false;
  std::string_view use = {};  ///< as the description calls it
  std::function<void(Screen&)> arrange;
  std::function<std::optional<bool>(Screen&)> act;
  std::string_view did;
  ScreenKind kind = ScreenKind::kCredential;

  [[nodiscard]] AbsenceKey key() const { return {operation, component, sinceCreation, use}; }
  friend std::ostream& operator<<(std::ostream& out, const Lack& lack) { return out << lack.name; }
};

/// What ended as `result` on `host` is what the description of the absence tells.
void ExpectDescribed(RecordingHost& host, std::optional<bool> result,
                     const qorcred::contract::Absence& described);

/// Runs a row on its screen, whose controller was created without the component where that is
/// meant.
template <typename Screen>
void ExpectWhatIsDescribed(const Lack<Screen>& lack, Screen& screen,
                           const qorcred::contract::Class& of) {
  const auto described = DescribedAbsences(of);
  const auto absence = described.find(lack.key());
  ASSERT_NE(absence, described.end()) << "it is not described";
  lack.arrange(screen);
  screen.host().StartOver();
  if (!lack.sinceCreation) screen.host().script().missing = lack.component;

  const std::optional<bool> result = lack.act(screen);

  EXPECT_TRUE(SameLines(screen.host().transcript().Read(Detail::kEverything), lack.did));
  ExpectDescribed(screen.host(), result, absence->second);
}

template <typename Screen>
[[nodiscard]] std::set<AbsenceKey> KeysOf(const std::vector<Lack<Screen>>& lacks) {
  std::set<AbsenceKey> keys;
  for (const Lack<Screen>& lack : lacks) keys.insert(lack.key());
  return keys;
}

}  // namespace qortest
