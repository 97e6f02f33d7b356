// Rows that were held, written in one statement.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/store/postgres/cells.h"
#include "host/store/postgres/connection.h"
#include "host/store/write_buffer.h"

namespace qorhost::postgres {

/// One cell of each row as an array of the server's, in words that it reads: {1,2,NULL}.
[[nodiscard]] std::string ArrayText(const HeldRows& rows, std::size_t first, std::size_t size,
                                    std::size_t column);

class RowInserts final : public RowWriter {
 public:
  /// The connection must live longer.
  explicit RowInserts(Connection& connection) : connection_(connection) {}

  [[nodiscard]] bool TakesAnyRow(const dialect::Table& table) override;
  void Write(const HeldRows& rows) override;
  void KeepLinkCode(std::int32_t unitKey, std::int64_t next) override;

  /// Takes so many identities of a table, which are nobody else's then, and grants them.
  void Reserve(const dialect::Table& table, std::int64_t number, WriteBuffer& buffer);
  /// The server has forgotten what it had read.
  void Forget() { forms_.clear(); }

 private:
  struct Form {
    std::shared_ptr<const dialect::AddedRow> form;
    PreparedText text;
  };

  [[nodiscard]] PreparedText& TextFor(const HeldRows& rows);
  void WriteSome(const HeldRows& rows, std::size_t first, std::size_t size);

  Connection& connection_;
  std::vector<Form> forms_;
};

}  // namespace qorhost::postgres
