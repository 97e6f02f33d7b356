// What the server says of a failure, as people read it.
#pragma once

#include <string>
#include <string_view>

#include "host/store/store_error.h"

struct pg_conn;
struct pg_result;

namespace qorhost::postgres {

/// What a failure comes from, by the five letters that the server gives it.
[[nodiscard]] StoreFault FaultOf(std::string_view state);

/// The failure of a statement, "WHAT: the server's words (advice)". `connection` tells whether the
/// server is still there.
[[nodiscard]] StoreError ErrorOf(const pg_result* result, const pg_conn* connection,
                                 const std::string& doing);

/// A connection that was there is lost: of an open transaction nothing is stored.
[[nodiscard]] StoreError LostError(const pg_conn* connection, const std::string& doing);

/// The failure of the connection itself.
[[nodiscard]] StoreError ConnectionError(const pg_conn* connection, const std::string& doing);

}  // namespace qorhost::postgres
