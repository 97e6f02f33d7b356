// What tells others that a screen or a control changed.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace qorhost {

class ControlModel;

/// What of a control changed, or that it was a variable of the screen.
enum class ChangeKind : std::uint8_t {
  kValue,      ///< a text, a state, a date or a number
  kLimits,     ///< how long a text may be, or the first or last day
  kItems,      ///< the entries of a list, and with them perhaps which one is selected
  kSelection,  ///< an entry was selected, or none
  kState,      ///< enabled or visible
  kLook,       ///< caption, colour or width
  kFocus,      ///< the control got the focus, or no control has it any more
  kVariable,
};

struct Change {
  std::string_view name;            ///< of the control or variable; "" when the focus was cleared
  ControlModel* control = nullptr;  ///< null for a variable and for a focus that was cleared
  ChangeKind kind = ChangeKind::kValue;
  /// The screen was put back as it had been: there is nothing to load for it.
  bool restored = false;
};

using ChangeHandler = std::function<void(const Change& change)>;

/// Keeps a handler subscribed until it is destroyed or ended. It may outlive what it observes.
class Subscription {
 public:
  Subscription() = default;
  ~Subscription() { End(); }
  Subscription(Subscription&&) noexcept = default;
  Subscription& operator=(Subscription&& other) noexcept;
  Subscription(const Subscription&) = delete;
  Subscription& operator=(const Subscription&) = delete;

  /// The handler is not called any more, not even by a notification that is under way.
  void End();

 private:
  friend class Observers;
  struct Observer {
    ChangeHandler handler;
    bool ended = false;
  };
  explicit Subscription(std::shared_ptr<Observer> observer) : observer_(std::move(observer)) {}

  std::shared_ptr<Observer> observer_;
};

/// Calls handlers in the order of their subscription. A handler may subscribe others, which hear of
/// the next change, end any subscription, and change what it observes. What a handler raises passes
/// through and keeps the later handlers from hearing of the change.
class Observers {
 public:
  Observers() = default;
  Observers(const Observers&) = delete;
  Observers& operator=(const Observers&) = delete;

  [[nodiscard]] Subscription Add(ChangeHandler handler);
  /// Whether nobody listens. Once it was False it may stay so until the next notification.
  [[nodiscard]] bool empty() const { return observers_.empty(); }
  void Notify(const Change& change);

 private:
  void Forget();

  std::vector<std::weak_ptr<Subscription::Observer>> observers_;
  int notifying_ = 0;
};

}  // namespace qorhost
