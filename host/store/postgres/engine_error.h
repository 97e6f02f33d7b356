// What the server says of a failure, as people read it.
#pragma once

#include <cstdint>
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

/// What answers at the place of a server to which no connection comes about.
enum class Answer : std::uint8_t {
  kNone,      ///< nothing
  kNotNow,    ///< a server that takes no connections: it is starting, or ending
  kServer,    ///< a server, which has its reasons
  kNotAsked,  ///< the name itself leads nowhere
};

/// The failure of the connection itself, with what can be done about it where that is known.
[[nodiscard]] StoreError ConnectionError(const pg_conn* connection, const std::string& doing,
                                         Answer answer = Answer::kNone);

}  // namespace qorhost::postgres
