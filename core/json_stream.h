#pragma once

#include <cstddef>
#include <string_view>

#include "core/output.h"

namespace lumisk::json {

/// Where the pass over a text stands: the next byte to read and the next to write. It is passed by
/// value so that both stay in registers; as members they would be reloaded after every byte
/// written, because a char may be a part of anything.
struct Cursor {
  const char* in;
  char* out;

  bool failed() const { return in == nullptr; }
};

/// What a step returns when the text is no JSON.
inline constexpr Cursor kFailed = {nullptr, nullptr};

/// The text that is read and the memory that is written, for the length of one pass.
class Stream {
 public:
  /// After `withRoom` this much may be written without asking again: more than the deepest line
  /// break and some blocks of text take.
  static constexpr std::size_t kRoom = std::size_t{2} * 1024;

  /// The most that is looked at in one step: two blocks, or a number with its sign.
  static constexpr std::ptrdiff_t kReads = 33;

  /// Bytes from the end of `text` up to `readableEnd` may be read, but are not part of it.
  Stream(Output& output, std::string_view text, const char* readableEnd)
      : output_(output),
        end_(text.data() + text.size()),
        lastRead_(readableEnd - text.data() >= kReads ? readableEnd - kReads : nullptr) {}

  Cursor begin(const char* in) { return refilled({in, output_.room(0)}); }
  void finish(Cursor cursor) { output_.advance(cursor.out); }

  const char* end() const { return end_; }
  std::size_t remaining(const char* in) const { return static_cast<std::size_t>(end_ - in); }
  /// Whether kReads bytes are readable at `in`.
  bool isReadable(const char* in) const { return in <= lastRead_; }

  Cursor withRoom(Cursor cursor) {
    if (cursor.out > limit_) [[unlikely]]
      return refilled(cursor);
    return cursor;
  }

  /// Copies what lies before `to`, however long it is, unchanged.
  Cursor copiedThrough(Cursor cursor, const char* to) {
    output_.advance(cursor.out);
    output_.append({cursor.in, static_cast<std::size_t>(to - cursor.in)});
    return begin(to);
  }

 private:
  Cursor refilled(Cursor cursor) {
    output_.advance(cursor.out);
    cursor.out = output_.room(2 * kRoom);
    limit_ = output_.roomEnd() - kRoom;
    return cursor;
  }

  Output& output_;
  const char* end_;
  const char* lastRead_;
  const char* limit_ = nullptr;
};

}  // namespace lumisk::json
