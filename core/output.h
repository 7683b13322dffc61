#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

namespace lumisk {

/// Where a page builder writes.
///
/// A builder fills a window of memory; the window is emptied by `drain` when it is full. So the
/// command streams a page of any size through one small window that stays in the cache, and a view
/// that holds the whole page gets it from the same code. Touching fresh memory costs more than all
/// the work a builder does on it, which is why nothing here makes a second copy of a page.
class Output {
 public:
  /// The most that one call of `room` may ask for, in bytes. Kernels split their input by it.
  static constexpr std::size_t kMaxRoom = std::size_t{64} * 1024;

  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;
  virtual ~Output() = default;

  /// Writes all of `text`.
  void append(std::string_view text) {
    if (text.size() <= static_cast<std::size_t>(end_ - cursor_)) {
      if (!text.empty()) std::memcpy(cursor_, text.data(), text.size());
      cursor_ += text.size();
    } else {
      appendInParts(text);
    }
  }

  /// At least `size` bytes of writable memory (`size` <= kMaxRoom). What was written there counts
  /// once `advance` is told where it ends; the pointer is good until the next call on this object.
  char* room(std::size_t size) {
    if (size > static_cast<std::size_t>(end_ - cursor_)) replaceWindow();
    return cursor_;
  }
  /// End of the memory that `room` handed out; never less than what it was asked for.
  const char* roomEnd() const { return end_; }
  void advance(char* writtenEnd) { cursor_ = writtenEnd; }

  /// Begins a stretch of writing that may turn out not to be wanted; `endTrial` tells. False, with
  /// nothing changed, from an output that has no memory of its own to hold it: then see
  /// `DraftOutput`. Trials do not nest.
  virtual bool beginTrial() { return false; }
  /// Ends the trial: what was written since it began counts if `isWanted`, else it never was.
  virtual void endTrial(bool isWanted) { static_cast<void>(isWanted); }

  /// Hands over what the window still holds. Call it once, after the last write.
  void flush() { replaceWindow(); }

 protected:
  Output() = default;
  struct Window {
    char* begin;
    std::size_t size;  // >= kMaxRoom
  };
  void setWindow(Window window) {
    begin_ = cursor_ = window.begin;
    end_ = window.begin + window.size;
  }
  /// Hands over what the window holds, now.
  void replaceWindow();
  /// What the window holds.
  std::string_view filled() const { return {begin_, static_cast<std::size_t>(cursor_ - begin_)}; }
  /// Takes `filled` (may be empty), which lies in the current window, and returns the window to
  /// write to next: the same one if its bytes were copied or sent away, or another.
  virtual Window drain(std::string_view filled) = 0;
  /// Takes a text longer than a window directly, the window being empty, and says so; false to
  /// have it copied through windows.
  virtual bool takeDirectly(std::string_view text) {
    static_cast<void>(text);
    return false;
  }

 private:
  void appendInParts(std::string_view text);

  char* begin_ = nullptr;
  char* cursor_ = nullptr;
  char* end_ = nullptr;
};

/// Collects what is written in one string. The caller says how much to reserve: with the right
/// figure there is one allocation.
class StringOutput final : public Output {
 public:
  explicit StringOutput(std::size_t expectedSize);
  /// The text; leaves this object empty and done.
  std::string take();

 private:
  Window drain(std::string_view filled) override;
  bool takeDirectly(std::string_view text) override;

  std::string text_;
  std::unique_ptr<char[]> window_;
};

/// Writes on trial: counts everything, and keeps it as long as it fits in a small memory. Whether a
/// text is JSON is known at its last byte only. What was written until then is here if it is small;
/// if it is large it is written once more, because going through the text twice costs less than
/// fresh memory for all of the output.
class DraftOutput final : public Output {
 public:
  DraftOutput();
  /// Bytes written since the last `restart`.
  std::size_t size() const { return lostSize_ + filled().size(); }
  /// Whether `text` is everything that was written.
  bool isComplete() const { return lostSize_ == 0; }
  std::string_view text() const { return filled(); }
  /// Forgets what was written.
  void restart();

 private:
  Window drain(std::string_view filled) override;

  std::unique_ptr<char[]> memory_;
  std::size_t lostSize_ = 0;
};

}  // namespace lumisk
