// Settled cells beyond those that memory holds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/desks/moving_in/settled_cell.h"
#include "host/files/desktop_file/descriptor.h"

namespace qorhost {

/// In a nameless file; of each cell memory has sixteen bytes, by which they are put in order.
class SpilledCells {
 public:
  /// Into a new file, or an own one, which is empty. Raises FileError.
  SpilledCells();
  explicit SpilledCells(desktop_file::Descriptor file) : file_(std::move(file)) {}

  /// Raises FileError where there is no room.
  void Add(const SettledCell& cell);
  /// To be called behind the last Add(): in the order of tables, and in each of them in that of
  /// rows. Raises FileError.
  void Sort(const std::vector<std::string_view>& tables);

  [[nodiscard]] std::size_t size() const { return places_.size(); }
  /// Of the one at that place in the order. Raises FileError where it cannot be read back.
  [[nodiscard]] SettledCell At(std::size_t index) const;
  [[nodiscard]] Settlement SettlementAt(std::size_t index) const {
    return places_[index].settlement;
  }

 private:
  struct Place {
    std::uint64_t begin = 0;
    std::uint32_t row = 0;
    std::uint8_t table = 0;
    Settlement settlement = Settlement::kKept;
  };

  [[nodiscard]] std::uint8_t TableOf(std::string_view name);
  void Flush();

  desktop_file::Descriptor file_;
  std::vector<std::string> tables_;
  std::deque<Place> places_;  // unlike a vector, never twice while it grows
  std::string waiting_;
  std::uint64_t end_ = 0;
};

}  // namespace qorhost
