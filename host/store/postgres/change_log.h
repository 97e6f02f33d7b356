// The rows that a unit of work changes, written down as the server tells them.
#pragma once

#include <cstdint>
#include <map>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string_view>
#include <vector>

#include "host/store/change_list.h"
#include "host/store/postgres/connection.h"
#include "host/store/unit_register.h"

namespace qorhost::postgres {

/// Listens to a connection from its beginning to its end; one at a time.
class ChangeLog {
 public:
  explicit ChangeLog(Connection& connection);
  ~ChangeLog();
  ChangeLog(const ChangeLog&) = delete;
  ChangeLog& operator=(const ChangeLog&) = delete;

  /// From here on changes are kept, from none.
  void Start();
  void Stop() noexcept;

  /// A place to go back to, when what came behind it is undone.
  struct Place {
    ChangeList::Place list;
    std::map<std::int32_t, UnitCounts> counts;
  };
  void NoteHere(Place& place) const;
  void GoBackTo(const Place& place);

  [[nodiscard]] const std::vector<RowChange>& changes() const { return list_.changes(); }
  [[nodiscard]] std::int64_t touched() const noexcept { return list_.touched(); }
  [[nodiscard]] std::int64_t steps() const noexcept { return list_.steps(); }
  /// Raises when a change could not be kept: memory is out.
  void RequireComplete() const;

  /// Follows every change of the unit's rows from now on, which are so many.
  void Follow(std::int32_t unitKey, const UnitCounts& now);
  /// Null for a unit that is not followed.
  [[nodiscard]] const UnitCounts* CountsOf(std::int32_t unitKey) const;

 private:
  void Take(std::string_view text);
  void Count(std::string_view table, const nlohmann::json& row, int number);

  Connection& connection_;
  ChangeList list_;
  std::map<std::int32_t, UnitCounts> counts_;
  bool on_ = false;
  bool incomplete_ = false;
};

}  // namespace qorhost::postgres
