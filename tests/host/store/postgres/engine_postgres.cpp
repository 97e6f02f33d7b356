#include <gtest/gtest.h>

#include <cctype>
#include <cstdlib>
#include <set>
#include <string_view>

#include "host/dialect/catalog.h"
#include "host/store/postgres/schema.h"
#include "host/store/postgres/store.h"
#include "test_server.h"
#include "tests/host/store/engine.h"

namespace qorhost::test {

namespace {

using postgres::test::TestServer;

/// Without a server there is nothing to test.
class NeedsServer final : public testing::Environment {
 public:
  void SetUp() override {
    if (const std::string missing = TestServer::Missing(); !missing.empty()) {
      GTEST_SKIP() << missing;
    }
  }
};

const auto* const kNeedsServer = testing::AddGlobalTestEnvironment(new NeedsServer);

/// The whole program runs on plain tables, or on ones that lie in several places.
postgres::Spread SpreadOfRun() {
  const char* const asked = std::getenv("QORHOST_TEST_SPREAD");
  return asked != nullptr && std::string_view(asked) == "partitions" ? postgres::Spread::kPartitions
                                                                     : postgres::Spread::kNone;
}

/// A database of its own, like one that was made once.
std::string NewDatabase() {
  static const std::string made = [] {
    (void)postgres::OpenServerStore(TestServer::Shared().Create("made"), OpenMode::kCreate,
                                    SpreadOfRun());
    return std::string("made");
  }();
  static int count = 0;
  return TestServer::Shared().Create("store" + std::to_string(++count), made);
}

std::unique_ptr<Store> OpenNamed(const std::string& name, OpenMode mode) {
  return std::make_unique<postgres::Store>(postgres::OpenServerStore(name, mode), Patience(),
                                           mode == OpenMode::kReadOnly);
}

class Database final : public StorePlace {
 public:
  [[nodiscard]] std::unique_ptr<Store> Open(OpenMode mode) const override {
    return OpenNamed(name_, mode);
  }

 private:
  std::string name_ = NewDatabase();
};

const std::set<std::string, std::less<>>& Names() {
  static const std::set<std::string, std::less<>> names = [] {
    std::set<std::string, std::less<>> all{
        "AuditEntries", "AuditRows", "UnitVersions", "At",    "Who",   "Origin", "Previous",
        "What",         "Rows",      "Hash",         "Entry", "Piece", "Mark"};
    for (const dialect::Table& table : dialect::Tables()) {
      all.emplace(table.name);
      for (const dialect::Column& column : table.columns) {
        all.emplace(column.name);
      }
    }
    return all;
  }();
  return names;
}

/// The statement with the store's names in double quotes, as the server tells letter case apart.
std::string WithQuotedNames(std::string_view sql) {
  std::string quoted;
  bool inText = false;
  for (std::size_t at = 0; at < sql.size();) {
    std::size_t end = at;
    while (!inText && end < sql.size() &&
           (std::isalnum(static_cast<unsigned char>(sql[end])) != 0 || sql[end] == '_')) {
      ++end;
    }
    const std::string_view word = sql.substr(at, end - at);
    if (word.empty()) {
      inText = inText != (sql[at] == '\'');
      quoted += sql[at++];
    } else {
      const bool isName = Names().count(word) > 0;
      quoted.append(isName ? "\"" : "").append(word).append(isName ? "\"" : "");
      at = end;
    }
  }
  return quoted;
}

postgres::Connection& ConnectionOf(Store& store) {
  return dynamic_cast<postgres::Store&>(store).connection();
}

}  // namespace

std::unique_ptr<Store> FreshStore() {
  return OpenNamed(NewDatabase(), OpenMode::kReadWrite);
}

std::unique_ptr<StorePlace> NewPlace() {
  return std::make_unique<Database>();
}

bool KeepsRowsOfNoUnit() {
  return false;
}

void RunRaw(Store& store, const std::string& sql) {
  ConnectionOf(store).RunAll(WithQuotedNames(sql));
}

std::string TextOfRaw(Store& store, const std::string& sql) {
  const postgres::Result result = ConnectionOf(store).Run(WithQuotedNames(sql));
  return result.rows() == 0 ? "no row" : std::string(result.Text(0, 0));
}

std::int64_t NumberOfRaw(Store& store, const std::string& sql) {
  return ConnectionOf(store).Run(WithQuotedNames(sql)).Number(0, 0);
}

}  // namespace qorhost::test
