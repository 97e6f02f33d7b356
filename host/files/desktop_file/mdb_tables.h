// The tables of a desktop database file as libmdb finds them. Its source is the only one that knows
// that library.
#pragma once

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "host/files/desktop_file/reader_message.h"

namespace qorhost::desktop_file {

/// What ends the reading.
class UnreadableFile : public std::runtime_error {
 public:
  explicit UnreadableFile(ReadFault fault, std::string table = {}, std::uint64_t read = 0,
                          std::uint64_t counted = 0)
      : std::runtime_error("the file cannot be read"),
        fault_(fault),
        table_(std::move(table)),
        read_(read),
        counted_(counted) {}

  [[nodiscard]] ReadFault fault() const noexcept { return fault_; }
  /// Of kDefinition, kRow, kLongValue and kCount, and of kTooLarge where a text is.
  [[nodiscard]] const std::string& table() const noexcept { return table_; }
  /// Of kCount: the rows that were read, and those that the table says it has.
  [[nodiscard]] std::uint64_t read() const noexcept { return read_; }
  [[nodiscard]] std::uint64_t counted() const noexcept { return counted_; }

 private:
  ReadFault fault_;
  std::string table_;
  std::uint64_t read_;
  std::uint64_t counted_;
};

/// Reads the file of that name, which nobody writes meanwhile, and hands out a frame for each thing
/// that it finds: the file, then each table that people made, with its rows when its name is among
/// `wanted`, in any letter case of ASCII. Every value is that of the page, byte for byte; one of
/// Yes/No is one byte. Raises UnreadableFile.
void ReadTables(const std::string& file, const std::vector<std::string>& wanted,
                const std::function<void(FrameKind, const Payload&)>& frame);

}  // namespace qorhost::desktop_file
