#include "host/store/postgres/result.h"

#include <libpq-fe.h>

#include <charconv>

namespace qorhost::postgres {

namespace {

std::int64_t WholeNumberIn(std::string_view text) {
  std::int64_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
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

std::optional<std::string_view> Result::Cell(int row, int column) const {
  const std::string_view text = Text(row, column);
  // Null has no length either.
  return text.empty() && IsNull(row, column) ? std::nullopt : std::optional(text);
}

std::int64_t Result::Number(int row, int column) const {
  return WholeNumberIn(Text(row, column));
}

std::int64_t Result::affected() const {
  return WholeNumberIn(PQcmdTuples(result_.get()));
}

std::string_view Result::done() const {
  return PQcmdStatus(result_.get());
}

bool Result::isDone() const noexcept {
  const ExecStatusType status = PQresultStatus(result_.get());
  return status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK;
}

}  // namespace qorhost::postgres
