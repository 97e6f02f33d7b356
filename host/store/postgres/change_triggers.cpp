#include "host/store/postgres/change_triggers.h"

#include <fmt/format.h>

#include <array>

#include "host/dialect/catalog.h"

namespace qorhost::postgres {

namespace {

constexpr std::string_view kFunction = R"sql(
CREATE FUNCTION desktop.tell_changes() RETURNS trigger
LANGUAGE plpgsql AS $$
DECLARE
  told text;
BEGIN
  IF TG_OP = 'INSERT' THEN
    FOR told IN SELECT json_build_object('table', TG_TABLE_NAME, 'after', row_to_json(n))::text
                FROM new_rows n ORDER BY n."RID" LOOP
      RAISE INFO USING MESSAGE = told, ERRCODE = 'QHROW';
    END LOOP;
  ELSIF TG_OP = 'DELETE' THEN
    FOR told IN SELECT json_build_object('table', TG_TABLE_NAME, 'before', row_to_json(o))::text
                FROM old_rows o ORDER BY o."RID" LOOP
      RAISE INFO USING MESSAGE = told, ERRCODE = 'QHROW';
    END LOOP;
  ELSE
    FOR told IN SELECT json_build_object('table', TG_TABLE_NAME, 'before', row_to_json(o),
                                         'after', row_to_json(n))::text
                FROM old_rows o JOIN new_rows n ON n."RID" = o."RID" ORDER BY o."RID" LOOP
      RAISE INFO USING MESSAGE = told, ERRCODE = 'QHROW';
    END LOOP;
  END IF;
  RETURN NULL;
END $$;
)sql";

struct Event {
  std::string_view name;
  std::string_view rows;
};

constexpr std::array kEvents{
    Event{"INSERT", "NEW TABLE AS new_rows"},
    Event{"UPDATE", "OLD TABLE AS old_rows NEW TABLE AS new_rows"},
    Event{"DELETE", "OLD TABLE AS old_rows"},
};

}  // namespace

std::string ChangeTriggersText() {
  std::string text(kFunction);
  for (const dialect::Table& table : dialect::Tables()) {
    for (const Event& event : kEvents) {
      text += fmt::format(
          R"(CREATE TRIGGER "Tell{0}" AFTER {0} ON "{1}" REFERENCING {2} FOR EACH STATEMENT )"
          "EXECUTE FUNCTION desktop.tell_changes();\n",
          event.name, table.name, event.rows);
    }
  }
  return text;
}

}  // namespace qorhost::postgres
