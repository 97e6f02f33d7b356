// Names of stores on a server, and what answers there.
#pragma once

#include <string>

#include "host/store/postgres/engine_error.h"

struct pg_conn;

namespace qorhost::postgres {

/// Raises StoreError for a name that libpq cannot read, or that holds a password.
void RequireReadable(const std::string& name);

/// What people may read of a name: a URI's options may be long.
[[nodiscard]] std::string ShownName(const std::string& name);

/// Asks for a connection, whose status tells whether it came about; the caller owns it. An empty
/// password leaves it to the library's file and to the environment.
[[nodiscard]] pg_conn* Connect(const std::string& name, const std::string& password);

/// Whether it does not come about because the server refuses the password, and not for what it
/// looks at behind it; takes 10 seconds at most.
[[nodiscard]] bool RefusesPassword(const std::string& name, const std::string& password);

/// What is there when none came about; takes 2 seconds at most where nothing answers.
[[nodiscard]] Answer AnswerOf(const std::string& name);

}  // namespace qorhost::postgres
