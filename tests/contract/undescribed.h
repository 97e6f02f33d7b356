// What operations touched of their hosts, and what of it their descriptions do not name.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "contract/contract.h"
#include "tests/support/surface_record.h"

namespace qortest {

/// What was seen of one operation; each with the test that touched it first.
struct Seen {
  std::map<std::string, std::string> surface;  ///< as DescribedSurface() spells it
  std::map<std::string, std::string> messages;
  std::map<std::string, std::string> statements;
};

/// What was seen of all operations, by class and name, and the statements that could not be read.
struct SeenOperations {
  std::map<std::pair<std::string, std::string>, Seen> operations;
  std::vector<std::string> refused;

  [[nodiscard]] const Seen& Of(const qorcred::contract::Class& of,
                               const qorcred::contract::Operation& operation) const;
};

[[nodiscard]] SeenOperations SeenIn(const std::vector<Touch>& touches);

/// The operation and those that it runs, with those that they run. Raises std::logic_error for a
/// name that no operation has.
[[nodiscard]] std::vector<const qorcred::contract::Operation*> WithThoseThatItRuns(
    const qorcred::contract::Class& of, const qorcred::contract::Operation& operation);

/// The statements that the operation itself is described to run.
[[nodiscard]] std::vector<std::string_view> StatementsOf(
    const qorcred::contract::Class& of, const qorcred::contract::Operation& operation);

/// A sentence for each control, variable, member, component, table, column and changed argument
/// that was touched and is not named by the description or by those of the operations that it runs.
[[nodiscard]] std::vector<std::string> UndescribedSurface(
    const qorcred::contract::Class& of, const qorcred::contract::Operation& operation,
    const Seen& seen);
/// The same for messages, and for statements.
[[nodiscard]] std::vector<std::string> UndescribedMessages(
    const qorcred::contract::Class& of, const qorcred::contract::Operation& operation,
    const Seen& seen);
[[nodiscard]] std::vector<std::string> UndescribedStatements(
    const qorcred::contract::Class& of, const qorcred::contract::Operation& operation,
    const Seen& seen);
/// Operations that were run and are not described at all.
[[nodiscard]] std::vector<std::string> UndescribedOperations(
    const std::vector<qorcred::contract::Class>& classes, const SeenOperations& seen);

}  // namespace qortest
