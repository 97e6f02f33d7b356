// A store on a PostgreSQL server of the bench's own, and what must be in it afterwards.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/store/store_connection.h"

struct pg_conn;
struct pg_result;

namespace qorbench {

/// Whether a server is installed here.
[[nodiscard]] bool HasServer();

inline constexpr std::int32_t kServerUnits = 16;
inline constexpr std::int32_t kServerRange = 32767;

/// A new database with the units 1 to kServerUnits, of the largest capacity, and the group-zero row
/// of each, whose identity is the unit's key. The server ends with the program.
class ServerStore {
 public:
  ServerStore();

  [[nodiscard]] const std::string& name() const { return name_; }
  [[nodiscard]] std::shared_ptr<qorhost::StoreConnection> Open() const;

 private:
  std::string name_;
};

/// libpq by hand; every failure ends the program.
class HandConnection {
 public:
  explicit HandConnection(const std::string& name);

  void Run(const std::string& sql);
  [[nodiscard]] std::int64_t Number(const std::string& sql);
  [[nodiscard]] pg_conn* handle() const { return handle_.get(); }
  /// From here on the store's triggers, which a program by hand has no use for, are not there.
  void DropTriggers();
  /// A statement of one row sent and waited for: its first number, 0 without rows.
  std::int64_t Step(const char* statement, const std::string& first, const std::string& second = {},
                    const std::string& third = {}, const std::string& fourth = {});
  void Prepare(const char* statement, const std::string& sql);

 private:
  struct Finish {
    void operator()(pg_conn* handle) const noexcept;
  };
  std::unique_ptr<pg_conn, Finish> handle_;
};

/// Ends the program unless unit 1 has the credentials 1 to kServerRange, and a tenant for each with
/// its link code, backup row and step when `withTenants`.
void CheckServerRange(const std::string& name, bool withTenants);

}  // namespace qorbench
