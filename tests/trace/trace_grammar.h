// The grammar of docs/trace.md, held strictly: what the trace's readers take more freely.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qortest {

/// What is wrong with a line of a trace, without the blanks in front of it; empty for one that the
/// grammar has.
[[nodiscard]] std::string FaultInTraceLine(std::string_view line);

/// The first line that the grammar does not have, with what is wrong; empty where it has them all.
[[nodiscard]] std::string FaultInTrace(const std::vector<std::string>& lines);

}  // namespace qortest
