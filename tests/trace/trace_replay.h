// Replays a trace: its operations are run on controllers of today, and everything that they ask
// their host is answered as the trace has it.
#pragma once

#include <string>
#include <vector>

namespace qortest {

/// The trace of the replay, which is the same as `trace` when the controllers do what they did
/// then. Raises std::runtime_error for what cannot be read as a trace.
[[nodiscard]] std::vector<std::string> Replayed(const std::vector<std::string>& trace);

}  // namespace qortest
