#include "credentials/save_transaction.h"

#include <utility>

#include "frame/trap.h"

namespace qorcred {

SaveTransaction::SaveTransaction(Host& host, std::string_view operation, ObjectRef connection,
                                 const Screen& screen)
    : host_(host), operation_(operation), connection_(std::move(connection)), screen_(screen) {}

SaveTransaction::~SaveTransaction() {
  if (committed_) return;
  Trap(host_, operation_, [this] { screen_.SetVariable("gstrNewTenantIDs", ""); });
  if (begun_) Trap(host_, operation_, [this] { Connection(connection_).RollbackTrans(); });
}

void SaveTransaction::Begin() {
  Connection(connection_).BeginTrans();
  begun_ = true;
}

void SaveTransaction::Commit() {
  Connection(connection_).CommitTrans();
  committed_ = true;
}

}  // namespace qorcred
