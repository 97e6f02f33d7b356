#include "host/screens/list_items.h"

#include <algorithm>
#include <utility>

namespace qorhost {

ListItems::ListItems(const ListItems& other) : storage_(other.storage_), count_(other.count_) {
  if (storage_ != nullptr) {
    storage_->shared = std::max(storage_->shared, count_);
  }
}

ListItems& ListItems::operator=(const ListItems& other) {
  if (this != &other) {
    *this = ListItems(other);
  }
  return *this;
}

ListItems::ListItems(ListItems&& other) noexcept
    : storage_(std::move(other.storage_)), count_(std::exchange(other.count_, 0)) {}

ListItems& ListItems::operator=(ListItems&& other) noexcept {
  if (this != &other) {
    Release();
    storage_ = std::move(other.storage_);
    count_ = std::exchange(other.count_, 0);
  }
  return *this;
}

const ListItem* ListItems::begin() const {
  return storage_ == nullptr ? nullptr : storage_->items.data();
}

bool ListItems::Shares(const ListItems& other) const {
  return storage_ == other.storage_ && count_ == other.count_;
}

void ListItems::Clear() {
  if (storage_ != nullptr && storage_.use_count() > 1) {
    Release();
  } else if (storage_ != nullptr) {
    storage_->items.clear();  // keeps its room: a list is mostly cleared to be filled again
    storage_->shared = 0;
  }
  count_ = 0;
}

void ListItems::Append(ListItem item) {
  Own(count_).push_back(std::move(item));
  ++count_;
}

void ListItems::Insert(std::size_t at, ListItem item) {
  std::vector<ListItem>& items = Own(at);
  items.insert(items.begin() + static_cast<std::ptrdiff_t>(at), std::move(item));
  ++count_;
}

void ListItems::Erase(std::size_t at) {
  std::vector<ListItem>& items = Own(at);
  items.erase(items.begin() + static_cast<std::ptrdiff_t>(at));
  --count_;
}

std::vector<ListItem>& ListItems::Own(std::size_t from) {
  if (storage_ == nullptr) {
    storage_ = std::make_shared<Storage>();
  } else if (storage_.use_count() == 1) {
    storage_->items.resize(count_);
    storage_->shared = 0;
  } else if (from < storage_->shared || count_ != storage_->items.size()) {
    auto own = std::make_shared<Storage>(Storage{{begin(), end()}, 0});
    const std::size_t count = count_;
    Release();
    storage_ = std::move(own);
    count_ = count;
  }
  return storage_->items;
}

void ListItems::Release() {
  if (storage_ != nullptr && count_ == storage_->items.size() && count_ > storage_->shared) {
    storage_->items.resize(storage_->shared);
  }
  storage_.reset();
  count_ = 0;
}

bool operator==(const ListItems& one, const ListItems& other) {
  return one.Shares(other) || std::equal(one.begin(), one.end(), other.begin(), other.end());
}

}  // namespace qorhost
