#include "host/screens/change.h"

#include <cstddef>
#include <utility>

namespace qorhost {

namespace {

/// Counts the notifications that are under way.
class Notifying {
 public:
  explicit Notifying(int& count) : count_(count) { ++count_; }
  ~Notifying() { --count_; }
  Notifying(const Notifying&) = delete;
  Notifying& operator=(const Notifying&) = delete;

 private:
  int& count_;
};

}  // namespace

Subscription& Subscription::operator=(Subscription&& other) noexcept {
  if (this != &other) {
    End();
    observer_ = std::move(other.observer_);
  }
  return *this;
}

void Subscription::End() {
  if (observer_ != nullptr) {
    observer_->ended = true;
    observer_.reset();
  }
}

Subscription Observers::Add(ChangeHandler handler) {
  Forget();
  auto observer =
      std::make_shared<Subscription::Observer>(Subscription::Observer{std::move(handler), false});
  observers_.push_back(observer);
  return Subscription(std::move(observer));
}

void Observers::Notify(const Change& change) {
  {
    const Notifying now(notifying_);
    // Handlers that are added meanwhile stand behind these.
    const std::size_t count = observers_.size();
    for (std::size_t at = 0; at < count; ++at) {
      const auto observer = observers_[at].lock();
      if (observer != nullptr && !observer->ended) {
        observer->handler(change);
      }
    }
  }
  Forget();
}

/// Drops the places of subscriptions that have ended, unless a notification counts on them.
void Observers::Forget() {
  if (notifying_ == 0) {
    std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
  }
}

}  // namespace qorhost
