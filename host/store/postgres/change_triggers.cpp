#include "host/store/postgres/change_triggers.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "host/dialect/catalog.h"

namespace qorhost::postgres {

namespace {

// Row by row, which for one row costs half of what a statement's rows cost; they come in the order
// in which the server meets them. The table's name is handed over to all of them, for a part of a
// table has one of its own.
constexpr std::string_view kFunction = R"sql(
CREATE FUNCTION desktop.tell_change() RETURNS trigger
LANGUAGE plpgsql AS $$
BEGIN
  IF TG_OP = 'UPDATE' THEN
    RAISE INFO '{"table":"%","before":%,"after":%}', TG_ARGV[0], row_to_json(OLD), row_to_json(NEW)
      USING ERRCODE = 'QHROW';
  ELSIF TG_OP = 'INSERT' THEN
    RAISE INFO '{"table":"%","after":%}', TG_ARGV[0], row_to_json(NEW) USING ERRCODE = 'QHROW';
  ELSE
    RAISE INFO '{"table":"%","before":%}', TG_ARGV[0], row_to_json(OLD) USING ERRCODE = 'QHROW';
  END IF;
  RETURN NULL;
END $$;
)sql";

// All rows of a statement, which costs more. Among partitions: a row whose unit is changed goes
// from one to another, of which the triggers of rows tell as of a deletion.
constexpr std::string_view kAllFunction = R"sql(
CREATE FUNCTION desktop.tell_changes() RETURNS trigger
LANGUAGE plpgsql AS $$
DECLARE
  told text;
BEGIN
  IF TG_OP = 'INSERT' THEN
    FOR told IN SELECT json_build_object('table', TG_ARGV[0], 'after', row_to_json(n))::text
                FROM new_rows n ORDER BY n."RID" LOOP
      RAISE INFO USING MESSAGE = told, ERRCODE = 'QHROW';
    END LOOP;
  ELSIF TG_OP = 'DELETE' THEN
    FOR told IN SELECT json_build_object('table', TG_ARGV[0], 'before', row_to_json(o))::text
                FROM old_rows o ORDER BY o."RID" LOOP
      RAISE INFO USING MESSAGE = told, ERRCODE = 'QHROW';
    END LOOP;
  ELSE
    FOR told IN SELECT json_build_object('table', TG_ARGV[0], 'before', row_to_json(o),
                                         'after', row_to_json(n))::text
                FROM old_rows o JOIN new_rows n ON n."RID" = o."RID" ORDER BY o."RID" LOOP
      RAISE INFO USING MESSAGE = told, ERRCODE = 'QHROW';
    END LOOP;
  END IF;
  RETURN NULL;
END $$;
)sql";

// Of rows that follow each other and count alike, which is what most statements of many rows add,
// the first is told for all. Which rows count is said where they are counted (change_log.cpp).
constexpr std::string_view kAddedFunction = R"sql(
CREATE FUNCTION desktop.tell_added() RETURNS trigger
LANGUAGE plpgsql AS $$
DECLARE
  told text;
BEGIN
  IF TG_ARGV[0] = 'ProgramSteps' THEN
    SELECT json_build_object('table', TG_ARGV[0], 'after', row_to_json(n), 'last', a.last)::text
      INTO told
      FROM (SELECT min("RID") AS first, max("RID") AS last, count(*) AS number FROM new_rows
            HAVING max("RID") - min("RID") = count(*) - 1 AND
                   min("UnitKey") = max("UnitKey") AND count("UnitKey") = count(*) AND
                   min("Sent") = max("Sent") AND count("Sent") = count(*)) a
      JOIN new_rows n ON n."RID" = a.first;
  ELSE
    SELECT json_build_object('table', TG_ARGV[0], 'after', row_to_json(n), 'last', a.last)::text
      INTO told
      FROM (SELECT min("RID") AS first, max("RID") AS last, count(*) AS number FROM new_rows
            HAVING max("RID") - min("RID") = count(*) - 1 AND
                   min("UnitKey") = max("UnitKey") AND count("UnitKey") = count(*)) a
      JOIN new_rows n ON n."RID" = a.first;
  END IF;
  IF told IS NOT NULL THEN
    RAISE INFO USING MESSAGE = told, ERRCODE = 'QHROW';
    RETURN NULL;
  END IF;
  FOR told IN SELECT json_build_object('table', TG_ARGV[0], 'after', row_to_json(n))::text
              FROM new_rows n ORDER BY n."RID" LOOP
    RAISE INFO USING MESSAGE = told, ERRCODE = 'QHROW';
  END LOOP;
  RETURN NULL;
END $$;
)sql";

// The tables whose rows are told so.
constexpr std::array<std::string_view, 4> kToldTogether{"CredentialBank", "Tenants",
                                                        "TenantsBackup", "ProgramSteps"};

struct Event {
  std::string_view name;
  std::string_view rows;
};

constexpr std::array kEvents{
    Event{"INSERT", "NEW TABLE AS new_rows"},
    Event{"UPDATE", "OLD TABLE AS old_rows NEW TABLE AS new_rows"},
    Event{"DELETE", "OLD TABLE AS old_rows"},
};

std::string ForEachRow(std::string_view table) {
  return fmt::format("FOR EACH ROW EXECUTE FUNCTION desktop.tell_change('{}')", table);
}

std::string ForEachStatement(const Event& event, std::string_view function,
                             std::string_view table) {
  return fmt::format("REFERENCING {} FOR EACH STATEMENT EXECUTE FUNCTION desktop.{}('{}')",
                     event.rows, function, table);
}

}  // namespace

std::string ChangeTriggersText(Spread spread) {
  std::string text(kFunction);
  text.append(kAllFunction).append(kAddedFunction);
  for (const dialect::Table& table : dialect::Tables()) {
    const bool isTogether =
        std::find(kToldTogether.begin(), kToldTogether.end(), table.name) != kToldTogether.end();
    for (const Event& event : kEvents) {
      const std::string teller =
          isTogether && event.name == "INSERT" ? ForEachStatement(event, "tell_added", table.name)
          : spread == Spread::kPartitions      ? ForEachStatement(event, "tell_changes", table.name)
                                               : ForEachRow(table.name);
      text += fmt::format("CREATE TRIGGER \"Tell{0}\" AFTER {0} ON \"{1}\" {2};\n", event.name,
                          table.name, teller);
    }
  }
  return text;
}

}  // namespace qorhost::postgres
