// libpq, loaded when a store on a server is opened for the first time: it brings twenty libraries
// along, which a program that works on files need not load at every start. Each function of libpq
// that this folder calls stands here once, under its name, and calls the one of the library.
#include <dlfcn.h>
#include <fmt/format.h>
#include <libpq-fe.h>

#include <atomic>

#include "host/store/store_error.h"

namespace {

constexpr const char* kLibrary = "libpq.so.5";

/// Stays loaded until the process ends; null where it cannot be loaded.
void* Library() {
  static void* const library = dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL);
  return library;
}

void* Find(const char* name) {
  void* found = Library() == nullptr ? nullptr : dlsym(Library(), name);
  if (found == nullptr) {
    throw qorhost::StoreError(fmt::format(
        "Stores on a server need {} (Debian: libpq5), which cannot be loaded", kLibrary));
  }
  return found;
}

/// Where the library has a function; null before it is looked for.
template <auto kHere>
constinit std::atomic<decltype(kHere)> found = nullptr;

/// Looked for twice when two threads call it at once, with the same end.
template <auto kHere>
[[gnu::noinline, gnu::cold]] decltype(kHere) Look(const char* name) {
  const auto there = reinterpret_cast<decltype(kHere)>(Find(name));
  found<kHere>.store(there, std::memory_order_relaxed);
  return there;
}

/// Calls the library's function of that name, which has the type of the one here. The cells of a
/// result are read so, one by one: it costs a look at an address.
template <auto kHere, typename... Arguments>
auto Call(const char* name, Arguments... arguments) {
  const auto there = found<kHere>.load(std::memory_order_relaxed);
  return (there != nullptr ? there : Look<kHere>(name))(arguments...);
}

}  // namespace

// Parameters are called as libpq calls them.
// NOLINTBEGIN(readability-identifier-naming)

int PQbackendPID(const PGconn* conn) {
  return Call<PQbackendPID>("PQbackendPID", conn);
}

int PQcancel(PGcancel* cancel, char* errbuf, int errbufsize) {
  return Call<PQcancel>("PQcancel", cancel, errbuf, errbufsize);
}

void PQclear(PGresult* res) {
  return Call<PQclear>("PQclear", res);
}

char* PQcmdStatus(PGresult* res) {
  return Call<PQcmdStatus>("PQcmdStatus", res);
}

char* PQcmdTuples(PGresult* res) {
  return Call<PQcmdTuples>("PQcmdTuples", res);
}

PGconn* PQconnectdbParams(const char* const* keywords, const char* const* values,
                          int expand_dbname) {
  return Call<PQconnectdbParams>("PQconnectdbParams", keywords, values, expand_dbname);
}

PostgresPollingStatusType PQconnectPoll(PGconn* conn) {
  return Call<PQconnectPoll>("PQconnectPoll", conn);
}

PGconn* PQconnectStartParams(const char* const* keywords, const char* const* values,
                             int expand_dbname) {
  return Call<PQconnectStartParams>("PQconnectStartParams", keywords, values, expand_dbname);
}

int PQconnectionNeedsPassword(const PGconn* conn) {
  return Call<PQconnectionNeedsPassword>("PQconnectionNeedsPassword", conn);
}

int PQconnectionUsedPassword(const PGconn* conn) {
  return Call<PQconnectionUsedPassword>("PQconnectionUsedPassword", conn);
}

void PQconninfoFree(PQconninfoOption* connOptions) {
  return Call<PQconninfoFree>("PQconninfoFree", connOptions);
}

PQconninfoOption* PQconninfoParse(const char* conninfo, char** errmsg) {
  return Call<PQconninfoParse>("PQconninfoParse", conninfo, errmsg);
}

int PQconsumeInput(PGconn* conn) {
  return Call<PQconsumeInput>("PQconsumeInput", conn);
}

int PQenterPipelineMode(PGconn* conn) {
  return Call<PQenterPipelineMode>("PQenterPipelineMode", conn);
}

char* PQerrorMessage(const PGconn* conn) {
  return Call<PQerrorMessage>("PQerrorMessage", conn);
}

int PQexitPipelineMode(PGconn* conn) {
  return Call<PQexitPipelineMode>("PQexitPipelineMode", conn);
}

void PQfinish(PGconn* conn) {
  return Call<PQfinish>("PQfinish", conn);
}

int PQflush(PGconn* conn) {
  return Call<PQflush>("PQflush", conn);
}

char* PQfname(const PGresult* res, int field_num) {
  return Call<PQfname>("PQfname", res, field_num);
}

void PQfreeCancel(PGcancel* cancel) {
  return Call<PQfreeCancel>("PQfreeCancel", cancel);
}

void PQfreemem(void* ptr) {
  return Call<PQfreemem>("PQfreemem", ptr);
}

Oid PQftype(const PGresult* res, int field_num) {
  return Call<PQftype>("PQftype", res, field_num);
}

PGcancel* PQgetCancel(PGconn* conn) {
  return Call<PQgetCancel>("PQgetCancel", conn);
}

int PQgetisnull(const PGresult* res, int tup_num, int field_num) {
  return Call<PQgetisnull>("PQgetisnull", res, tup_num, field_num);
}

int PQgetlength(const PGresult* res, int tup_num, int field_num) {
  return Call<PQgetlength>("PQgetlength", res, tup_num, field_num);
}

PGresult* PQgetResult(PGconn* conn) {
  return Call<PQgetResult>("PQgetResult", conn);
}

char* PQgetvalue(const PGresult* res, int tup_num, int field_num) {
  return Call<PQgetvalue>("PQgetvalue", res, tup_num, field_num);
}

int PQisBusy(PGconn* conn) {
  return Call<PQisBusy>("PQisBusy", conn);
}

int PQnfields(const PGresult* res) {
  return Call<PQnfields>("PQnfields", res);
}

int PQntuples(const PGresult* res) {
  return Call<PQntuples>("PQntuples", res);
}

PGPing PQpingParams(const char* const* keywords, const char* const* values, int expand_dbname) {
  return Call<PQpingParams>("PQpingParams", keywords, values, expand_dbname);
}

int PQpipelineSync(PGconn* conn) {
  return Call<PQpipelineSync>("PQpipelineSync", conn);
}

char* PQresultErrorField(const PGresult* res, int fieldcode) {
  return Call<PQresultErrorField>("PQresultErrorField", res, fieldcode);
}

ExecStatusType PQresultStatus(const PGresult* res) {
  return Call<PQresultStatus>("PQresultStatus", res);
}

int PQsendPrepare(PGconn* conn, const char* stmtName, const char* query, int nParams,
                  const Oid* paramTypes) {
  return Call<PQsendPrepare>("PQsendPrepare", conn, stmtName, query, nParams, paramTypes);
}

int PQsendQuery(PGconn* conn, const char* query) {
  return Call<PQsendQuery>("PQsendQuery", conn, query);
}

int PQsendQueryParams(PGconn* conn, const char* command, int nParams, const Oid* paramTypes,
                      const char* const* paramValues, const int* paramLengths,
                      const int* paramFormats, int resultFormat) {
  return Call<PQsendQueryParams>("PQsendQueryParams", conn, command, nParams, paramTypes,
                                 paramValues, paramLengths, paramFormats, resultFormat);
}

int PQsendQueryPrepared(PGconn* conn, const char* stmtName, int nParams,
                        const char* const* paramValues, const int* paramLengths,
                        const int* paramFormats, int resultFormat) {
  return Call<PQsendQueryPrepared>("PQsendQueryPrepared", conn, stmtName, nParams, paramValues,
                                   paramLengths, paramFormats, resultFormat);
}

int PQserverVersion(const PGconn* conn) {
  return Call<PQserverVersion>("PQserverVersion", conn);
}

PGVerbosity PQsetErrorVerbosity(PGconn* conn, PGVerbosity verbosity) {
  return Call<PQsetErrorVerbosity>("PQsetErrorVerbosity", conn, verbosity);
}

PQnoticeReceiver PQsetNoticeReceiver(PGconn* conn, PQnoticeReceiver proc, void* arg) {
  return Call<PQsetNoticeReceiver>("PQsetNoticeReceiver", conn, proc, arg);
}

int PQsetSingleRowMode(PGconn* conn) {
  return Call<PQsetSingleRowMode>("PQsetSingleRowMode", conn);
}

int PQsetnonblocking(PGconn* conn, int arg) {
  return Call<PQsetnonblocking>("PQsetnonblocking", conn, arg);
}

int PQsocket(const PGconn* conn) {
  return Call<PQsocket>("PQsocket", conn);
}

ConnStatusType PQstatus(const PGconn* conn) {
  return Call<PQstatus>("PQstatus", conn);
}

PGTransactionStatusType PQtransactionStatus(const PGconn* conn) {
  return Call<PQtransactionStatus>("PQtransactionStatus", conn);
}

// NOLINTEND(readability-identifier-naming)
