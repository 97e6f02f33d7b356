// What ends the work at a desk, as people read it. Texts may hold what came from outside as it is.
#pragma once

#include <stdexcept>

namespace qorhost {

/// Work that may not be done. what() says why and what to do.
class RefusedError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A store or system that does not work.
class FailureError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Work that its progress handler stopped; nothing of it is kept.
class CancelledError : public std::runtime_error {
 public:
  CancelledError() : std::runtime_error("cancelled; nothing was changed") {}
};

}  // namespace qorhost
