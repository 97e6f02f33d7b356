// The transaction around the rows of one save.
#pragma once

#include <string_view>

#include "frame/controls.h"
#include "frame/data_services.h"
#include "frame/host.h"

namespace qorcred {

/// Undoes a save that does not reach its end: unless committed, the end of its life empties the
/// screen's gstrNewTenantIDs and then rolls back what was begun. A failure of either is reported to
/// the host and does not keep the other from being done.
class SaveTransaction {
 public:
  /// Begins nothing yet. `operation` is the name under which failures of the clean-up are reported.
  SaveTransaction(Host& host, std::string_view operation, ObjectRef connection,
                  const Screen& screen);
  ~SaveTransaction();
  SaveTransaction(const SaveTransaction&) = delete;
  SaveTransaction& operator=(const SaveTransaction&) = delete;

  /// When this fails the save is undone as well: there is nothing to roll back then.
  void Begin();
  void Commit();

 private:
  Host& host_;
  std::string_view operation_;
  ObjectRef connection_;
  const Screen& screen_;
  bool begun_ = false;
  bool committed_ = false;
};

}  // namespace qorcred
