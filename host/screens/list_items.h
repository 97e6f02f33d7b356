// The entries of a list, shared between copies.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace qorhost {

struct ListItem {
  std::string text;
  std::int32_t data = 0;
  friend bool operator==(const ListItem&, const ListItem&) = default;
};

/// A sequence of items whose copies share them: a copy takes no time, and the items are copied only
/// when one that is shared changes. Appending behind shared items and changing or removing what was
/// appended does not copy them, so that a list of thousands can grow after each copy of it.
/// For one thread.
class ListItems {
 public:
  ListItems() = default;
  ~ListItems() { Release(); }
  ListItems(const ListItems& other);
  ListItems& operator=(const ListItems& other);
  ListItems(ListItems&& other) noexcept;
  ListItems& operator=(ListItems&& other) noexcept;

  [[nodiscard]] std::size_t size() const { return count_; }
  /// The item at a place below size().
  [[nodiscard]] const ListItem& operator[](std::size_t at) const { return storage_->items[at]; }
  [[nodiscard]] const ListItem* begin() const;
  [[nodiscard]] const ListItem* end() const { return begin() + count_; }
  /// Whether both have the same items in the same memory.
  [[nodiscard]] bool Shares(const ListItems& other) const;

  void Clear();
  void Append(ListItem item);
  void Insert(std::size_t at, ListItem item);
  void Erase(std::size_t at);
  void SetText(std::size_t at, std::string text) { Own(at)[at].text = std::move(text); }
  void SetData(std::size_t at, std::int32_t data) { Own(at)[at].data = data; }

  friend bool operator==(const ListItems& one, const ListItems& other);

 private:
  /// Of the items in a storage the first `shared` may belong to several; those behind them belong
  /// to the one list that is as long as the storage.
  struct Storage {
    std::vector<ListItem> items;
    std::size_t shared = 0;
  };

  /// The storage after making sure that the items from `from` on are this list's alone.
  std::vector<ListItem>& Own(std::size_t from);
  /// Takes what this list alone has away from a storage that others go on using, and lets it go.
  void Release();

  std::shared_ptr<Storage> storage_;
  std::size_t count_ = 0;
};

}  // namespace qorhost
