#include "host/store/postgres/engine_error.h"

#include <fmt/format.h>
#include <libpq-fe.h>

#include <algorithm>
#include <array>

#include "host/store/postgres/connecting_words.h"

namespace qorhost::postgres {

namespace {

/// Failures by their five letters, or by the first two of them.
struct Known {
  std::string_view state;
  StoreFault fault;
};

// Single ones before the classes that they belong to.
constexpr std::array kKnown{
    Known{"23503", StoreFault::kNoSuchUnit},   // foreign_key_violation
    Known{"25006", StoreFault::kReadOnly},     // read_only_sql_transaction
    Known{"3D000", StoreFault::kNoStore},      // invalid_catalog_name
    Known{"40001", StoreFault::kBusy},         // serialization_failure
    Known{"40P01", StoreFault::kBusy},         // deadlock_detected
    Known{"42501", StoreFault::kNoRights},     // insufficient_privilege
    Known{"53100", StoreFault::kFull},         // disk_full
    Known{"53200", StoreFault::kNoMemory},     // out_of_memory
    Known{"53300", StoreFault::kNoServer},     // too_many_connections
    Known{"55P03", StoreFault::kBusy},         // lock_not_available
    Known{"57014", StoreFault::kTooMuchWork},  // query_canceled
    Known{"XX001", StoreFault::kDamaged},      // data_corrupted
    Known{"XX002", StoreFault::kDamaged},      // index_corrupted
    Known{"08", StoreFault::kNoServer},        // connection exceptions
    Known{"28", StoreFault::kNoRights},        // invalid authorization
    Known{"54", StoreFault::kTooLong},         // program limit exceeded
    Known{"57P", StoreFault::kNoServer},       // shutting down, starting, dropped
    Known{"58", StoreFault::kDisk},            // system errors
};

/// The words of the dialect for what the server says in its own.
std::string_view WordsFor(std::string_view state) {
  if (state == "22003") {
    return "Overflow";
  }
  if (state == "22012") {
    return "division by zero";
  }
  if (state == "22021") {
    return "a text holds bytes that are no UTF-8, which a server cannot keep";
  }
  return "";
}

/// What a person can do; the words for files do not fit a server.
std::string_view AdviceAbout(StoreFault fault) {
  switch (fault) {
    case StoreFault::kNoRights:
      return "the server does not let this user do it: ask its administrator";
    case StoreFault::kReadOnly:
      return "the server, or this connection, takes no changes: ask its administrator";
    case StoreFault::kFull:
      return "the server's disk is full: its administrator has to make room";
    case StoreFault::kDisk:
      return "the server cannot read or write its disk: tell its administrator";
    case StoreFault::kNoStore:
      return "there is no such database on the server: check its name";
    case StoreFault::kDamaged:
      return "the database is damaged: tell the server's administrator";
    case StoreFault::kTooMuchWork:
      return "the server ended it before it was done: try again, or ask its administrator how long "
             "a statement may work";
    case StoreFault::kNoMemory:
      return "the server has not enough memory: tell its administrator";
    default:
      return AdviceFor(fault);
  }
}

StoreError Advised(const std::string& doing, std::string_view text, std::string_view advice,
                   StoreFault fault) {
  return StoreError(advice.empty() ? fmt::format("{}: {}", doing, text)
                                   : fmt::format("{}: {} ({})", doing, text, advice),
                    fault);
}

StoreError Worded(const std::string& doing, std::string_view text, StoreFault fault) {
  return Advised(doing, text, AdviceAbout(fault), fault);
}

}  // namespace

StoreFault FaultOf(std::string_view state) {
  const auto* const known = std::find_if(kKnown.begin(), kKnown.end(), [state](const Known& each) {
    return state.substr(0, each.state.size()) == each.state;
  });
  return known == kKnown.end() ? StoreFault::kOther : known->fault;
}

StoreError ErrorOf(const pg_result* result, const pg_conn* connection, const std::string& doing) {
  const char* const state =
      result == nullptr ? nullptr : PQresultErrorField(result, PG_DIAG_SQLSTATE);
  if (state == nullptr || PQstatus(connection) != CONNECTION_OK) {
    return LostError(connection, doing);
  }
  std::string_view text = WordsFor(state);
  if (text.empty()) {
    const char* const primary = PQresultErrorField(result, PG_DIAG_MESSAGE_PRIMARY);
    text = primary == nullptr ? std::string_view("the server refuses it") : primary;
  }
  return Worded(doing, text, FaultOf(state));
}

StoreError LostError(const pg_conn* connection, const std::string& doing) {
  if (PQstatus(connection) == CONNECTION_OK) {
    return ConnectionError(connection, doing);
  }
  // The library goes on with guesses, in further lines.
  const std::string_view text = PQerrorMessage(connection);
  return StoreError(
      fmt::format("{}: {} (the connection to the server was lost: nothing was stored; try again)",
                  doing, text.substr(0, text.find('\n'))),
      StoreFault::kNoServer);
}

StoreError ConnectionError(const pg_conn* connection, const std::string& doing, Answer answer) {
  if (connection == nullptr) {
    return Worded(doing, "this program has not enough memory", StoreFault::kOther);
  }
  const std::string text = InOneSentence(PQerrorMessage(connection));
  if (PQconnectionNeedsPassword(connection) != 0) {
    return Advised(doing, text,
                   "put it into the file ~/.pgpass, which nobody else may read, as "
                   "HOST:PORT:DATABASE:USER:PASSWORD, or PGPASSWORD into the environment",
                   StoreFault::kNoRights);
  }
  switch (answer) {
    case Answer::kNone:
      return Worded(doing, text, StoreFault::kNoServer);
    case Answer::kNotNow:
      return Advised(doing, text, "it may be starting: try again", StoreFault::kNoServer);
    case Answer::kServer:  // whose words say it all
    case Answer::kNotAsked:
      break;
  }
  return Advised(doing, text, {}, StoreFault::kCannotOpen);
}

}  // namespace qorhost::postgres
