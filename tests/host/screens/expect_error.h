// Expecting a numbered failure.
#pragma once

#include <gtest/gtest.h>

#include "frame/runtime_error.h"

namespace qortest {

/// Success when `body` raises a RuntimeError of that number.
template <typename Body>
::testing::AssertionResult Raises(qorcred::ErrorNumber number, Body&& body) {
  try {
    body();
  } catch (const qorcred::RuntimeError& failure) {
    if (failure.number() == number) {
      return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << "raised " << static_cast<int>(failure.number())
                                         << " instead of " << static_cast<int>(number);
  }
  return ::testing::AssertionFailure() << "raised nothing";
}

}  // namespace qortest
