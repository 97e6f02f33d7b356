// Statements with more values than a message to the server takes.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "host/store/postgres/connection.h"

namespace qorhost::postgres {

/// More parameters than these do not fit into one message to the server.
inline constexpr std::size_t kMostSent = 65'535;

/// A printed statement with its values in it, each as a text of the server's, in place of "$1",
/// "$2" and so on.
[[nodiscard]] std::string WithValues(std::string_view sql, std::span<const Sent> values);

}  // namespace qorhost::postgres
