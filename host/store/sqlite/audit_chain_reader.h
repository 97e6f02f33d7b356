// Goes through the whole audit in the order in which it was written.
#pragma once

#include <functional>

#include "host/store/audit_chain_check.h"
#include "host/store/sqlite/database.h"

namespace qorhost::sqlite {

/// What a row of "SELECT RID, At, Who, Origin, UnitKey, What FROM AuditEntries" tells.
[[nodiscard]] WorkEntry EntryIn(const Statement& read);

/// Hands every entry to `use`, oldest first; `useExpected` as in AuditChainCheck, which comes back.
AuditChainCheck ReadAudit(const Database& database, bool useExpected,
                          const std::function<void(const ReadEntry&)>& use);

}  // namespace qorhost::sqlite
