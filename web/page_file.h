#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "core/file_url.h"
#include "platform/file_descriptor.h"

namespace lumisk {

/// Writes `html` to "LumiskHTML/preview.html" in `cachesDirectory`, in one step: whoever reads the
/// file sees this page or another whole one, however many write at once. Folders that are missing
/// are made. Returns the file's URL, or nothing when it could not be written.
///
/// A page holds a person's document, so the folder is for its owner only (0700), the file too
/// (0600). A link in the place of the file is replaced, never followed. A link in the place of the
/// folder, or a folder of somebody else's, is not used: nothing is written. An attempt that was
/// cut short leaves a temporary file behind, which the next one removes.
std::optional<FileURL> writePageFile(std::string_view cachesDirectory, std::string_view html);

/// A page that is written and has yet to take the page file's place. It goes when this goes, unless
/// it was put there.
class WrittenPage {
 public:
  WrittenPage(WrittenPage&&) noexcept = default;
  WrittenPage& operator=(WrittenPage&&) = delete;
  WrittenPage(const WrittenPage&) = delete;
  WrittenPage& operator=(const WrittenPage&) = delete;
  ~WrittenPage();

  /// Makes it the page file, in no time. Once only. Returns the page file's URL, or nothing when
  /// what stands in its place cannot be replaced.
  std::optional<FileURL> putInPlace();

 private:
  friend std::optional<WrittenPage> writePageBeside(std::string_view cachesDirectory,
                                                    std::string_view html);
  explicit WrittenPage(FileDescriptor folder) : folder_(std::move(folder)) {}
  bool create();
  bool write(std::string_view text);
  void remove();
  bool isSafeFromSweeps();

  FileDescriptor folder_;
  FileDescriptor file_;  // open for as long as there is something to remove
  std::string name_;
  std::optional<FileURL> pageURL_;
};

/// The long half of `writePageFile`: whoever reads the page file sees nothing of it yet. On any
/// thread.
std::optional<WrittenPage> writePageBeside(std::string_view cachesDirectory, std::string_view html);

}  // namespace lumisk
