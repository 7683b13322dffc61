#include "core/output.h"

#include <algorithm>
#include <utility>

namespace lumisk {

namespace {

// Small enough to stay in the second-level cache, large enough that one system call a window is
// no cost.
constexpr std::size_t kWindowSize = Output::kMaxRoom;

// Holds the documents that are shown most often, and stays in the second-level cache.
constexpr std::size_t kDraftSize = std::size_t{256} * 1024;

}  // namespace

void Output::replaceWindow() { setWindow(drain(filled())); }

void Output::appendInParts(std::string_view text) {
  if (text.size() > kMaxRoom) {
    replaceWindow();
    if (takeDirectly(text)) return;
  }
  while (!text.empty()) {
    if (cursor_ == end_) replaceWindow();
    const std::size_t part = std::min(text.size(), static_cast<std::size_t>(end_ - cursor_));
    std::memcpy(cursor_, text.data(), part);
    cursor_ += part;
    text.remove_prefix(part);
  }
}

StringOutput::StringOutput(std::size_t expectedSize)
    : window_(std::make_unique_for_overwrite<char[]>(kWindowSize)) {
  text_.reserve(expectedSize);
  setWindow({window_.get(), kWindowSize});
}

Output::Window StringOutput::drain(std::string_view filled) {
  text_.append(filled);
  return {window_.get(), kWindowSize};
}

bool StringOutput::takeDirectly(std::string_view text) {
  text_.append(text);
  return true;
}

std::string StringOutput::take() {
  flush();
  return std::exchange(text_, {});
}

DraftOutput::DraftOutput() : memory_(std::make_unique_for_overwrite<char[]>(kDraftSize)) {
  restart();
}

Output::Window DraftOutput::drain(std::string_view filled) {
  lostSize_ += filled.size();
  return {memory_.get(), kDraftSize};
}

void DraftOutput::restart() {
  lostSize_ = 0;
  setWindow({memory_.get(), kDraftSize});
}

}  // namespace lumisk
