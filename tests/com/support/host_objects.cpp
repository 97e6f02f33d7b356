#include "tests/com/support/host_objects.h"

#include <utility>

namespace qortest {

namespace {

struct Cells {
  std::vector<Row> rows;

  [[nodiscard]] Variant UpperBound(int dimension) const {
    const std::size_t count = dimension == 1 ? rows.size() : rows.empty() ? 0 : rows[0].size();
    return static_cast<int>(count) - 1;
  }
};

}  // namespace

ComPtr<FakeObject> MakeTable(std::vector<Row> rows) {
  ComPtr<FakeObject> table = FakeObject::Make();
  auto cells = std::make_shared<Cells>(Cells{std::move(rows)});
  const auto cell = [cells](const FakeCall& call) -> HRESULT {
    const auto row = static_cast<std::size_t>(NumberIn(call.Argument(0)));
    const auto column = static_cast<std::size_t>(NumberIn(call.Argument(1)));
    if (row >= cells->rows.size() || column >= cells->rows[row].size()) return DISP_E_BADINDEX;
    if (call.arguments.size() == 2) return call.Return(cells->rows[row][column]);
    cells->rows[row][column] = call.Argument(2);
    return S_OK;
  };
  table->On(L"", cell)
      .On(L"Value", cell)
      .On(L"LowerBound", [](const FakeCall& call) { return call.Return(0); })
      .On(L"UpperBound",
          [cells](const FakeCall& call) {
            return call.Return(cells->UpperBound(NumberIn(call.Argument(0))));
          })
      .On(L"ReDim", [cells](const FakeCall& call) -> HRESULT {
        cells->rows.resize(static_cast<std::size_t>(NumberIn(call.Argument(1)) + 1));
        for (Row& row : cells->rows) {
          row.resize(static_cast<std::size_t>(NumberIn(call.Argument(3)) + 1));
        }
        return S_OK;
      });
  return table;
}

ComPtr<FakeObject> MakeEmptyTable() {
  return MakeTable({{L""}});
}

FakeManager::FakeManager() : object(FakeObject::Make()) {
  state->answer = MakeEmptyTable();
  object
      ->On(L"ExecuteSelect",
           [state = state](const FakeCall& call) {
             state->statements.push_back(TextIn(call.Argument(1)));
             return call.Return(state->answer);
           })
      .On(L"ExecuteQueryDelete",
          [state = state](const FakeCall& call) {
            state->statements.push_back(TextIn(call.Argument(1)));
            return call.Return(state->deleted);
          })
      .On(L"pbGetRowIDStringConstant", [](const FakeCall& call) { return call.Return(L"_RID_"); })
      .On(L"pbGetLastModifiedDateStringConstant",
          [](const FakeCall& call) { return call.Return(L"_LMDATE_"); });
}

}  // namespace qortest
