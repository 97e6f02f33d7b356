// The lines that an import refused, as a file that can be mended and imported again.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

#include "host/files/import_file.h"

namespace qorhost {

/// The columns of a file, with the reason of each refusal in a column behind them or in that which
/// the file has for it.
class RejectedLines {
 public:
  explicit RejectedLines(const ImportFile& file);

  void Add(const ImportLine& line, std::string_view reason);
  [[nodiscard]] std::size_t count() const { return count_; }
  /// UTF-8 with a byte order mark, by which spreadsheets and imports know it, and with the file's
  /// own delimiter: what was said of the file holds for this one, too.
  void Write(std::ostream& out) const;

 private:
  void AddRecord(std::vector<std::string> cells, std::string_view reason);

  char delimiter_;
  std::size_t width_;
  std::size_t reasonPlace_;
  std::string text_;
  std::size_t count_ = 0;
};

}  // namespace qorhost
