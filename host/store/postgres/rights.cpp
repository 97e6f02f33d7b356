#include "host/store/postgres/rights.h"

#include <fmt/format.h>

#include <array>
#include <string_view>

#include "host/dialect/catalog.h"
#include "host/dialect/names.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

namespace {

using dialect::QuotedName;

// What keeps the audit as it is from those who may add to it. Whoever owns a table is not kept from
// anything by its triggers, for he could drop them.
//
// Entries come in the order of their numbers, one for each transaction that stores: a number is the
// last one, which is raised by one at a time in a row that its transaction has locked until its
// end. A piece of an entry is added by the transaction that adds the entry. A version is raised to
// that entry.
constexpr std::string_view kGuards = R"sql(
CREATE OR REPLACE FUNCTION desktop.is_owned(relation oid) RETURNS boolean
LANGUAGE sql STABLE AS $$
  SELECT pg_has_role(relowner, 'USAGE') FROM pg_class WHERE oid = relation
$$;

CREATE OR REPLACE FUNCTION desktop.guard_end() RETURNS trigger
LANGUAGE plpgsql AS $$
BEGIN
  IF NEW."Last" <> OLD."Last" + 1 AND NOT desktop.is_owned(TG_RELID) THEN
    RAISE insufficient_privilege USING MESSAGE = 'entries of the audit are numbered one by one';
  END IF;
  RETURN NEW;
END $$;

CREATE OR REPLACE FUNCTION desktop.guard_entry() RETURNS trigger
LANGUAGE plpgsql AS $$
BEGIN
  IF desktop.is_owned(TG_RELID) OR EXISTS (
      SELECT 1 FROM qorhost."AuditEnd" e
      WHERE e."Last" = NEW."RID" AND e.xmin = pg_current_xact_id()::xid) THEN
    RETURN NEW;
  END IF;
  RAISE insufficient_privilege USING MESSAGE = 'an entry of the audit is added behind the last one';
END $$;

CREATE OR REPLACE FUNCTION desktop.guard_piece() RETURNS trigger
LANGUAGE plpgsql AS $$
BEGIN
  IF desktop.is_owned(TG_RELID) OR EXISTS (
      SELECT 1 FROM qorhost."AuditEntries" e
      WHERE e."RID" = NEW."Entry" AND e.xmin = pg_current_xact_id()::xid) THEN
    RETURN NEW;
  END IF;
  RAISE insufficient_privilege USING MESSAGE = 'an entry of the audit is added whole';
END $$;

CREATE OR REPLACE FUNCTION desktop.guard_version() RETURNS trigger
LANGUAGE plpgsql AS $$
BEGIN
  IF desktop.is_owned(TG_RELID) OR (TG_OP = 'INSERT' AND NEW."Entry" = 0) OR EXISTS (
      SELECT 1 FROM qorhost."AuditEntries" e
      WHERE e."RID" = NEW."Entry" AND e.xmin = pg_current_xact_id()::xid) THEN
    RETURN NEW;
  END IF;
  RAISE insufficient_privilege USING MESSAGE = 'a version is that of an entry of the audit';
END $$;

CREATE OR REPLACE TRIGGER "Guard" BEFORE UPDATE ON qorhost."AuditEnd"
  FOR EACH ROW EXECUTE FUNCTION desktop.guard_end();
CREATE OR REPLACE TRIGGER "Guard" BEFORE INSERT ON qorhost."AuditEntries"
  FOR EACH ROW EXECUTE FUNCTION desktop.guard_entry();
CREATE OR REPLACE TRIGGER "Guard" BEFORE INSERT ON qorhost."AuditRows"
  FOR EACH ROW EXECUTE FUNCTION desktop.guard_piece();
CREATE OR REPLACE TRIGGER "Guard" BEFORE INSERT OR UPDATE ON qorhost."UnitVersions"
  FOR EACH ROW EXECUTE FUNCTION desktop.guard_version();

-- It moves the identities that are given out, in sequences that nobody else is to move.
ALTER FUNCTION desktop.claimed(text, int4) SECURITY DEFINER SET search_path = qorhost, pg_temp;
)sql";

struct Grant {
  std::string_view table;
  std::string_view rights;
};

// Beside the tables of the dialect, whose rows are read and changed.
constexpr std::array kOperatorGrants{
    Grant{"AuditEntries", "SELECT, INSERT"}, Grant{"AuditRows", "SELECT, INSERT"},
    Grant{"AuditEnd", "SELECT, UPDATE"},     Grant{"UnitVersions", "SELECT, INSERT, UPDATE"},
    Grant{"StoreSchema", "SELECT"},
};

/// In the place of {}: the role's name.
constexpr std::string_view kToOperators = R"sql(
REVOKE ALL ON ALL TABLES IN SCHEMA qorhost FROM {0};
REVOKE ALL ON SCHEMA qorhost, desktop FROM {0};
GRANT USAGE ON SCHEMA qorhost, desktop TO {0};
GRANT EXECUTE ON ALL FUNCTIONS IN SCHEMA desktop TO {0};
GRANT USAGE ON ALL SEQUENCES IN SCHEMA qorhost TO {0};
)sql";

// Indexes and the sequences of identities follow their tables.
constexpr std::string_view kToAdministrators = R"sql(
DO $do$
DECLARE
  one record;
BEGIN
  -- Who is to own a table must be able to make one in its schema.
  FOR one IN SELECT nspname AS name FROM pg_namespace WHERE nspname IN ('qorhost', 'desktop') LOOP
    EXECUTE format('ALTER SCHEMA %I OWNER TO {0}', one.name);
  END LOOP;
  FOR one IN SELECT oid::regclass AS name FROM pg_class
             WHERE relnamespace = 'qorhost'::regnamespace AND relkind IN ('r', 'p', 'v') LOOP
    EXECUTE format('ALTER TABLE %s OWNER TO {0}', one.name);
  END LOOP;
  FOR one IN SELECT oid::regprocedure AS name FROM pg_proc
             WHERE pronamespace = 'desktop'::regnamespace LOOP
    EXECUTE format('ALTER ROUTINE %s OWNER TO {0}', one.name);
  END LOOP;
END $do$;
)sql";

void RequireRole(Connection& connection, const std::string& role) {
  const std::array name{Sent(role)};
  if (connection.Run("SELECT 1 FROM pg_roles WHERE rolname = $1::name", name).rows() > 0) {
    return;
  }
  if (connection
          .Run(
              "SELECT 1 FROM pg_roles WHERE rolname = current_user AND (rolcreaterole OR rolsuper)")
          .rows() == 0) {
    throw StoreError(
        fmt::format("There is no role '{0}' on the server, and this user may not make it: ask its "
                    "administrator for CREATE ROLE {1} NOLOGIN",
                    role, QuotedName(role)),
        StoreFault::kNoRights);
  }
  connection.RunAll(fmt::format("CREATE ROLE {} NOLOGIN", QuotedName(role)));
}

std::string TextForOperators(const std::string& role) {
  std::string text = fmt::format(fmt::runtime(kToOperators), role);
  for (const dialect::Table& table : dialect::Tables()) {
    text += fmt::format("GRANT SELECT, INSERT, UPDATE, DELETE ON qorhost.{} TO {};\n",
                        QuotedName(table.name), role);
  }
  for (const Grant& grant : kOperatorGrants) {
    text +=
        fmt::format("GRANT {} ON qorhost.{} TO {};\n", grant.rights, QuotedName(grant.table), role);
  }
  return text;
}

/// Who makes it is to stay able to use what he has made.
std::string TextForAdministrators(const std::string& role) {
  return fmt::format(
             "DO $do$ BEGIN IF NOT pg_has_role({1}, 'MEMBER') THEN "
             "GRANT {0} TO CURRENT_USER; END IF; "
             "EXECUTE format('GRANT CREATE ON DATABASE %I TO {0}', current_database()); "
             "END $do$;\n",
             role, "'" + role.substr(1, role.size() - 2) + "'") +
         fmt::format(fmt::runtime(kToAdministrators), role);
}

void RequireRoleName(const std::string& role) {
  // Some texts above hold it between other quotes.
  if (role.find_first_of("\"'%$\\") != std::string::npos) {
    throw StoreError(fmt::format("'{}' is no name for a role here: use letters and digits", role));
  }
}

}  // namespace

void GrantRights(Connection& connection, const Roles& roles) {
  RequireRoleName(roles.operators);
  RequireRoleName(roles.administrators);
  if (!roles.operators.empty() && roles.operators == roles.administrators) {
    throw StoreError("Operators and administrators need roles of their own");
  }
  connection.Begin();
  try {
    std::string text(kGuards);
    if (!roles.operators.empty()) {
      RequireRole(connection, roles.operators);
      text += TextForOperators(QuotedName(roles.operators));
    }
    if (!roles.administrators.empty()) {
      RequireRole(connection, roles.administrators);
      text += TextForAdministrators(QuotedName(roles.administrators));
    }
    connection.RunAll(text);
    connection.RunAll("COMMIT");
    connection.UndoWhatIsOpen();
  } catch (...) {
    connection.UndoWhatIsOpen();
    throw;
  }
}

}  // namespace qorhost::postgres
