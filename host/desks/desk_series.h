// Rows that are changed one after the other at one desk.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/desks/row_names.h"

namespace qorhost {

/// A desk that selects a row by a name, and the rows that are meant, each once.
template <typename Desk>
class DeskSeries {
 public:
  /// `open` makes the desk, with its lists filled.
  explicit DeskSeries(std::function<std::unique_ptr<Desk>()> open) : open_(std::move(open)) {}

  /// Opens the desk anew and looks the rows up. Returns how many they are; raises what
  /// Desk::Select() raises.
  std::size_t Begin(const std::vector<std::string>& names) {
    desk_ = open_();
    rids_.clear();
    for (const std::string& name : names) {
      const std::int32_t rid = desk_->Select(name).rid;
      if (std::find(rids_.begin(), rids_.end(), rid) == rids_.end()) {
        rids_.push_back(rid);
      }
    }
    return count();
  }
  [[nodiscard]] std::size_t count() const { return rids_.size(); }

  /// The desk with the row at that place selected.
  Desk& At(std::size_t at) {
    (void)desk_->Select(RowName(rids_[at]));
    return *desk_;
  }

 private:
  std::function<std::unique_ptr<Desk>()> open_;
  std::unique_ptr<Desk> desk_;
  std::vector<std::int32_t> rids_;
};

}  // namespace qorhost
