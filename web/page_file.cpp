#include "web/page_file.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/file_descriptor.h"

namespace lumisk {

namespace {

constexpr const char* kFolderName = "LumiskHTML";
constexpr const char* kFileName = "preview.html";
constexpr std::string_view kTemporaryPrefix = ".preview-";
constexpr std::string_view kTemporarySuffix = ".tmp";

constexpr mode_t kOwnerOnlyFolder = 0700;
constexpr mode_t kOwnerOnlyFile = 0600;
constexpr mode_t kPermissions = 07777;

// Linux writes at most this much at once; asking for more is an error elsewhere.
constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;

// A new temporary file is lost to another writer's sweep only in the moment before it is locked;
// twice in a row is unheard of.
constexpr int kMostAttempts = 16;

// Failures show when the folder is opened.
void makeFolderAndParents(const std::string& path) {
  for (std::size_t end = path.find('/', 1); end != std::string::npos;
       end = path.find('/', end + 1)) {
    ::mkdir(path.substr(0, end).c_str(), kOwnerOnlyFolder);
  }
  ::mkdir(path.c_str(), kOwnerOnlyFolder);
}

// The folder, if it is one of this user's own that nobody else can look into.
FileDescriptor openPrivateFolder(const std::string& path) {
  FileDescriptor folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  struct stat status {};
  if (!folder.isOpen() || ::fstat(folder.get(), &status) != 0) return {};
  if (status.st_uid != ::geteuid()) return {};
  if ((status.st_mode & kPermissions) != kOwnerOnlyFolder &&
      ::fchmod(folder.get(), kOwnerOnlyFolder) != 0) {
    return {};
  }
  return folder;
}

bool isTemporaryName(std::string_view name) {
  return name.starts_with(kTemporaryPrefix) && name.ends_with(kTemporarySuffix);
}

std::string newTemporaryName() {
  std::uint64_t number = 0;
  if (::getentropy(&number, sizeof number) != 0) return {};
  std::array<char, 16> digits{};
  const auto end = std::to_chars(digits.begin(), digits.end(), number, 16);
  return std::string(kTemporaryPrefix).append(digits.data(), end.ptr).append(kTemporarySuffix);
}

bool lock(const FileDescriptor& file) { return ::flock(file.get(), LOCK_EX | LOCK_NB) == 0; }

// Removes what writers left behind that were killed. A living writer holds a lock on its file.
void sweepTemporaryFiles(const FileDescriptor& folder) {
  const int listed = ::openat(folder.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(listed < 0 ? nullptr : ::fdopendir(listed),
                                                    ::closedir);
  if (!entries) return;
  while (const dirent* entry = ::readdir(entries.get())) {
    if (!isTemporaryName(entry->d_name)) continue;
    const FileDescriptor file(
        ::openat(folder.get(), entry->d_name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    const bool isStale = file.isOpen() ? lock(file) : errno == ELOOP;
    if (isStale) ::unlinkat(folder.get(), entry->d_name, 0);
  }
}

}  // namespace

WrittenPage::~WrittenPage() {
  if (file_.isOpen()) remove();
}

bool WrittenPage::create() {
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    name_ = newTemporaryName();
    file_ = FileDescriptor(::openat(folder_.get(), name_.c_str(),
                                    O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                                    kOwnerOnlyFile));
    if (!file_.isOpen() && errno != EEXIST) return false;
    if (!file_.isOpen()) continue;
    if (isSafeFromSweeps()) return true;
    remove();
  }
  return false;
}

bool WrittenPage::write(std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(file_.get(), text.data(), std::min(text.size(), kMostAtOnce));
    if (written < 0 && errno != EINTR) return false;
    if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

std::optional<FileURL> WrittenPage::putInPlace() {
  if (::renameat(folder_.get(), name_.c_str(), folder_.get(), kFileName) != 0) return std::nullopt;
  file_.reset();
  return pageURL_;
}

void WrittenPage::remove() {
  ::unlinkat(folder_.get(), name_.c_str(), 0);
  file_.reset();
}

// Where files cannot be locked nothing is ever swept either.
bool WrittenPage::isSafeFromSweeps() {
  if (!lock(file_) && errno == EWOULDBLOCK) return false;
  struct stat status {};
  return ::fstat(file_.get(), &status) == 0 && status.st_nlink > 0;
}

std::optional<WrittenPage> writePageBeside(std::string_view cachesDirectory,
                                           std::string_view html) {
  const FileURL folderURL = FileURL::fromPath(cachesDirectory).appendingPathComponent(kFolderName);
  makeFolderAndParents(folderURL.path());
  FileDescriptor folder = openPrivateFolder(folderURL.path());
  if (!folder.isOpen()) return std::nullopt;

  sweepTemporaryFiles(folder);
  WrittenPage page(std::move(folder));
  page.pageURL_ = folderURL.appendingPathComponent(kFileName);
  if (!page.create() || !page.write(html)) return std::nullopt;
  return page;
}

std::optional<FileURL> writePageFile(std::string_view cachesDirectory, std::string_view html) {
  std::optional<WrittenPage> page = writePageBeside(cachesDirectory, html);
  return page ? page->putInPlace() : std::nullopt;
}

}  // namespace lumisk
