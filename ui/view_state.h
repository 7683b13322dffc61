#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace lumisk::ui {

/// The state of a view: one record, shared by all copies of the view.
///
/// A view is a value and its callbacks outlive the call that made them, so what they write must not
/// be part of the value. Work that lands after the view has gone writes into a record that nobody
/// shows any more. Main thread only; before a host has set `onChange`, one thread at a time.
template <typename Record>
class ViewState {
 public:
  explicit ViewState(Record initial) : storage_(std::make_shared<Storage>(std::move(initial))) {}

  const Record& operator*() const { return storage_->record; }
  const Record* operator->() const { return &storage_->record; }

  /// Lets `write` change the record, then tells the host that the view wants to be drawn again.
  template <typename Write>
  void change(Write write) const {
    // The host may let go of the view while it is being told.
    const std::shared_ptr<Storage> storage = storage_;
    write(storage->record);
    const std::function<void()> onChange = storage->onChange;
    if (onChange) onChange();
  }

  void setOnChange(const std::function<void()>& onChange) const { storage_->onChange = onChange; }

 private:
  struct Storage {
    explicit Storage(Record initial) : record(std::move(initial)) {}
    Record record;
    std::function<void()> onChange;
  };
  std::shared_ptr<Storage> storage_;
};

}  // namespace lumisk::ui
