#include "host/screens/report_filter_screen.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qorhost {

namespace {

/// Takes a control array of `rows` controls in, each made by `make`.
template <typename Make>
void AddArray(ScreenModel& screen, std::string_view name, std::size_t rows, Make make) {
  std::vector<std::shared_ptr<ControlModel>> controls;
  controls.reserve(rows);
  for (std::size_t row = 0; row < rows; ++row) {
    controls.push_back(make());
  }
  screen.Add(std::string(name), std::make_shared<ControlArrayModel>(std::move(controls)));
}

}  // namespace

std::shared_ptr<ScreenModel> MakeReportFilterScreen(std::size_t rows, qorcred::Date today) {
  const std::size_t count = std::max(rows, kFewestFilterRows);
  auto screen = std::make_shared<ScreenModel>("frmTxFilter");
  for (const std::string_view list : {"cboField", "cboFilter", "cboType"}) {
    AddArray(*screen, list, count, [] { return std::make_shared<ListModel>(); });
  }
  for (const std::string_view box : {"txtFrom", "txtTo"}) {
    AddArray(*screen, box, count, [] { return std::make_shared<TextModel>(); });
  }
  for (const std::string_view picker : {"dtpDateFrom", "dtpDateTo"}) {
    AddArray(*screen, picker, count, [today] {
      auto chosen = std::make_shared<PickerModel>(today);
      chosen->Choose(today);
      return chosen;
    });
  }
  AddArray(*screen, "chkBoolean", count, [] { return std::make_shared<CheckModel>(); });
  return screen;
}

}  // namespace qorhost
