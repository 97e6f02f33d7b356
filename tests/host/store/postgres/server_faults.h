// Failures that a server meets by itself, at a chosen write of a store.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "host/store/postgres/connection.h"

namespace qorhost::postgres::test {

struct ServerFault {
  std::string_view state;  ///< the server's five letters for it
  std::string_view words;  ///< that a person is told among others
};

inline constexpr std::array kServerFaults{
    ServerFault{"53100", "the server's disk is full: its administrator has to make room"},
    ServerFault{"40001", "another program is writing to the store: nothing was changed"},
    ServerFault{"40P01", "another program is writing to the store: nothing was changed"},
    ServerFault{"57014", "the server ended it before it was done"},
    ServerFault{"57P01", "nothing was stored; try again"},
};

/// What happens at the statements that write to the store of a connection, whoever sends them; the
/// last of them is the commit of what has an entry in the history. It is one object at a time, and
/// whoever is above all on the server: the ends of a statement (57014) and of a process (57P01) are
/// real ones.
class ServerFaults {
 public:
  /// The connection lives longer, and belongs to nobody who is to meet a fault.
  explicit ServerFaults(Connection& beside);
  ~ServerFaults();
  ServerFaults(const ServerFaults&) = delete;
  ServerFaults& operator=(const ServerFaults&) = delete;

  /// From now on the `nth` write, from 1, meets that, and no other one does; 0: none does.
  void Plan(int nth, const ServerFault& fault);
  /// How many writes there were since.
  [[nodiscard]] int met();

 private:
  Connection& beside_;
};

/// All that a store holds, row by row.
[[nodiscard]] std::vector<std::string> EveryRowOf(Connection& connection);

}  // namespace qorhost::postgres::test
