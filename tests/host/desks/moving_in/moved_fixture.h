// Buildings that were brought into a store of this program's engine.
#pragma once

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/convert.h"
#include "host/desks/session.h"
#include "host/desks/store_check.h"
#include "tests/host/desks/moving_in/moving_fixture.h"
#include "tests/host/store/engine.h"

namespace qorhost::test {

inline Clock AtNoon() {
  return [] { return qorcred::FromCivil({2026, 2, 3, 12, 0, 0}); };
}

/// A value of the store as the expected values write it.
inline nlohmann::json StoredCell(const qorcred::Value& value) {
  if (value.Is(qorcred::ValueType::kNull)) return nullptr;
  if (const auto* flag = value.As<bool>()) return *flag;
  if (const auto* date = value.As<qorcred::Date>()) return ExpectedDate(date->serial);
  if (const auto* number = value.As<double>()) return *number;
  if (const auto* number = value.As<std::int32_t>()) return *number;
  if (const auto* number = value.As<std::int16_t>()) return *number;
  return qorcred::TextOrEmpty(value);
}

/// A table of expected values under whatever letter case.
inline const nlohmann::ordered_json& TableIn(const nlohmann::ordered_json& expected,
                                             std::string_view name) {
  for (const auto& [own, table] : expected.at("tables").items()) {
    if (FindKnownTable(own) == FindKnownTable(name)) return table;
  }
  throw std::out_of_range(std::string(name));
}

class MovedBuildings : public MovingFixture {
 protected:
  void Bring(std::string_view name, std::optional<std::int32_t> unit = std::nullopt) {
    Bring(PlanOf(name, unit), name);
  }

  void Bring(MovingPlan plan, std::string_view name) {
    plan_.emplace(std::move(plan));
    std::unique_ptr<Store> store = FreshStore();
    BringIn(*store->StartSession(AtNoon()), *plan_, name);
    Surroundings surroundings;
    surroundings.clock = AtNoon();
    session_ = std::make_unique<DeskSession>(std::move(store), surroundings);
  }

  [[nodiscard]] std::vector<nlohmann::json> Rows(const std::string& statement) {
    const QueryResult result = session_->sql().Select(statement);
    std::vector<nlohmann::json> rows;
    for (const ResultRow row : result.rows()) {
      nlohmann::json cells = nlohmann::json::array();
      for (std::size_t column = 0; column < result.columns.size(); ++column) {
        cells.push_back(StoredCell(row[static_cast<std::int32_t>(column)]));
      }
      rows.push_back(std::move(cells));
    }
    return rows;
  }

  [[nodiscard]] std::vector<std::string> Faults() {
    std::vector<std::string> faults;
    for (const auto& row : WholeCheck(*session_, session_->Units()).rows) {
      faults.push_back(qorcred::TextOrEmpty(row[0]) + ": " + qorcred::TextOrEmpty(row[1]));
    }
    return faults;
  }

  std::optional<MovingPlan> plan_;
  std::unique_ptr<DeskSession> session_;
};

/// "building2000mdb", for the name of a test.
inline std::string LettersOf(std::string name) {
  std::erase_if(name, [](unsigned char letter) { return std::isalnum(letter) == 0; });
  return name;
}

}  // namespace qorhost::test
