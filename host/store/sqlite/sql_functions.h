// What translated statements need from the engine: the DESKTOP collation and the functions of the
// dialect.
#pragma once

struct sqlite3;

namespace qorhost::sqlite {

/// Registers the collation DESKTOP (texts without regard to case), LIKE (the same; only % and _ are
/// special) and the functions that translations call, all named desktop_*. To be called on every
/// database handle before a statement is prepared. Raises std::runtime_error when the engine
/// refuses. A function that cannot compute its result fails the statement with a text; nothing
/// escapes.
void RegisterSqlFunctions(sqlite3* database);

}  // namespace qorhost::sqlite
