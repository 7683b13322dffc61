#include "core/output.h"

#include <algorithm>
#include <utility>

namespace lumisk {

namespace {

// Small enough to stay in the second-level cache, large enough that one system call a window is
// no cost.
constexpr std::size_t kWindowSize = Output::kMaxRoom;

// A held block is filled once and copied once, so it only has to be large enough to make its
// allocation no cost; what a page's memory may exceed its size by is one block.
constexpr std::size_t kBlockSize = std::size_t{1024} * 1024;

}  // namespace

void Output::replaceWindow() {
  setWindow(drain({begin_, static_cast<std::size_t>(cursor_ - begin_)}));
}

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

HeldOutput::HeldOutput() { drop(); }

Output::Window HeldOutput::drain(std::string_view filled) {
  if (!blocks_.empty()) {
    blocks_.back().used = filled.size();
    size_ += filled.size();
  }
  blocks_.push_back({std::make_unique_for_overwrite<char[]>(kBlockSize), 0});
  return {blocks_.back().memory.get(), kBlockSize};
}

void HeldOutput::drop() {
  if (blocks_.empty()) blocks_.push_back({std::make_unique_for_overwrite<char[]>(kBlockSize), 0});
  blocks_.resize(1);
  size_ = 0;
  setWindow({blocks_.front().memory.get(), kBlockSize});
}

void HeldOutput::release(Output& destination) {
  flush();
  std::unique_ptr<char[]> spare = std::move(blocks_.back().memory);
  blocks_.pop_back();
  for (Block& block : blocks_) {
    destination.append({block.memory.get(), block.used});
    block.memory.reset();
  }
  blocks_.clear();
  blocks_.push_back({std::move(spare), 0});
  drop();
}

}  // namespace lumisk
