#include "host/desks/store_copy.h"

#include <fmt/format.h>

#include <memory>
#include <string>

#include "frame/convert.h"
#include "host/desks/carried_store.h"
#include "host/desks/store_file.h"
#include "host/files/file_kind.h"
#include "host/files/whole_file.h"
#include "host/store/engines/opening.h"

namespace qorhost {

namespace {

namespace fs = std::filesystem;

void RequireTwoStores(const CopyOrder& order) {
  const bool isSame = IsOnServer(order.from) || IsOnServer(order.to)
                          ? order.from == order.to
                          : AreOneFile(order.from, order.to);
  if (isSame) {
    throw RefusedError(
        fmt::format("'{}' is copied into itself: name another store", order.from.string()));
  }
}

bool IsThere(const fs::path& name) {
  return IsOnServer(name) ? IsStoreOnServer(name)
                          : KindOf(name, Links::kAreSeen) != FileKind::kNone;
}

/// What the history calls it: a server's name without its options.
std::string NameFor(const Store& store, const fs::path& name) {
  return IsOnServer(name) ? store.name() : name.filename().string();
}

UnitKeys AllUnits(SqlSession& session) {
  const QueryResult rows = session.Select("SELECT UnitKey FROM Units ORDER BY UnitKey");
  UnitKeys units;
  for (const ResultRow row : rows.rows()) units.push_back(qorcred::ToLong(row[0]));
  return units;
}

CopiedUnits RowsOf(SqlSession& session) {
  CopiedUnits copied;
  for (const CopiedTable& table : CopiedTables()) {
    copied.rows.emplace_back(table.name, CountRows(session, table, {}));
  }
  return copied;
}

/// One copy, whatever the place that it comes to.
class Copy {
 public:
  Copy(const CopyOrder& order, const Store& store, SqlSession& from)
      : order_(order), from_(from), what_("copy from " + NameFor(store, order.from)) {}

  void operator()(SqlSession& to) {
    made_.isWhole = order_.units.empty() && IsNewStore(to);
    if (made_.isWhole) {
      CarryStore(from_, to, order_.progress, order_.trial);
      made_.copied = RowsOf(from_);
    } else {
      made_.copied = CopyUnits(from_, to, order_.units.empty() ? AllUnits(from_) : order_.units,
                               what_, order_.progress);
    }
  }
  [[nodiscard]] StoreCopy& made() { return made_; }

 private:
  const CopyOrder& order_;
  SqlSession& from_;
  std::string what_;
  StoreCopy made_;
};

}  // namespace

StoreCopy CopyStore(const CopyOrder& order) {
  RequireTwoStores(order);
  const std::unique_ptr<Store> source = OpenStoreFile(order.from, Access::kRead, order.patience);
  const std::unique_ptr<SqlSession> from = source->StartSession(order.clock);
  const Undoable oneState(from->look());
  Copy copy(order, *source, *from);
  if (!IsThere(order.to)) {
    PutStore(order.to,
             {false, order.clock, order.author, order.trial, [&copy](SqlSession& to) { copy(to); }},
             Standing::kStays, order.patience);
    copy.made().isNewStore = true;
    return std::move(copy.made());
  }
  const std::unique_ptr<Store> target = OpenStoreFile(order.to, Access::kChange, order.patience);
  const std::unique_ptr<SqlSession> to = target->StartSession(order.clock);
  to->work().SignAs(order.author);
  if (order.trial == Trial::kYes) to->work().OnlyTry();
  copy(*to);
  return std::move(copy.made());
}

}  // namespace qorhost
