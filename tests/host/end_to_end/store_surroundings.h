// A unit on a real store of its own, on the engine of the program: its components, and an operator
// whose answers are set.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "frame/host.h"
#include "host/components/store_host.h"
#include "host/store/store_connection.h"
#include "tests/host/store/engine.h"
#include "tests/support/fault_gate.h"

namespace qortest {

inline constexpr std::int32_t kUnit = 1;

/// Every call of a controller on its host, connection and components passes gate(). The clock
/// stands at 1/31/2026 2:05:09 PM.
class StoreSurroundings {
 public:
  StoreSurroundings();
  ~StoreSurroundings();
  StoreSurroundings(const StoreSurroundings&) = delete;
  StoreSurroundings& operator=(const StoreSurroundings&) = delete;

  [[nodiscard]] static qorcred::Date Now();

  [[nodiscard]] qorcred::Host& host() { return *host_; }
  [[nodiscard]] const qorcred::ObjectRef& connection() const { return gatedConnection_; }
  [[nodiscard]] qorhost::StoreConnection& store() { return *store_; }
  [[nodiscard]] FaultGate& gate() { return gate_; }

  // Past the dialect, in words that every engine knows: see tests/host/store/engine.h.

  void Run(const std::string& sql) { qorhost::test::RunRaw(store_->store(), sql); }
  [[nodiscard]] std::int64_t Number(const std::string& sql) {
    return qorhost::test::NumberOfRaw(store_->store(), sql);
  }
  /// Every row, its cells divided by commas and with "-" for Null, followed by ";".
  [[nodiscard]] std::string Rows(const std::string& sql);

  qorcred::MessageButton answer = qorcred::MessageButton::kNo;
  std::vector<std::string> messages;
  std::vector<std::string> trapped;

 private:
  class Connection;
  class GatedHost;

  FaultGate gate_;
  std::shared_ptr<qorhost::StoreConnection> store_;
  qorcred::ObjectRef gatedConnection_;
  std::unique_ptr<qorhost::StoreHost> storeHost_;
  std::unique_ptr<qorcred::Host> host_;
};

}  // namespace qortest
