#include "host/store/postgres/connecting.h"

#include <libpq-fe.h>
#include <poll.h>

#include <array>
#include <chrono>
#include <memory>
#include <string_view>

#include "host/store/store_error.h"

namespace qorhost::postgres {

namespace {

constexpr const char* kAskAgainSeconds = "2";
constexpr const char* kConnectSeconds = "10";
// A network that is cut says nothing: after so long without an answer the server is asked whether
// it is there, and given up when it does not say so.
constexpr const char* kSilentSeconds = "20";
constexpr const char* kAskSeconds = "5";
constexpr const char* kAskTimes = "4";
constexpr const char* kUnheardMilliseconds = "40000";

/// How a server is asked for; what the name says comes later and counts.
using Settings = std::array<const char*, 12>;
constexpr Settings kKeywords{"connect_timeout",
                             "keepalives_idle",
                             "keepalives_interval",
                             "keepalives_count",
                             "tcp_user_timeout",
                             "fallback_application_name",
                             "client_encoding",
                             "password",
                             "dbname",
                             nullptr};
constexpr std::size_t kNameAt = 8;
constexpr int kNameIsRead = 1;

Settings ValuesFor(const std::string& name, const std::string& password) {
  return {kConnectSeconds, kSilentSeconds, kAskSeconds,      kAskTimes,   kUnheardMilliseconds,
          "qorhost",       "UTF8",         password.c_str(), name.c_str()};
}

// In what the server says of a refusal, by the five letters alone: all of this class are about who
// somebody is. Its words are of any language.
constexpr std::string_view kRefusesLogin = "FATAL:  28";
constexpr std::chrono::seconds kLongestAsking(10);

/// Goes on with a connection until it stands, fails, or the time is over.
void ConnectUntil(pg_conn* handle, std::chrono::steady_clock::time_point end) {
  constexpr int kPauseMilliseconds = 100;
  PostgresPollingStatusType next = PGRES_POLLING_WRITING;
  while (next != PGRES_POLLING_OK && next != PGRES_POLLING_FAILED &&
         std::chrono::steady_clock::now() < end) {
    pollfd socket{PQsocket(handle),
                  static_cast<short>(next == PGRES_POLLING_WRITING ? POLLOUT : POLLIN), 0};
    if (poll(&socket, 1, kPauseMilliseconds) != 0) {
      next = PQconnectPoll(handle);
    }
  }
}

}  // namespace

std::string ShownName(const std::string& name) {
  return name.substr(0, name.find('?'));
}

void RequireReadable(const std::string& name) {
  char* fault = nullptr;
  const std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)> options(
      PQconninfoParse(name.c_str(), &fault), PQconninfoFree);
  const std::unique_ptr<char, decltype(&PQfreemem)> text(fault, PQfreemem);
  if (options == nullptr) {
    // Not the name itself: what is wrong with it may be in a password.
    throw StoreError(
        "The store's name cannot be read: write postgresql://HOST/DATABASE, or service=NAME",
        StoreFault::kCannotOpen);
  }
  for (const PQconninfoOption* option = options.get(); option->keyword != nullptr; ++option) {
    const bool isSecret = std::string_view(option->keyword) == "password" ||
                          std::string_view(option->keyword) == "sslpassword";
    if (isSecret && option->val != nullptr && *option->val != '\0') {
      throw StoreError(
          "The store's name holds a password, which other programs of the machine could read: "
          "leave it out and put it into the file ~/.pgpass, or PGPASSWORD into the environment",
          StoreFault::kRefused);
    }
  }
}

pg_conn* Connect(const std::string& name, const std::string& password) {
  return PQconnectdbParams(kKeywords.data(), ValuesFor(name, password).data(), kNameIsRead);
}

bool RefusesPassword(const std::string& name, const std::string& password) {
  const std::unique_ptr<pg_conn, decltype(&PQfinish)> asking(
      PQconnectStartParams(kKeywords.data(), ValuesFor(name, password).data(), kNameIsRead),
      PQfinish);
  if (asking == nullptr || PQstatus(asking.get()) == CONNECTION_BAD) {
    return false;
  }
  PQsetErrorVerbosity(asking.get(), PQERRORS_SQLSTATE);
  ConnectUntil(asking.get(), std::chrono::steady_clock::now() + kLongestAsking);
  const std::string_view text = PQerrorMessage(asking.get());
  return text.find(kRefusesLogin) != std::string_view::npos;
}

Answer AnswerOf(const std::string& name) {
  // Whoever asks for encryption is answered by a server without it, too.
  Settings keywords = kKeywords;
  const std::string none;  // a server says that it is there without one
  Settings values = ValuesFor(name, none);
  keywords[kNameAt + 1] = "connect_timeout";
  values[kNameAt + 1] = kAskAgainSeconds;
  keywords[kNameAt + 2] = "sslmode";
  values[kNameAt + 2] = "prefer";
  switch (PQpingParams(keywords.data(), values.data(), kNameIsRead)) {
    case PQPING_OK:
      return Answer::kServer;
    case PQPING_REJECT:
      return Answer::kNotNow;
    case PQPING_NO_ATTEMPT:
      return Answer::kNotAsked;
    case PQPING_NO_RESPONSE:
      break;
  }
  return Answer::kNone;
}

}  // namespace qorhost::postgres
