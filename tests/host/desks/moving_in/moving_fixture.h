// The sample databases, read and planned.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string_view>

#include "host/desks/moving_in/moving_in.h"
#include "tests/host/files/desktop_file/expected_values.h"

namespace qorhost::test {

class MovingFixture : public testing::Test {
 protected:
  void SetUp() override {
    if (std::string_view(QORHOST_DESKTOP_READER).empty()) {
      GTEST_SKIP() << "libmdb (Debian: mdbtools-dev) was not there when this was built";
    }
  }

  [[nodiscard]] static MovingOrder OrderFor(std::string_view name,
                                            std::optional<std::int32_t> unit = std::nullopt) {
    MovingOrder order;
    order.file = SampleDatabase(name);
    order.unit = unit;
    order.reading.reader = QORHOST_DESKTOP_READER;
    return order;
  }
  [[nodiscard]] static MovingPlan PlanOf(std::string_view name,
                                         std::optional<std::int32_t> unit = std::nullopt) {
    return PlanMoving(OrderFor(name, unit));
  }
};

}  // namespace qorhost::test
