// Runs the commands for directory codes on a demo store of its own.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "host/store/sqlite/database.h"
#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {

/// Works on unit 2, whose directory codes 101 to 106 stand in the rows 11 to 16.
class DirCodeFixture : public RunFixture {
 protected:
  void SetUp() override { InitDemo(); }

  [[nodiscard]] Outcome Do(std::vector<std::string> words, const std::string& input = "") {
    words.insert(words.begin(), {"--unit", "2", "dircodes"});
    return Run(std::move(words), input);
  }
  /// The row of a code; null when there is none.
  [[nodiscard]] nlohmann::json Row(const std::string& code) {
    const nlohmann::json rows =
        Rows({"sql", "SELECT * FROM DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE=" + code});
    return rows.empty() ? nlohmann::json() : rows[0];
  }
  [[nodiscard]] nlohmann::json Steps() { return Rows({"--unit", "2", "steps"}); }
  /// The tenants of any unit who hold the row.
  [[nodiscard]] nlohmann::json TenantsOf(int rid) {
    return Rows({"sql",
                 "SELECT TenantID, MODIFIED, LASTMODIFIEDDATE FROM Tenants WHERE "
                 "DIRECTORYCODE=" +
                     std::to_string(rid)});
  }
  /// Makes the store itself misbehave.
  void AddTrigger(const std::string& trigger) const {
    sqlite::Database(File("building.db"), OpenMode::kReadWrite).Run("CREATE TRIGGER " + trigger);
  }
  void Change(const std::string& statement) {
    const Outcome outcome = Run({"sql", "--write", statement});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
  }
};

}  // namespace qorhost::test
