#include "host/store/postgres/carried_history.h"

#include "host/store/postgres/session.h"

namespace qorhost::postgres {

void CarriedHistory::EachEntry(const std::function<void(const CarriedEntry&)>& take) {
  CarriedEntry read;
  const auto end = [&] {
    if (read.entry.entry != 0) take(read);
  };
  // One statement for all: each entry comes with each of its further pieces, or once with none.
  (void)session_.Own(
      R"(SELECT E."RID", E."At", E."Who", E."Origin", E."UnitKey", E."What", E."Previous", )"
      R"(E."Rows", E."Hash", P."Rows" FROM "AuditEntries" E LEFT JOIN "AuditRows" P )"
      R"(ON P."Entry" = E."RID" ORDER BY E."RID", P."Piece")",
      {}, [&](const Result& row) {
        if (row.Number(0, 0) != read.entry.entry) {
          end();
          read = {};
          read.entry.entry = row.Number(0, 0);
          read.entry.at = row.Text(0, 1);
          read.entry.who = row.Text(0, 2);
          read.entry.origin = row.Text(0, 3);
          if (!row.IsNull(0, 4)) read.entry.unitKey = static_cast<std::int32_t>(row.Number(0, 4));
          read.entry.what = row.Text(0, 5);
          if (!row.IsNull(0, 6)) read.previous = row.Number(0, 6);
          read.rows.emplace_back(row.Text(0, 7));
          read.hash = row.Text(0, 8);
        }
        if (!row.IsNull(0, 9)) read.rows.emplace_back(row.Text(0, 9));
      });
  end();
}

std::vector<std::pair<std::int32_t, UnitVersion>> CarriedHistory::Versions() {
  const Result read = session_.Own(
      R"(SELECT "UnitKey", "Entry", "Mark" FROM "UnitVersions" WHERE "Entry">0 ORDER BY "UnitKey")");
  std::vector<std::pair<std::int32_t, UnitVersion>> versions;
  for (int row = 0; row < read.rows(); ++row) {
    versions.emplace_back(static_cast<std::int32_t>(read.Number(row, 0)),
                          UnitVersion{read.Number(row, 1), read.Number(row, 2)});
  }
  return versions;
}

void CarriedHistory::Add(const CarriedEntry& carried) {
  const WorkEntry& entry = carried.entry;
  const std::int32_t homeUnit = entry.unitKey.value_or(0);  // beside whose rows it lies
  SentValues values;
  values.AddNumber(homeUnit);
  values.AddNumber(entry.entry);
  values.AddText(entry.at);
  values.AddText(entry.who);
  values.AddText(entry.origin);
  entry.unitKey ? values.AddNumber(*entry.unitKey) : values.AddNull();
  carried.previous ? values.AddNumber(*carried.previous) : values.AddNull();
  values.AddText(entry.what);
  values.AddText(carried.rows.front());
  values.AddText(carried.hash);
  (void)session_.Own(
      R"(INSERT INTO "AuditEntries" ("HomeUnit", "RID", "At", "Who", "Origin", "UnitKey", )"
      R"("Previous", "What", "Rows", "Hash") VALUES ($1::int4, $2::int8, $3::text, $4::text, )"
      R"($5::text, $6::int4, $7::int8, $8::text, $9::text, $10::text))",
      values);
  for (std::size_t piece = 1; piece < carried.rows.size(); ++piece) {
    SentValues further;
    further.AddNumber(homeUnit);
    further.AddNumber(entry.entry);
    further.AddNumber(static_cast<std::int64_t>(piece));
    further.AddText(carried.rows[piece]);
    (void)session_.Own(
        R"(INSERT INTO "AuditRows" ("HomeUnit", "Entry", "Piece", "Rows") VALUES ($1::int4, )"
        R"($2::int8, $3::int4, $4::text))",
        further);
  }
  SentValues last;
  last.AddNumber(entry.entry);
  // Those that an undone work was given stay behind.
  (void)session_.Own(
      R"(SELECT setval('"AuditNumbers"', greatest($1::int8, "last_value")) FROM "AuditNumbers")",
      last);
}

void CarriedHistory::AddVersion(std::int32_t unitKey, const UnitVersion& version) {
  SentValues values;
  values.AddNumber(unitKey);
  values.AddNumber(version.entry);
  values.AddNumber(version.mark);
  (void)session_.Own(
      R"(INSERT INTO "UnitVersions" ("UnitKey", "Entry", "Mark") VALUES ($1::int4, $2::int8, )"
      R"($3::int8))",
      values);
}

}  // namespace qorhost::postgres
