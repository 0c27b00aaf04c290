#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace quorvex {

/// Keeps a subscription to an `Observable` alive: destroying it, assigning to it and `cancel()` end
/// the subscription, also while the subscriber is being notified. It may outlive the observable.
/// Movable; it belongs to the observable's thread.
class [[nodiscard]] Subscription {
 public:
  /// What a subscription ends.
  class Subscriber {
   public:
    Subscriber() = default;
    Subscriber(const Subscriber&) = delete;
    Subscriber& operator=(const Subscriber&) = delete;
    virtual ~Subscriber() = default;
    virtual void end() = 0;
  };

  Subscription() = default;
  explicit Subscription(std::weak_ptr<Subscriber> subscriber)
      : subscriber_(std::move(subscriber)) {}
  Subscription(Subscription&& other) noexcept : subscriber_(std::move(other.subscriber_)) {}
  Subscription& operator=(Subscription&& other) noexcept {
    if (this != &other) {
      cancel();
      subscriber_ = std::move(other.subscriber_);
    }
    return *this;
  }
  Subscription(const Subscription&) = delete;
  Subscription& operator=(const Subscription&) = delete;
  ~Subscription() { cancel(); }

  void cancel() {
    if (const auto subscriber = std::exchange(subscriber_, {}).lock()) {
      subscriber->end();
    }
  }

 private:
  std::weak_ptr<Subscriber> subscriber_;
};

/// A value whose writes are told to subscribers. `set` and `modify` always notify, `setIfChanged`
/// only when the value really changes.
///
/// Subscribers are called in the order of their subscription, each with the value of that moment.
/// Within the call they may read and write the observable (each write is a notification of its
/// own), subscribe (the new subscriber hears the next write), end any subscription (that subscriber
/// is not called any more) and destroy the observable (nobody else is called).
///
/// One thread owns an observable and its subscriptions.
template <typename Value>
class Observable {
 public:
  using Callback = std::function<void(const Value&)>;

  Observable() : Observable(Value{}) {}
  explicit Observable(Value value) : state_(std::make_shared<State>(std::move(value))) {}
  Observable(const Observable&) = delete;
  Observable& operator=(const Observable&) = delete;
  ~Observable() { state_->isDestroyed = true; }

  [[nodiscard]] const Value& value() const { return state_->value; }

  /// Calls `callback` after each write until the returned subscription ends, and then lets go of
  /// what it captured.
  [[nodiscard]] Subscription subscribe(Callback callback) const {
    auto subscriber = std::make_shared<Subscriber>(std::move(callback));
    state_->removeEnded();
    state_->subscribers.push_back(subscriber);
    return Subscription{std::move(subscriber)};
  }

  /// Writes and notifies, whether or not the value differs.
  void set(Value value) {
    state_->value = std::move(value);
    notify();
  }

  /// Writes and notifies only when the value differs. Whether it did.
  bool setIfChanged(Value value) {
    if (state_->value == value) {
      return false;
    }
    set(std::move(value));
    return true;
  }

  /// Changes the value in place by `change(Value&)`, then notifies once. `change` leaves the
  /// observable itself alone.
  template <typename Change>
  void modify(Change&& change) {
    std::forward<Change>(change)(state_->value);
    notify();
  }

 private:
  class Subscriber final : public Subscription::Subscriber {
   public:
    explicit Subscriber(Callback callback) : callback_(std::move(callback)) {}

    void call(const Value& value) {
      if (hasEnded_) {
        return;
      }
      ++runningCalls_;
      callback_(value);
      --runningCalls_;
      releaseWhenIdle();
    }
    void end() override {
      hasEnded_ = true;
      releaseWhenIdle();
    }
    [[nodiscard]] bool hasEnded() const { return hasEnded_; }

   private:
    /// A callback that ends its own subscription still runs and needs what it captured.
    void releaseWhenIdle() {
      if (hasEnded_ && runningCalls_ == 0) {
        const Callback released = std::exchange(callback_, nullptr);
      }
    }

    Callback callback_;
    std::size_t runningCalls_ = 0;
    bool hasEnded_ = false;
  };

  /// Apart from the observable, so that a notification outlives an observable that it destroys.
  struct State {
    explicit State(Value initial) : value(std::move(initial)) {}

    /// A running notification walks the list by index, so nothing leaves it meanwhile.
    void removeEnded() {
      if (runningNotifications == 0) {
        std::erase_if(subscribers, [](const auto& subscriber) { return subscriber->hasEnded(); });
      }
    }

    Value value;
    std::vector<std::shared_ptr<Subscriber>> subscribers;
    std::size_t runningNotifications = 0;  ///< one inside the other
    bool isDestroyed = false;
  };

  void notify() {
    const std::shared_ptr<State> state = state_;
    ++state->runningNotifications;
    const std::size_t count = state->subscribers.size();
    for (std::size_t i = 0; i < count && !state->isDestroyed; ++i) {
      // The list may grow and move during the call.
      const std::shared_ptr<Subscriber> subscriber = state->subscribers[i];
      subscriber->call(state->value);
    }
    --state->runningNotifications;
    state->removeEnded();
  }

  std::shared_ptr<State> state_;
};

}  // namespace quorvex
