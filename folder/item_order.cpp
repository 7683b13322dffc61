#include "folder/item_order.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace lumisk {
namespace {

/// An item's key: where it lies among the bytes of all keys, and its beginning as a number, which
/// decides most comparisons without a look there.
struct Key {
  std::uint64_t beginning;
  std::size_t offset;
  std::uint32_t length;
  std::uint32_t index;  // of the item
};

std::uint64_t beginningOf(std::string_view key) {
  std::uint64_t number = 0;
  for (std::size_t i = 0; i < sizeof number; ++i) {
    number = number << 8 | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0U);
  }
  return number;
}

/// All keys. They lie in one block: a folder may have a million entries.
class Keys {
 public:
  Keys(const std::vector<FileItem>& items, const Collation& collation) {
    keys_.reserve(items.size());
    bytes_.reserve(items.size() * kUsualKey);
    for (const FileItem& item : items) add(item, collation);
  }

  std::vector<Key> sorted() && {
    std::ranges::sort(keys_, [this](const Key& a, const Key& b) {
      if (a.beginning != b.beginning) return a.beginning < b.beginning;
      const int order = bytesOf(a).compare(bytesOf(b));
      return order != 0 ? order < 0 : a.index < b.index;
    });
    return std::move(keys_);
  }

 private:
  static constexpr std::size_t kUsualKey = 48;  // bytes; what is not used costs nothing

  void add(const FileItem& item, const Collation& collation) {
    const std::string name = collation.sortKey(item.name);
    const std::size_t offset = bytes_.size();
    bytes_.push_back(item.isDirectory ? '\0' : '\1');
    bytes_.append(name);
    keys_.push_back({.beginning = beginningOf(std::string_view(bytes_).substr(offset)),
                     .offset = offset,
                     .length = static_cast<std::uint32_t>(name.size() + 1),
                     .index = static_cast<std::uint32_t>(keys_.size())});
  }

  std::string_view bytesOf(const Key& key) const {
    return std::string_view(bytes_).substr(key.offset, key.length);
  }

  std::string bytes_;
  std::vector<Key> keys_;
};

/// Moves the items that stand in each other's places, starting with the one at `first`, and notes
/// that each is in its own now. A second vector would need as much memory again.
void putInOrder(std::vector<FileItem>& items, std::vector<Key>& order, std::uint32_t first) {
  if (order[first].index == first) return;
  FileItem displaced = std::move(items[first]);
  std::uint32_t place = first;
  while (true) {
    const std::uint32_t source = std::exchange(order[place].index, place);
    if (source == first) break;
    items[place] = std::move(items[source]);
    place = source;
  }
  items[place] = std::move(displaced);
}

}  // namespace

std::vector<FileItem> inFolderOrder(std::vector<FileItem> items, const Collation& collation) {
  std::vector<Key> order = Keys(items, collation).sorted();
  for (std::uint32_t first = 0; first < order.size(); ++first) putInOrder(items, order, first);
  return items;
}

}  // namespace lumisk
