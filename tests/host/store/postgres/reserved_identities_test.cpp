// Rows that are held on a server: what the schema promises for them, and two seats that add rows to
// one table at the same time.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "frame/date.h"
#include "host/dialect/catalog.h"
#include "host/store/postgres/schema.h"
#include "host/store/postgres/store.h"
#include "host/store/write_buffer.h"
#include "test_server.h"

namespace qorhost::postgres::test {

namespace {

class ReservedIdentities : public testing::Test {
 protected:
  void SetUp() override {
    if (const std::string missing = TestServer::Missing(); !missing.empty()) {
      GTEST_SKIP() << missing;
    }
    static int count = 0;
    name_ = TestServer::Shared().Create("reserved" + std::to_string(++count));
    store_ = std::make_unique<Store>(OpenServerStore(name_, OpenMode::kCreate), Patience(), false);
  }

  [[nodiscard]] std::int64_t Number(const std::string& sql) const {
    return store_->connection().Run(sql).Number(0, 0);
  }

  std::string name_;
  std::unique_ptr<Store> store_;
};

qorcred::Date AtTwelve() {
  return qorcred::FromCivil({2026, 1, 31, 12, 0, 0});
}

TEST_F(ReservedIdentities, AreOfTablesWithoutARuleThatARowCouldBreak) {
  for (const dialect::Table& table : dialect::Tables()) {
    if (!IsHeldTable(table.name)) {
      continue;
    }
    SCOPED_TRACE(table.name);
    const std::string name = fmt::format(R"('"{}"'::regclass)", table.name);
    // But for the one of the identities, each of which is given out once.
    EXPECT_EQ(Number(fmt::format(
                  "SELECT count(*) FROM pg_index WHERE indisunique AND NOT indisprimary AND "
                  "indrelid={0} AND indkey::text <> (SELECT attnum::text FROM pg_attribute WHERE "
                  "attrelid={0} AND attname='RID')",
                  name)),
              0);
    EXPECT_EQ(Number(fmt::format("SELECT count(*) FROM pg_constraint WHERE (conrelid={0} OR "
                                 "confrelid={0}) AND contype IN ('f', 'u', 'x')",
                                 name)),
              0);
    EXPECT_EQ(Number("SELECT count(*) FROM pg_constraint WHERE contype='c' AND "
                     "pg_get_constraintdef(oid) <> 'CHECK ((\"RID\" > 0))' AND conrelid=" +
                     name),
              0);
    EXPECT_EQ(Number("SELECT count(*) FROM pg_attribute WHERE attnotnull AND attnum > 0 AND "
                     "upper(attname) NOT IN ('RID', 'UNITKEY') AND attrelid=" +
                     name),
              0);
    EXPECT_EQ(Number("SELECT count(*) FROM pg_trigger WHERE NOT tgisinternal AND tgname NOT LIKE "
                     "'Tell%' AND tgrelid=" +
                     name),
              0);
  }
}

TEST_F(ReservedIdentities, OfTwoSeatsAreDifferentAndRise) {
  constexpr std::int32_t kRows = 500;
  Store other(OpenServerStore(name_, OpenMode::kReadWrite), Patience(), false);
  const std::array sessions{store_->StartSession(AtTwelve), other.StartSession(AtTwelve)};
  for (std::int32_t unit = 1; unit <= 2; ++unit) {
    sessions.at(static_cast<std::size_t>(unit - 1))
        ->AddRow("Units", std::vector<Field>{{"UnitKey", unit}});
  }
  std::array<std::int64_t, 2> latest{};
  for (std::int32_t unit = 1; unit <= 2; ++unit) {
    sessions.at(static_cast<std::size_t>(unit - 1))->work().Begin({{unit}, "issue", {}});
  }
  for (std::int32_t number = 1; number <= kRows; ++number) {
    for (std::size_t seat = 0; seat < sessions.size(); ++seat) {
      const std::int64_t rid =
          sessions.at(seat)
              ->Change(fmt::format("INSERT INTO CREDENTIALBANK(UnitKey,RID,PINNo) VALUES "
                                   "({},_ROWID_,{})",
                                   seat + 1, number),
                       dialect::StatementKind::kInsert)
              .newRow;
      EXPECT_GT(rid, latest.at(seat));
      latest.at(seat) = rid;
    }
  }
  for (const auto& session : sessions) {
    EXPECT_TRUE(session->work().Commit());
  }
  EXPECT_EQ(Number(R"(SELECT count(*) FROM qorhost."CredentialBank")"), 2 * kRows);
  EXPECT_EQ(Number(R"(SELECT count(*) FROM (SELECT "PINNo", row_number() OVER (PARTITION BY )"
                   R"("UnitKey" ORDER BY "RID") AS place FROM qorhost."CredentialBank") n )"
                   R"(WHERE "PINNo" <> place)"),
            0);
  EXPECT_EQ(sessions[0]->audit().Check().size(), 0U);
  // What the audit tells of the rows is what is there: each one once.
  const std::int64_t last = Number(R"(SELECT max("RID") FROM qorhost."AuditEntries")");
  for (std::int64_t entry = last - 1; entry <= last; ++entry) {
    std::int64_t told = 0;
    for (const RowChange& change : sessions[0]->audit().RowsOf(entry)) {
      told += change.lastRid - change.rid + 1;
    }
    EXPECT_EQ(told, kRows);
  }
}

TEST_F(ReservedIdentities, OfFewRowsAreNone) {
  const auto session = store_->StartSession(AtTwelve);
  session->AddRow("Units", std::vector<Field>{{"UnitKey", 1}});
  std::int64_t expected = 0;
  for (int operation = 0; operation < 5; ++operation) {
    session->work().Begin({{1}, "issue", {}});
    for (int row = 0; row < 3; ++row) {
      EXPECT_EQ(session
                    ->Change("INSERT INTO CREDENTIALBANK(UnitKey,RID,PINNo) VALUES (1,_ROWID_,1)",
                             dialect::StatementKind::kInsert)
                    .newRow,
                ++expected);
    }
    EXPECT_TRUE(session->work().Commit());
  }
}

}  // namespace

}  // namespace qorhost::postgres::test
