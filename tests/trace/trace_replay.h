// Replays a trace: its operations are run on controllers of today, and everything that they ask
// their host is answered as the trace has it.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "frame/host.h"
#include "frame/member_table.h"

namespace qortest {

/// The trace of the replay, which is the same as `trace` when the controllers do what they did
/// then. Raises std::runtime_error for what cannot be read as a trace.
[[nodiscard]] std::vector<std::string> Replayed(const std::vector<std::string>& trace);

/// Where the trace of the replay first differs from `trace`: the line as it was and as it is. Empty
/// when both are the same. Raises as Replayed() does.
[[nodiscard]] std::string DifferenceInReplay(const std::vector<std::string>& trace);

/// Makes a controller of the class of that name on a host that outlives it.
using ControllerMaker = std::function<std::unique_ptr<qorcred::Controller>(
    std::string_view className, qorcred::Host& host)>;

/// Replays a trace on controllers that `make` makes, called by name and not traced. Raises
/// std::runtime_error for what cannot be read as a trace, and for the operation that asks its host
/// for more or for less than it did then.
void ReplayOn(const ControllerMaker& make, const std::vector<std::string>& trace);

/// Both of these on a trace that is read once: what DifferenceInReplay() gives, after ReplayOn()
/// has raised nothing.
[[nodiscard]] std::string DifferenceInReplays(const ControllerMaker& make,
                                              const std::vector<std::string>& trace);

}  // namespace qortest
