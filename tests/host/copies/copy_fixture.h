// Stores in files and on servers, and what they hold as text.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "frame/convert.h"
#include "frame/date.h"
#include "host/desks/session.h"
#include "host/desks/store_copy.h"
#include "host/desks/store_file.h"
#include "host/dialect/catalog.h"
#include "tests/host/store/store_names.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {

enum class Kind : bool { kFile, kServer };

class CopyFixture : public testing::Test {
 protected:
  [[nodiscard]] static Clock AtNoon() {
    return [] { return qorcred::FromCivil({2026, 1, 31, 12, 0, 0}); };
  }
  static bool LacksServer(Kind one, Kind other = Kind::kFile) {
    return (one == Kind::kServer || other == Kind::kServer) && !WhyNoServer().empty();
  }

  /// A name under which there is no store yet.
  [[nodiscard]] std::string NewName(Kind kind) {
    return kind == Kind::kServer ? NewServerName()
                                 : folder_.File(std::to_string(++count_) + ".db").string();
  }
  /// The demo building, changed by an operation of an operator: it has a history.
  std::string DemoStore(Kind kind) {
    if (kind == Kind::kServer) {
      static const std::string made = [this] {
        const std::string name = NewServerName();
        MakeDemoStore(name);
        return name;
      }();
      return NewServerNameLike(made);
    }
    const std::string name = NewName(kind);
    MakeDemoStore(name);
    return name;
  }
  void MakeDemoStore(const std::string& name) {
    PutStore(name, {true, AtNoon(), {"Ann", "test", {}}}, Standing::kStays);
    const std::unique_ptr<Store> store = OpenStoreFile(name, Access::kChange);
    const std::unique_ptr<SqlSession> session = store->StartSession(AtNoon());
    WorkGuard guard(session->work(), {{2}, "rename", {}});
    (void)session->Change("UPDATE Tenants SET LastName='Gro\xC3\x9F, {\"x\"}' WHERE RID=62", {});
    guard.Commit();
  }
  /// A name under which there is a store that nothing was done with.
  [[nodiscard]] std::string NewStoreName(Kind kind) {
    if (kind == Kind::kServer) {
      static const std::string made = [] {
        const std::string name = NewServerName();
        PutStore(name, {false, AtNoon(), {}}, Standing::kStays);
        return name;
      }();
      return NewServerNameLike(made);
    }
    const std::string name = NewName(kind);
    PutStore(name, {false, AtNoon(), {}}, Standing::kStays);
    return name;
  }

  [[nodiscard]] static CopyOrder OrderFor(const std::string& from, const std::string& to,
                                          UnitKeys units = {}) {
    CopyOrder order;
    order.from = from;
    order.to = to;
    order.units = std::move(units);
    order.clock = AtNoon();
    order.author = {"Bob", "test", {}};
    return order;
  }

  /// What a SELECT gives, a row a line.
  [[nodiscard]] static std::vector<std::string> Rows(SqlSession& session, const std::string& sql) {
    const QueryResult result = session.Select(sql);
    std::vector<std::string> rows;
    for (const ResultRow row : result.rows()) {
      std::string& text = rows.emplace_back();
      for (std::size_t column = 0; column < result.columns.size(); ++column) {
        const qorcred::Value& cell = row[static_cast<std::int32_t>(column)];
        text += cell.Is(qorcred::ValueType::kNull) ? "Null|" : qorcred::TextOrEmpty(cell) + "|";
      }
    }
    return rows;
  }
  [[nodiscard]] static std::vector<std::string> Rows(const std::string& name,
                                                     const std::string& sql) {
    const std::unique_ptr<Store> store = OpenStoreFile(name, Access::kRead);
    return Rows(*store->StartSession(AtNoon()), sql);
  }
  /// Every cell of every table, identities among them, and every entry of the history.
  [[nodiscard]] static std::vector<std::string> Everything(const std::string& name) {
    const std::unique_ptr<Store> store = OpenStoreFile(name, Access::kRead);
    const std::unique_ptr<SqlSession> session = store->StartSession(AtNoon());
    std::vector<std::string> all;
    for (const dialect::Table& table : dialect::Tables()) {
      all.emplace_back(table.name);
      for (std::string& row :
           Rows(*session, "SELECT * FROM " + std::string(table.name) + " ORDER BY RID")) {
        all.push_back(std::move(row));
      }
    }
    for (const WorkEntry& entry : session->audit().After(0, std::nullopt)) {
      all.push_back(std::to_string(entry.entry) + "|" + entry.at + "|" + entry.who + "|" +
                    entry.what + "|" + session->audit().HashOf(entry.entry));
    }
    for (const ChainHead& head : session->audit().Heads()) {
      all.push_back(std::to_string(head.unitKey) + "|" + head.hash);
    }
    EXPECT_TRUE(session->audit().Check().empty());
    return all;
  }

  TemporaryFolder folder_;
  int count_ = 0;
};

}  // namespace qorhost::test
