#include "host/store/postgres/connection.h"

#include <fmt/format.h>
#include <libpq-fe.h>

#include <array>
#include <charconv>
#include <vector>

#include "host/store/postgres/engine_error.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

namespace {

constexpr int kOldestServer = 150000;
constexpr const char* kConnectSeconds = "10";

constexpr std::array<std::string_view, 2> kSchemes{"postgresql:", "postgres:"};
constexpr std::string_view kService = "service=";

/// What people may read of a name: a URI's options may be long.
std::string ShownName(const std::string& name) {
  return name.substr(0, name.find('?'));
}

/// Raises for a name that libpq cannot read, or that holds a password.
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

}  // namespace

void Result::Clear::operator()(pg_result* result) const noexcept {
  PQclear(result);
}

int Result::rows() const noexcept {
  return PQntuples(result_.get());
}

int Result::columns() const noexcept {
  return PQnfields(result_.get());
}

std::string_view Result::NameOf(int column) const {
  return PQfname(result_.get(), column);
}

std::uint32_t Result::TypeOf(int column) const {
  return PQftype(result_.get(), column);
}

bool Result::IsNull(int row, int column) const {
  return PQgetisnull(result_.get(), row, column) != 0;
}

std::string_view Result::Text(int row, int column) const {
  return {PQgetvalue(result_.get(), row, column),
          static_cast<std::size_t>(PQgetlength(result_.get(), row, column))};
}

std::int64_t Result::Number(int row, int column) const {
  const std::string_view text = Text(row, column);
  std::int64_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

std::int64_t Result::affected() const {
  const std::string_view text = PQcmdTuples(result_.get());
  std::int64_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

void Connection::Finish::operator()(pg_conn* handle) const noexcept {
  PQfinish(handle);
}

Connection::Connection(const std::string& name) : name_(ShownName(name)) {
  RequireReadable(name);
  // What the name says comes later and counts.
  const std::array keywords{"connect_timeout", "fallback_application_name", "client_encoding",
                            "dbname", static_cast<const char*>(nullptr)};
  const std::array values{kConnectSeconds, "qorhost", "UTF8", name.c_str(),
                          static_cast<const char*>(nullptr)};
  handle_.reset(PQconnectdbParams(keywords.data(), values.data(), 1));
  const std::string doing = fmt::format("The store '{}' cannot be opened", name_);
  if (PQstatus(handle()) != CONNECTION_OK) {
    throw ConnectionError(handle(), doing);
  }
  // What the server has to say beside its answers is nothing for the terminal.
  PQsetNoticeProcessor(
      handle(), [](void* /*context*/, const char* /*text*/) {}, nullptr);
  RequireServer();
}

Connection::~Connection() = default;

void Connection::RequireServer() {
  if (PQserverVersion(handle()) < kOldestServer) {
    throw StoreError(
        fmt::format("The store '{}' cannot be opened: its server is older than PostgreSQL 15",
                    name_),
        StoreFault::kCannotOpen);
  }
  if (Run("SHOW server_encoding").Text(0, 0) != "UTF8") {
    throw StoreError(
        fmt::format("The store '{}' cannot be opened: the database keeps its texts in another "
                    "encoding than UTF-8: create it with ENCODING 'UTF8'",
                    name_),
        StoreFault::kCannotOpen);
  }
  // Rows come in the order in which they are asked for; texts are what they say; numbers have all
  // their digits.
  RunAll(
      "SET max_parallel_workers_per_gather = 0; SET standard_conforming_strings = on; "
      "SET extra_float_digits = 1; SET client_min_messages = error");
}

Result Connection::Run(const std::string& sql, std::span<const Sent> values) {
  std::vector<std::string> texts;
  std::vector<const char*> sent;
  texts.reserve(values.size());
  sent.reserve(values.size());
  for (const Sent& value : values) {
    if (!value) {
      sent.push_back(nullptr);
      continue;
    }
    if (value->find('\0') != std::string_view::npos) {
      throw StoreError(
          "The statement failed: a text holds the character NUL, which a server "
          "cannot keep");
    }
    sent.push_back(texts.emplace_back(*value).c_str());
  }
  Result result(PQexecParams(handle(), sql.c_str(), static_cast<int>(values.size()), nullptr,
                             sent.data(), nullptr, nullptr, 0));
  const ExecStatusType status = PQresultStatus(result.get());
  if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) {
    throw ErrorOf(result.get(), handle(), "The statement failed");
  }
  return result;
}

void Connection::RunAll(const std::string& sql) {
  const Result result(PQexec(handle(), sql.c_str()));
  const ExecStatusType status = PQresultStatus(result.get());
  if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) {
    throw ErrorOf(result.get(), handle(), "The statement failed");
  }
}

bool Connection::inTransaction() const noexcept {
  const PGTransactionStatusType status = PQtransactionStatus(handle());
  return status == PQTRANS_INTRANS || status == PQTRANS_INERROR;
}

bool IsServerName(std::string_view name) {
  if (name.substr(0, kService.size()) == kService) {
    return name.size() > kService.size();
  }
  for (const std::string_view scheme : kSchemes) {
    if (name.substr(0, scheme.size()) == scheme) {
      return true;
    }
  }
  return false;
}

}  // namespace qorhost::postgres
