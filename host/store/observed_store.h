// A store whose statements somebody is told of.
#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <string_view>

#include "host/store/store.h"

namespace qorhost {

/// Told of a statement that a session has run: its text, how many rows it gave or changed, and,
/// when it failed, the failure.
using StatementObserver = std::function<void(std::string_view statement, std::int64_t rows,
                                             const std::exception* failure)>;

/// `store` with sessions that tell `observer` of every statement of the dialect. What an engine
/// runs for the store itself (transactions, units of work, registers) is not told.
[[nodiscard]] std::unique_ptr<Store> Observed(std::unique_ptr<Store> store,
                                              StatementObserver observer);

}  // namespace qorhost
