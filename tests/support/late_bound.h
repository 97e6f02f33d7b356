// What the tests of late-bound calls share, whatever the controller.
#pragma once

#include <string>

#include "frame/member_table.h"
#include "frame/runtime_error.h"
#include "tests/support/transcript_record.h"

namespace qortest {

/// A row of a member table as one line: `5 pbSave(ByRef objConn As Object, ...) As Boolean`.
[[nodiscard]] std::string Described(const qorcred::Member& member);

/// All rows of a controller's table.
[[nodiscard]] Lines DescribedMembers(const qorcred::Controller& controller);

/// The number of the error that `action` raises; 0 when it raises none.
template <typename Action>
int ErrorOf(Action action) {
  try {
    action();
  } catch (const qorcred::RuntimeError& failure) {
    return static_cast<int>(failure.number());
  }
  return 0;
}

}  // namespace qortest
