#include "host/store/engines/opening.h"
#include "host/store/sqlite/store.h"
#include "tests/host/store/engine.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {

namespace {

class Folder final : public StorePlace {
 public:
  [[nodiscard]] std::unique_ptr<Store> Open(OpenMode mode) const override {
    return OpenStore(folder_.File("building.db"), mode);
  }

 private:
  TemporaryFolder folder_;
};

}  // namespace

std::unique_ptr<Store> FreshStore() {
  return OpenMemoryStore();
}

std::unique_ptr<StorePlace> NewPlace() {
  return std::make_unique<Folder>();
}

bool KeepsRowsOfNoUnit() {
  return true;
}

void RunRaw(Store& store, const std::string& sql) {
  sqlite::DatabaseOf(store).Run(sql);
}

std::string TextOfRaw(Store& store, const std::string& sql) {
  sqlite::Statement statement(sqlite::DatabaseOf(store), sql);
  return statement.Step() ? std::string(statement.Text(0)) : "no row";
}

std::int64_t NumberOfRaw(Store& store, const std::string& sql) {
  return sqlite::DatabaseOf(store).Number(sql);
}

}  // namespace qorhost::test
