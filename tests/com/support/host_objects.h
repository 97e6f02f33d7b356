// The objects of a host that most tests need.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tests/com/support/fake_object.h"

namespace qortest {

using Row = std::vector<Variant>;

/// A result table that holds these rows, all of one length. Its bounds grow by ReDim.
[[nodiscard]] ComPtr<FakeObject> MakeTable(std::vector<Row> rows);
/// The table of a query without rows: one cell that holds "".
[[nodiscard]] ComPtr<FakeObject> MakeEmptyTable();

/// A database manager with the statements that it was given. Every query is answered with `answer`,
/// an empty table at first; every deletion with `deleted`.
struct FakeManager {
  FakeManager();

  ComPtr<FakeObject> object;
  struct State {
    std::vector<std::wstring> statements;
    ComPtr<FakeObject> answer;
    Variant deleted{0};
  };
  std::shared_ptr<State> state = std::make_shared<State>();
};

}  // namespace qortest
