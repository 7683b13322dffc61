#include "folder/folder_listing.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <utility>

#include "folder/directory_reader.h"
#include "folder/file_size_text.h"
#include "folder/item_order.h"

namespace lumisk {
namespace {

constexpr const char* kUnknownDate = "—";
constexpr const char* kNoSize = "—";
constexpr const char* kUnknownSize = "?";

/// The names of all entries, hidden ones included, in one block: a folder may have a million.
struct Names {
  std::string bytes;  ///< each name ends with a null
  std::size_t count = 0;
};

/// The names, before any of the entries is looked at; nothing when they cannot all be read.
std::optional<Names> readNames(const FileDescriptor& folder) {
  Names names;
  DirectoryReader reader;
  reader.start(folder);
  for (DirectoryReader::Entry entry{}; reader.next(entry); ++names.count)
    names.bytes.append(entry.name).push_back('\0');
  if (reader.hasFailed()) return std::nullopt;
  return names;
}

std::optional<struct stat> statusOf(const FileDescriptor& folder, const char* name) {
  struct stat status {};
  const int result = fstatat(folder.get(), name, &status, AT_SYMLINK_NOFOLLOW);
  return result == 0 ? std::optional(status) : std::nullopt;
}

/// Whether the entry is a folder or a link that leads to one.
bool isOrLeadsToFolder(const FileDescriptor& folder, const char* name,
                       const std::optional<struct stat>& status) {
  if (!status || !S_ISLNK(status->st_mode)) return status && S_ISDIR(status->st_mode);
  struct stat target {};
  return fstatat(folder.get(), name, &target, 0) == 0 && S_ISDIR(target.st_mode);
}

/// Builds the items of one folder.
class ItemBuilder {
 public:
  ItemBuilder(const std::string& path, const DateFormatter& dateFormatter, const Icons& icons)
      : entryPath_(path.ends_with('/') ? path : path + '/'),
        folderLength_(entryPath_.size()),
        dateFormatter_(dateFormatter),
        icons_(icons) {}

  /// `looksLikeFolder`: whether the entry has a folder's icon, be it only a link to one.
  FileItem build(std::string name, const std::optional<struct stat>& status, bool looksLikeFolder) {
    const bool isDirectory = status && S_ISDIR(status->st_mode);
    FileItem item;
    item.id = ids_.next();
    item.icon = iconOf(name, looksLikeFolder);
    item.name = std::move(name);
    item.size = sizeText(status, isDirectory);
    item.date = status ? dateFormatter_.stringFromDate(status->st_mtim) : kUnknownDate;
    item.isDirectory = isDirectory;
    return item;
  }

 private:
  Icon iconOf(const std::string& name, bool looksLikeFolder) {
    entryPath_.replace(folderLength_, std::string::npos, name);
    return icons_.iconForFile(entryPath_, looksLikeFolder);
  }

  static std::string sizeText(const std::optional<struct stat>& status, bool isDirectory) {
    if (isDirectory) return kNoSize;
    return status ? formatFileSize(status->st_size) : kUnknownSize;
  }

  std::string entryPath_;
  std::size_t folderLength_;
  const DateFormatter& dateFormatter_;
  const Icons& icons_;
  UuidSource ids_;
};

}  // namespace

std::optional<FolderListing> listFolder(const std::string& path, const DateFormatter& dateFormatter,
                                        const Platform& platform) {
  const FileDescriptor folder = openFolder(path.c_str());
  if (!folder.isOpen()) return std::nullopt;
  const auto names = readNames(folder);
  if (!names) return std::nullopt;

  const auto isHidden = platform.hiddenNames.inFolder(path);
  ItemBuilder builder(path, dateFormatter, platform.icons);
  FolderListing listing;
  listing.items.reserve(names->count);
  for (std::size_t at = 0; at < names->bytes.size();) {
    std::string name(names->bytes.c_str() + at);
    at += name.size() + 1;
    const std::optional<struct stat> status = statusOf(folder, name.c_str());
    // What cannot be looked at is not known to be hidden either.
    if (status && isHidden(name)) {
      ++listing.hiddenCount;
    } else {
      const bool looksLikeFolder = isOrLeadsToFolder(folder, name.c_str(), status);
      listing.items.push_back(builder.build(std::move(name), status, looksLikeFolder));
    }
  }
  listing.items = inFolderOrder(std::move(listing.items), platform.collation);
  return listing;
}

}  // namespace lumisk
