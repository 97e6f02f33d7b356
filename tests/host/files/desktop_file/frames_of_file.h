// What a reader would tell of a file that is put together in a test.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/files/desktop_file/desktop_table.h"
#include "host/files/desktop_file/reader_message.h"

namespace qorhost::test {

/// Of a format with texts in UTF-16.
class FramesOfFile {
 public:
  FramesOfFile() {
    payload_.AddNumber(desktop_file::kFormNumber);
    payload_.AddNumber(desktop_file::kOldestFormat + 1);
    payload_.AddNumber(0);
    Put(desktop_file::FrameKind::kFile);
  }

  void AddTable(std::string_view name, const std::vector<DesktopColumn>& columns,
                std::uint32_t rows) {
    payload_.AddText(name);
    payload_.AddByte(0);
    payload_.AddNumber(rows);
    payload_.AddNumber(static_cast<std::uint32_t>(columns.size()));
    for (const DesktopColumn& column : columns) {
      payload_.AddText(column.name);
      payload_.AddByte(static_cast<std::uint8_t>(column.type));
      payload_.AddByte(0);
      payload_.AddNumber(0);
    }
    Put(desktop_file::FrameKind::kTable);
  }
  /// Of the table before it: the bytes of its cells, nothing for Null.
  void AddRow(const std::vector<std::optional<std::string>>& cells) {
    for (const std::optional<std::string>& cell : cells) {
      if (cell) {
        payload_.AddText(*cell);
      } else {
        payload_.AddNullCell();
      }
    }
    Put(desktop_file::FrameKind::kRow);
  }
  /// All of them, with their end.
  [[nodiscard]] std::string End() {
    desktop_file::RunningSum sum;
    sum.Add(frames_);
    payload_.AddLarge(count_);
    payload_.AddLarge(sum.sum());
    Put(desktop_file::FrameKind::kEnd);
    return std::move(frames_);
  }

  /// The bytes of a cell.
  [[nodiscard]] static std::string Long(std::uint32_t number) {
    desktop_file::Payload payload;
    payload.AddNumber(number);
    return payload.bytes();
  }
  [[nodiscard]] static std::string Text(std::string_view ascii) {
    std::string bytes;
    for (const char letter : ascii) bytes.append({letter, '\0'});
    return bytes;
  }

 private:
  void Put(desktop_file::FrameKind kind) {
    frames_ += desktop_file::FrameHeaderOf(kind, payload_.bytes().size()) + payload_.bytes();
    payload_.Clear();
    ++count_;
  }

  desktop_file::Payload payload_;
  std::string frames_;
  std::uint64_t count_ = 0;
};

}  // namespace qorhost::test
