// The operators and fields that filter rows offer, as pieces of statement text.
#pragma once

#include <string>
#include <vector>

namespace qorcred {

/// Four tables of texts that are pasted into statements as they stand: every blank in them counts.
/// The first three are indexed by the operator's place in `cboFilter` (0 to 7), the last by the
/// field's place in the credential report's `cboField`.
/// "^" stands for a row's value, "^1" and "^2" for the two values of a range.
struct OperatorTables {
  std::vector<std::string> numeric;
  std::vector<std::string> date;
  std::vector<std::string> text;
  std::vector<std::string> field;
};

/// The tables with their contents, which never change.
[[nodiscard]] const OperatorTables& FilledOperatorTables();
/// The tables before they are filled.
[[nodiscard]] const OperatorTables& EmptyOperatorTables();

}  // namespace qorcred
