#include "host/store/postgres/rights.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <array>
#include <string_view>

#include "host/dialect/catalog.h"
#include "host/dialect/names.h"
#include "host/store/postgres/role_needs.h"
#include "host/store/postgres/transaction.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

namespace {

using dialect::QuotedName;

// What keeps the audit as it is from those who may add to it. Whoever owns a table is not kept from
// anything by its triggers, for he could drop them.
//
// A number is taken by its own session alone, which was given it last. An entry stands behind the
// last one of its unit, or of all for the whole store: that one's version stays locked until the
// end of the transaction. It says by which login it was stored. A piece of an entry is added by the
// transaction that adds the entry. A version is raised to an entry of that transaction.
constexpr std::string_view kGuards = R"sql(
CREATE OR REPLACE FUNCTION desktop.is_owned(relation oid) RETURNS boolean
LANGUAGE sql STABLE AS $$
  SELECT pg_has_role(relowner, 'USAGE') FROM pg_class WHERE oid = relation
$$;

CREATE OR REPLACE FUNCTION desktop.given_number() RETURNS int8
LANGUAGE plpgsql AS $$
BEGIN
  RETURN currval('qorhost."AuditNumbers"');
EXCEPTION WHEN object_not_in_prerequisite_state THEN
  RETURN 0;
END $$;

CREATE OR REPLACE FUNCTION desktop.guard_entry() RETURNS trigger
LANGUAGE plpgsql AS $$
DECLARE
  before int8;
BEGIN
  IF desktop.is_owned(TG_RELID) THEN
    RETURN NEW;
  END IF;
  IF NEW."UnitKey" IS NULL THEN
    LOCK TABLE qorhost."UnitVersions" IN EXCLUSIVE MODE;
    SELECT max("Entry") INTO before FROM qorhost."UnitVersions";
  ELSE
    SELECT nullif("Entry", 0) INTO before FROM qorhost."UnitVersions"
      WHERE "UnitKey" = NEW."UnitKey" FOR UPDATE;
  END IF;
  IF NEW."RID" <> desktop.given_number() OR NEW."RID" <= before OR
      NEW."HomeUnit" <> coalesce(NEW."UnitKey", 0) OR
      NEW."Previous" IS DISTINCT FROM
        (CASE WHEN NEW."UnitKey" IS NOT NULL THEN before END) THEN
    RAISE insufficient_privilege USING
      MESSAGE = 'an entry of the audit is added behind the last one, with a number of its own';
  END IF;
  IF right(NEW."Origin", length(session_user) + 4) <> ' as ' || session_user THEN
    RAISE insufficient_privilege USING
      MESSAGE = 'an entry of the audit says by which login it was stored';
  END IF;
  RETURN NEW;
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
      WHERE e."RID" = NEW."Entry" AND e.xmin = pg_current_xact_id()::xid
        AND coalesce(e."UnitKey", NEW."UnitKey") = NEW."UnitKey") THEN
    RETURN NEW;
  END IF;
  RAISE insufficient_privilege USING MESSAGE = 'a version is that of an entry of the audit';
END $$;

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
    Grant{"AuditEntries", "SELECT, INSERT"},
    Grant{"AuditRows", "SELECT, INSERT"},
    Grant{"UnitVersions", "SELECT, INSERT, UPDATE"},
    Grant{"StoreSchema", "SELECT"},
};

/// In the place of {0}: the role's name.
constexpr std::string_view kToOperators = R"sql(
REVOKE ALL ON ALL TABLES IN SCHEMA qorhost FROM {0};
REVOKE ALL ON ALL SEQUENCES IN SCHEMA qorhost FROM {0};
REVOKE ALL ON SCHEMA qorhost, desktop FROM {0};
GRANT USAGE ON SCHEMA qorhost, desktop TO {0};
GRANT EXECUTE ON ALL FUNCTIONS IN SCHEMA desktop TO {0};
GRANT USAGE ON ALL SEQUENCES IN SCHEMA qorhost TO {0};
)sql";

// Indexes and the sequences of identities follow their tables; that of the audit's numbers is
// nobody's.
constexpr std::string_view kToOwner = R"sql(
DO $do$
DECLARE
  one record;
BEGIN
  -- At first: whoever comes to own a table must be allowed to make one there.
  FOR one IN SELECT nspname AS name FROM pg_namespace WHERE nspname IN ('qorhost', 'desktop') LOOP
    EXECUTE format('ALTER SCHEMA %I OWNER TO {0}', one.name);
  END LOOP;
  FOR one IN SELECT oid::regclass AS name FROM pg_class
             WHERE relnamespace = 'qorhost'::regnamespace AND relkind IN ('r', 'p', 'v') LOOP
    EXECUTE format('ALTER TABLE %s OWNER TO {0}', one.name);
  END LOOP;
  ALTER SEQUENCE qorhost."AuditNumbers" OWNER TO {0};
  FOR one IN SELECT oid::regprocedure AS name FROM pg_proc
             WHERE pronamespace = 'desktop'::regnamespace LOOP
    EXECUTE format('ALTER ROUTINE %s OWNER TO {0}', one.name);
  END LOOP;
END $do$;
)sql";

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

std::string CurrentUser(Connection& connection) {
  return std::string(connection.Run("SELECT current_user").Text(0, 0));
}

/// Gives it all of the store, what has just been made included; nothing where it has that.
std::string TextForOwner(Connection& connection, const std::string& owner) {
  if (owner == CurrentUser(connection)) {
    return "";
  }
  RequireRoleName(owner);
  return fmt::format(fmt::runtime(kToOwner), QuotedName(owner));
}

}  // namespace

void GrantRightsAtOnce(Connection& connection, const StoreRoles& roles) {
  // The functions that guard the audit are made anew each time.
  InOneTransaction(connection, "pg_proc", [&] { GrantRights(connection, roles); });
}

void GrantRights(Connection& connection, const StoreRoles& roles) {
  const GrantedRights before = RightsOn(connection);
  RequireOwner(connection, before);
  MakeReady(connection, roles);
  const std::string& owner = roles.administrators.empty() ? before.owner : roles.administrators;
  if (roles.operators == owner) {
    throw StoreError(fmt::format("The role '{}' owns the store: operators need one of their own",
                                 roles.operators));
  }
  std::string text(kGuards);
  if (!roles.operators.empty()) {
    text += TextForOperators(QuotedName(roles.operators));
  }
  connection.RunAll(text + TextForOwner(connection, owner));
}

GrantedRights RightsOn(Connection& connection) {
  GrantedRights rights;
  const Result owner = connection.Run(
      "SELECT pg_get_userbyid(nspowner) FROM pg_namespace WHERE nspname = 'qorhost'");
  rights.owner = owner.Text(0, 0);
  // Who is granted this by hand adds to the audit, too, and is to be kept from the rest.
  const Result operators = connection.Run(
      "SELECT pg_get_userbyid(a.grantee) FROM pg_class c JOIN pg_namespace n "
      "ON n.oid = c.relnamespace AND n.nspname = 'qorhost', aclexplode(c.relacl) a "
      "WHERE c.relname = 'AuditEntries' AND a.privilege_type = 'INSERT' "
      "AND a.grantee NOT IN (0, c.relowner) ORDER BY 1");
  for (int row = 0; row < operators.rows(); ++row) {
    rights.operators.emplace_back(operators.Text(row, 0));
  }
  return rights;
}

void RequireOwner(Connection& connection, const GrantedRights& rights) {
  const std::array owner{Sent(rights.owner)};
  const Result found = connection.Run(
      "SELECT pg_has_role(oid, 'USAGE'), rolcanlogin, current_user, pg_has_role(oid, 'MEMBER') "
      "FROM pg_roles WHERE rolname = $1::name",
      owner);
  if (found.Text(0, 0) == "t") {
    return;
  }
  const std::string user(found.Text(0, 2));
  const std::string advice =
      found.Text(0, 3) == "t" ? fmt::format(
                                    "this login is a member without the rights of one: ask "
                                    "the server's administrator for {}",
                                    InheritingText(connection, rights.owner, user))
      : found.Text(0, 1) == "t" ? fmt::format("ask '{}'", rights.owner)
                                : fmt::format("ask the server's administrator for GRANT {} TO {}",
                                              QuotedName(rights.owner), QuotedName(user));
  throw StoreError(fmt::format("The store '{}' belongs to '{}', and this is its owner's to do: {}",
                               connection.name(), rights.owner, advice),
                   StoreFault::kNoRights);
}

StoreError NoRightsOn(Connection& connection) {
  const GrantedRights rights = RightsOn(connection);
  const std::string user = QuotedName(CurrentUser(connection));
  std::vector<std::string> statements;
  for (const std::string& role : rights.operators) {
    statements.push_back(fmt::format("GRANT {} TO {}", QuotedName(role), user));
  }
  return StoreError(
      fmt::format("The store '{}' cannot be opened: permission denied for schema qorhost, which "
                  "belongs to '{}' ({})",
                  connection.name(), rights.owner,
                  statements.empty()
                      ? std::string("no role of operators has rights on it: let the owner name one "
                                    "with 'init --rights-only --operators ROLE'")
                      : fmt::format("ask the server's administrator for {}",
                                    fmt::join(statements, ", or "))),
      StoreFault::kNoRights);
}

void ActAsOwner(Connection& connection, const GrantedRights& rights) {
  if (rights.owner == CurrentUser(connection)) {
    return;
  }
  const std::array owner{Sent(rights.owner)};
  if (connection.Run("SELECT pg_has_role($1::name, 'MEMBER')", owner).Text(0, 0) != "t") {
    throw StoreError(
        fmt::format("The store '{}' is of an earlier version of this program, and is brought up to "
                    "date by its owner: let a member of the role '{}' open it once",
                    connection.name(), rights.owner),
        StoreFault::kNoRights);
  }
  connection.RunAll(fmt::format("SET LOCAL ROLE {}", QuotedName(rights.owner)));
}

void RenewRights(Connection& connection, const GrantedRights& rights) {
  std::string text;
  for (const std::string& role : rights.operators) {
    RequireRoleName(role);
    text += text.empty() ? kGuards : "";
    text += TextForOperators(QuotedName(role));
  }
  text += TextForOwner(connection, rights.owner);
  if (!text.empty()) {
    connection.RunAll(text);
  }
}

}  // namespace qorhost::postgres
