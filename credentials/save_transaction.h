// The transaction around the rows of one save.
#pragma once

#include <string_view>

#include "frame/controls.h"
#include "frame/data_services.h"
#include "frame/host.h"

namespace qorcred {

/// Begins a transaction. Unless committed, the end of its life empties the screen's
/// gstrNewTenantIDs and rolls back; a failure of either is reported to the host and does not keep
/// the other from being done.
class SaveTransaction {
 public:
  /// `operation` is the name under which failures of the clean-up are reported.
  SaveTransaction(Host& host, std::string_view operation, const ObjectRef& connection,
                  const Screen& screen);
  ~SaveTransaction();
  SaveTransaction(const SaveTransaction&) = delete;
  SaveTransaction& operator=(const SaveTransaction&) = delete;

  void Commit();

 private:
  Host& host_;
  std::string_view operation_;
  Connection connection_;
  const Screen& screen_;
  bool committed_ = false;
};

}  // namespace qorcred
