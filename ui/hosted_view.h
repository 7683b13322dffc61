#pragma once

#include <concepts>
#include <functional>
#include <memory>
#include <utility>

#include "ui/view.h"

namespace lumisk::ui {

/// A view type: what `HostedView` can host.
///
///  - `body()` is pure: it says what the state of the moment looks like.
///  - `onAppear()`, if there is one, is called each time the view comes on screen, before its body
///    is first drawn.
///  - `setOnChange(f)`, if the view has a state (see `ViewState`): `f` is called on the main thread
///    after every change of it; an empty function ends that.
template <typename V>
concept Hostable = requires(const V& view) {
  { view.body() } -> std::convertible_to<View>;
};
template <typename V>
concept HasAppearTrigger = requires(V& view) {
  view.onAppear();
};
template <typename V>
concept HasState = requires(V& view, std::function<void()> onChange) {
  view.setOnChange(onChange);
};

/// A view of any type, with its state, in the hands of whoever draws it.
///
/// A host sets `onChange`, calls `onAppear` when it puts the view on screen, draws `body()`, and
/// after each change calls `body()` again, compares with the last value and touches what differs.
/// A view whose type says so may appear on another thread before. A change may be reported while
/// `onAppear` runs and from inside an action of a body. Actions stay valid for as long as somebody
/// holds them, this object's end included.
class HostedView {
 public:
  template <Hostable V>
  explicit HostedView(V view) : view_(std::make_unique<Holder<V>>(std::move(view))) {}
  HostedView(const HostedView&) = delete;
  HostedView& operator=(const HostedView&) = delete;
  HostedView(HostedView&&) noexcept = default;
  HostedView& operator=(HostedView&&) noexcept = default;
  ~HostedView() = default;

  View body() const { return view_->body(); }
  void onAppear() { view_->onAppear(); }
  void setOnChange(std::function<void()> onChange) { view_->setOnChange(std::move(onChange)); }

  /// The hosted view when it is a V, else null. For tests and for hosts that tell kinds apart.
  template <typename V>
  const V* as() const {
    const auto* holder = dynamic_cast<const Holder<V>*>(view_.get());
    return holder ? &holder->view : nullptr;
  }

 private:
  struct Interface {
    Interface() = default;
    Interface(const Interface&) = delete;
    Interface& operator=(const Interface&) = delete;
    virtual ~Interface() = default;
    virtual View body() const = 0;
    virtual void onAppear() = 0;
    virtual void setOnChange(std::function<void()> onChange) = 0;
  };
  template <typename V>
  struct Holder final : Interface {
    explicit Holder(V hosted) : view(std::move(hosted)) {}
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;
    ~Holder() override { Holder::setOnChange({}); }
    View body() const override { return view.body(); }
    void onAppear() override {
      if constexpr (HasAppearTrigger<V>) view.onAppear();
    }
    void setOnChange([[maybe_unused]] std::function<void()> onChange) override {
      if constexpr (HasState<V>) view.setOnChange(std::move(onChange));
    }
    V view;
  };
  std::unique_ptr<Interface> view_;
};

}  // namespace lumisk::ui
