// A whole store carried into a new one, as it is: rows, identities and history.
#pragma once

#include "host/desks/progress.h"
#include "host/desks/trial.h"
#include "host/store/sql_session.h"

namespace qorhost {

/// Whether a store holds nothing but what every new one has.
[[nodiscard]] bool IsNewStore(SqlSession& session);

/// Carries everything that one store holds at one moment into a new one, in one transaction, and
/// compares both before that ends: whatever raises, and a trial, leaves the new store as it was.
/// Others go on reading and writing the first one. Raises RefusedError for a store that is not new,
/// CancelledError when the handler says no, and StoreError.
void CarryStore(SqlSession& from, SqlSession& to, const Progress& progress = {},
                Trial trial = Trial::kNo);

}  // namespace qorhost
