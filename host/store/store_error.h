// Failures of the store, as people read them.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace qorhost {

/// What a failure comes from, whatever the engine calls it.
enum class StoreFault : std::uint8_t {
  kOther,       ///< the engine's own text says it all
  kRefused,     ///< the store itself refuses
  kNoSuchUnit,  ///< a row of a unit that does not exist, or a unit that other rows belong to
  kBusy,
  kNoRights,
  kReadOnly,
  kFull,
  kDisk,
  kNoStore,
  kDamaged,
  kCannotOpen,
  kNoMemory,
  kTooMuchWork,
  kTooLong,
  kNoServer,  ///< the server is not there, or not any more
  kUnknown,   ///< whether it was stored nobody can tell
};

/// A failure of the store underneath. what() says what went wrong and what to do about it.
class StoreError : public std::runtime_error {
 public:
  explicit StoreError(const std::string& message, StoreFault fault = StoreFault::kRefused)
      : std::runtime_error(message), fault_(fault) {}

  [[nodiscard]] StoreFault fault() const noexcept { return fault_; }

 private:
  StoreFault fault_;
};

/// What a person can do about it; empty for kOther and kRefused.
[[nodiscard]] std::string_view AdviceFor(StoreFault fault);

}  // namespace qorhost
