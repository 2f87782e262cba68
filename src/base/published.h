#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace veloran {

/// One change notification with any number of listeners. Main thread only. A listener lives as
/// long as the Subscription it was given; listeners may come and go during a notification.
class ChangeNotifier {
  public:
    using Listener = std::function<void()>;
    using Subscription = std::shared_ptr<const Listener>;

    [[nodiscard]] Subscription subscribe(Listener listener) {
        auto subscription = std::make_shared<const Listener>(std::move(listener));
        listeners_.push_back(subscription);
        return subscription;
    }

    void send() {
        std::erase_if(listeners_, [](const auto& weak) { return weak.expired(); });
        const auto present = listeners_;
        for (const auto& weak : present) {
            if (const auto listener = weak.lock()) (*listener)();
        }
    }

  private:
    std::vector<std::weak_ptr<const Listener>> listeners_;
};

/// A field that tells its owner before each assignment, also of an equal value. `afterChange`, if
/// set, runs with the new value after each assignment; persisted fields write themselves there.
template <class T>
class Published {
  public:
    using AfterChange = std::function<void(const T&)>;

    explicit Published(ChangeNotifier& notifier, T initial = T{})
        : notifier_(notifier), value_(std::move(initial)) {}
    Published(const Published&) = delete;

    Published& operator=(const Published& other) { return *this = other.value_; }
    Published& operator=(T value) {
        notifier_.send();
        value_ = std::move(value);
        if (afterChange_) afterChange_(value_);
        return *this;
    }

    const T& get() const { return value_; }
    operator const T&() const { return value_; }
    const T* operator->() const { return &value_; }
    const T& operator*() const { return value_; }

    /// Sets the value without a notification and without `afterChange`: for construction only.
    void initialise(T value) { value_ = std::move(value); }
    void setAfterChange(AfterChange action) { afterChange_ = std::move(action); }
    /// Adds an action behind the one that is set.
    void alsoAfterChange(AfterChange action) {
        afterChange_ = [first = std::move(afterChange_),
                        action = std::move(action)](const T& value) {
            if (first) first(value);
            action(value);
        };
    }

  private:
    ChangeNotifier& notifier_;
    T value_;
    AfterChange afterChange_;
};

}  // namespace veloran
