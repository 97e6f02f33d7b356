// Where a controller is made: behind the automation object that it belongs to, so that creating one
// allocates once.
#pragma once

#include <cstddef>
#include <memory>
#include <new>

#include "frame/host.h"
#include "frame/member_table.h"

namespace qorcred::com {

/// What a room for a controller is aligned to: memory from the heap is, with every compiler.
inline constexpr std::size_t kRoomAlignment = alignof(double);

/// How a class of controllers is made in memory that stands ready.
struct ControllerMaker {
  /// Raises what the controller's constructor raises.
  Controller* (*make)(void* room, Host& host);
  std::size_t size;  ///< of the room

  template <typename Class>
  static constexpr ControllerMaker For() {
    static_assert(alignof(Class) <= kRoomAlignment);
    return {[](void* room, Host& host) -> Controller* { return new (room) Class(host); },
            sizeof(Class)};
  }
};

struct DestroyInPlace {
  void operator()(Controller* controller) const { controller->~Controller(); }
};

/// A controller in a room that somebody else owns, and which outlives it.
using ControllerInPlace = std::unique_ptr<Controller, DestroyInPlace>;

}  // namespace qorcred::com
