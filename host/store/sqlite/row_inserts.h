// Rows that were held, written many to a statement.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/store/sqlite/database.h"
#include "host/store/write_buffer.h"

namespace qorhost::sqlite {

/// The INSERT of so many rows of a form.
[[nodiscard]] std::string InsertText(const dialect::AddedRow& form, std::size_t rows);

class RowInserts final : public RowWriter {
 public:
  /// The database must live longer.
  explicit RowInserts(Database& database) : database_(database) {}

  [[nodiscard]] bool TakesAnyRow(const dialect::Table& table) override;
  void Write(const HeldRows& rows) override;
  void KeepLinkCode(std::int32_t unitKey, std::int64_t next) override;

 private:
  /// The statements of a form, each prepared when it is first needed.
  struct Form {
    std::shared_ptr<const dialect::AddedRow> form;
    std::vector<std::unique_ptr<Statement>> sized;
  };

  [[nodiscard]] Statement& StatementFor(const HeldRows& rows, std::size_t size);
  void WriteSome(const HeldRows& rows, std::size_t first, std::size_t size);
  void Run(const HeldRows& rows, std::size_t first, std::size_t size);

  Database& database_;
  std::vector<Form> forms_;
  std::unique_ptr<Statement> rules_;
  std::unique_ptr<Statement> keepLinkCode_;
};

}  // namespace qorhost::sqlite
