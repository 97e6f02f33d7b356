#include <gtest/gtest.h>

#include <cstdlib>
#include <string_view>

#include "host/store/postgres/schema.h"
#include "host/store/postgres/store.h"
#include "quoted_names.h"
#include "test_server.h"
#include "tests/host/store/engine.h"

namespace qorhost::test {

namespace {

using postgres::test::TestServer;
using postgres::test::WithQuotedNames;

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
