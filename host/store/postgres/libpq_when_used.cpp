// libpq, loaded when a store on a server is opened for the first time: it brings twenty libraries
// along, which a program that works on files need not load at every start. Each function of libpq
// that this folder calls stands here once, under its name, and calls the one of the library.
#include <dlfcn.h>
#include <fmt/format.h>
#include <libpq-fe.h>

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

/// Calls the library's function of that name, which has the type of the one here.
template <auto kHere, typename... Arguments>
auto Call(const char* name, Arguments... arguments) {
  static const auto there = reinterpret_cast<decltype(kHere)>(Find(name));
  return there(arguments...);
}

}  // namespace

int PQbackendPID(const PGconn* connection) {
  return Call<PQbackendPID>("PQbackendPID", connection);
}

int PQcancel(PGcancel* cancel, char* text, int size) {
  return Call<PQcancel>("PQcancel", cancel, text, size);
}

void PQclear(PGresult* result) {
  return Call<PQclear>("PQclear", result);
}

char* PQcmdStatus(PGresult* result) {
  return Call<PQcmdStatus>("PQcmdStatus", result);
}

char* PQcmdTuples(PGresult* result) {
  return Call<PQcmdTuples>("PQcmdTuples", result);
}

PGconn* PQconnectdbParams(const char* const* keywords, const char* const* values, int expandName) {
  return Call<PQconnectdbParams>("PQconnectdbParams", keywords, values, expandName);
}

void PQconninfoFree(PQconninfoOption* options) {
  return Call<PQconninfoFree>("PQconninfoFree", options);
}

PQconninfoOption* PQconninfoParse(const char* name, char** fault) {
  return Call<PQconninfoParse>("PQconninfoParse", name, fault);
}

int PQconsumeInput(PGconn* connection) {
  return Call<PQconsumeInput>("PQconsumeInput", connection);
}

int PQenterPipelineMode(PGconn* connection) {
  return Call<PQenterPipelineMode>("PQenterPipelineMode", connection);
}

char* PQerrorMessage(const PGconn* connection) {
  return Call<PQerrorMessage>("PQerrorMessage", connection);
}

PGresult* PQexec(PGconn* connection, const char* query) {
  return Call<PQexec>("PQexec", connection, query);
}

PGresult* PQexecParams(PGconn* connection, const char* command, int count, const Oid* types,
                       const char* const* values, const int* lengths, const int* formats,
                       int resultFormat) {
  return Call<PQexecParams>("PQexecParams", connection, command, count, types, values, lengths,
                            formats, resultFormat);
}

int PQexitPipelineMode(PGconn* connection) {
  return Call<PQexitPipelineMode>("PQexitPipelineMode", connection);
}

void PQfinish(PGconn* connection) {
  return Call<PQfinish>("PQfinish", connection);
}

char* PQfname(const PGresult* result, int field) {
  return Call<PQfname>("PQfname", result, field);
}

void PQfreeCancel(PGcancel* cancel) {
  return Call<PQfreeCancel>("PQfreeCancel", cancel);
}

void PQfreemem(void* memory) {
  return Call<PQfreemem>("PQfreemem", memory);
}

Oid PQftype(const PGresult* result, int field) {
  return Call<PQftype>("PQftype", result, field);
}

PGcancel* PQgetCancel(PGconn* connection) {
  return Call<PQgetCancel>("PQgetCancel", connection);
}

int PQgetisnull(const PGresult* result, int row, int field) {
  return Call<PQgetisnull>("PQgetisnull", result, row, field);
}

int PQgetlength(const PGresult* result, int row, int field) {
  return Call<PQgetlength>("PQgetlength", result, row, field);
}

PGresult* PQgetResult(PGconn* connection) {
  return Call<PQgetResult>("PQgetResult", connection);
}

char* PQgetvalue(const PGresult* result, int row, int field) {
  return Call<PQgetvalue>("PQgetvalue", result, row, field);
}

int PQisBusy(PGconn* connection) {
  return Call<PQisBusy>("PQisBusy", connection);
}

int PQnfields(const PGresult* result) {
  return Call<PQnfields>("PQnfields", result);
}

int PQntuples(const PGresult* result) {
  return Call<PQntuples>("PQntuples", result);
}

int PQpipelineSync(PGconn* connection) {
  return Call<PQpipelineSync>("PQpipelineSync", connection);
}

char* PQresultErrorField(const PGresult* result, int code) {
  return Call<PQresultErrorField>("PQresultErrorField", result, code);
}

ExecStatusType PQresultStatus(const PGresult* result) {
  return Call<PQresultStatus>("PQresultStatus", result);
}

int PQsendPrepare(PGconn* connection, const char* statement, const char* query, int count,
                  const Oid* types) {
  return Call<PQsendPrepare>("PQsendPrepare", connection, statement, query, count, types);
}

int PQsendQuery(PGconn* connection, const char* query) {
  return Call<PQsendQuery>("PQsendQuery", connection, query);
}

int PQsendQueryParams(PGconn* connection, const char* command, int count, const Oid* types,
                      const char* const* values, const int* lengths, const int* formats,
                      int resultFormat) {
  return Call<PQsendQueryParams>("PQsendQueryParams", connection, command, count, types, values,
                                 lengths, formats, resultFormat);
}

int PQsendQueryPrepared(PGconn* connection, const char* statement, int count,
                        const char* const* values, const int* lengths, const int* formats,
                        int resultFormat) {
  return Call<PQsendQueryPrepared>("PQsendQueryPrepared", connection, statement, count, values,
                                   lengths, formats, resultFormat);
}

int PQserverVersion(const PGconn* connection) {
  return Call<PQserverVersion>("PQserverVersion", connection);
}

PQnoticeReceiver PQsetNoticeReceiver(PGconn* connection, PQnoticeReceiver receiver,
                                     void* argument) {
  return Call<PQsetNoticeReceiver>("PQsetNoticeReceiver", connection, receiver, argument);
}

int PQsetSingleRowMode(PGconn* connection) {
  return Call<PQsetSingleRowMode>("PQsetSingleRowMode", connection);
}

int PQsocket(const PGconn* connection) {
  return Call<PQsocket>("PQsocket", connection);
}

ConnStatusType PQstatus(const PGconn* connection) {
  return Call<PQstatus>("PQstatus", connection);
}

PGTransactionStatusType PQtransactionStatus(const PGconn* connection) {
  return Call<PQtransactionStatus>("PQtransactionStatus", connection);
}
