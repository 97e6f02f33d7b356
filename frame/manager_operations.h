// The operations of the database manager that run a statement.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "frame/object.h"

namespace qorcred {

/// Where an operation keeps its error flag among its arguments; the error text follows it.
struct ManagerOperation {
  std::string_view name;
  std::size_t errorFlagAt;
};

inline constexpr ManagerOperation kExecuteSelect{"ExecuteSelect", 2};
inline constexpr ManagerOperation kExecuteScalar{"ExecuteScalar", 2};
inline constexpr ManagerOperation kExecuteUpdate{"ExecuteUpdate", 3};
inline constexpr ManagerOperation kExecuteInsert{"ExecuteInsert", 4};
inline constexpr ManagerOperation kExecuteDelete{"ExecuteDelete", 3};
inline constexpr ManagerOperation kExecuteQueryDelete{"ExecuteQueryDelete", 2};

/// Where ExecuteInsert has the name of the table among its arguments.
inline constexpr std::size_t kTableOfInsert = 3;

inline constexpr std::array kManagerOperations{kExecuteSelect, kExecuteScalar, kExecuteUpdate,
                                               kExecuteInsert, kExecuteDelete, kExecuteQueryDelete};

/// The operation that a call with that many arguments runs; null for any other member, and where
/// there are too few arguments for an error text.
[[nodiscard]] inline const ManagerOperation* FindManagerOperation(std::string_view member,
                                                                  std::size_t arguments) {
  for (const ManagerOperation& operation : kManagerOperations) {
    if (SameMember(operation.name, member) && arguments > operation.errorFlagAt + 1) {
      return &operation;
    }
  }
  return nullptr;
}

}  // namespace qorcred
