// What a fuzzer does when the code under it breaks a promise.
#pragma once

#include <cstdlib>
#include <iostream>

namespace qortest {

/// Ends the program, so that the fuzzer keeps the input, when `kept` is false.
inline void Check(bool kept, const char* promise) {
  if (kept) return;
  std::cerr << "broken promise: " << promise << '\n';
  std::abort();
}

}  // namespace qortest
