// Imports CSV files into a demo store of its own.
#pragma once

#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "host/store/sqlite/database.h"
#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {

class ImportFixture : public RunFixture {
 protected:
  void SetUp() override { InitDemo(); }

  /// Writes a file and gives its name.
  std::string Write(const std::string& text, const std::string& name = "import.csv") const {
    std::ofstream(File(name), std::ios::binary) << text;
    return File(name);
  }
  /// Imports a text into unit 2: "dircodes" or "credentials".
  [[nodiscard]] Outcome Import(const std::string& what, const std::string& text,
                               const std::vector<std::string>& options = {}) {
    std::vector<std::string> words{"--unit", "2", what, "import", Write(text)};
    words.insert(words.end(), options.begin(), options.end());
    return Run(std::move(words));
  }
  [[nodiscard]] nlohmann::json Query(const std::string& statement) {
    return Rows({"sql", statement});
  }
  [[nodiscard]] std::size_t CountOf(const std::string& table) {
    return Query("SELECT RID FROM " + table).size();
  }
  [[nodiscard]] std::size_t StepCount() { return Rows({"steps"}).size(); }
  void Change(const std::string& statement) {
    const Outcome outcome = Run({"sql", "--write", statement});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
  }
  /// Makes the store itself misbehave.
  void AddTrigger(const std::string& trigger) const {
    sqlite::Database(File("building.db"), OpenMode::kReadWrite).Run("CREATE TRIGGER " + trigger);
  }
};

}  // namespace qorhost::test
