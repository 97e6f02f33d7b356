// The quickest host that automation allows: a screen with one list, a manager with one table.
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

/// A host's objects. The manager answers every select with the same table of credentials.
struct FastHost {
  qorcred::com::ComPtr<IDispatch> screen;      ///< has cboCredentials
  qorcred::com::ComPtr<IDispatch> manager;     ///< `qorDBI.clsDBManager`; any other component too
  qorcred::com::ComPtr<IDispatch> connection;  ///< has no members
  std::shared_ptr<ListContent> list;
};

[[nodiscard]] FastHost MakeFastHost(std::int32_t credentials);

/// While it lives, every component that a credential controller creates is `manager`.
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
