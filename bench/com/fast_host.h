// The quickest host that automation allows: a screen with a list and an entry of 1,000 credentials,
// a manager with one table.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "com/ownership.h"

namespace qorbench {

/// What the list of credentials holds, to check that both ways did the same.
struct ListContent {
  std::vector<std::wstring> texts;
  std::vector<std::int32_t> data;
};

/// A host's objects. The manager answers the selects of a save, and every other with the same table
/// of credentials.
struct FastHost {
  qorcred::com::ComPtr<IDispatch> screen;      ///< has cboCredentials, and what a save reads
  qorcred::com::ComPtr<IDispatch> manager;     ///< `qorDBI.clsDBManager`; any other component too
  qorcred::com::ComPtr<IDispatch> connection;  ///< transactions that do nothing
  std::shared_ptr<ListContent> list;
  std::shared_ptr<std::int32_t> inserts;     ///< how many rows the manager was asked to insert
  std::shared_ptr<std::wstring> lastInsert;  ///< by which statement it was asked last
};

[[nodiscard]] FastHost MakeFastHost(std::int32_t credentials);

/// While it lives, every component that a controller creates is `manager`.
class OfferedManager {
 public:
  explicit OfferedManager(const qorcred::com::ComPtr<IDispatch>& manager);
  ~OfferedManager();
  OfferedManager(const OfferedManager&) = delete;
  OfferedManager& operator=(const OfferedManager&) = delete;

 private:
  DWORD cookie_ = 0;
};

}  // namespace qorbench
