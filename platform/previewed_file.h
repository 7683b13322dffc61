#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <variant>

#include "core/error_record.h"
#include "core/file_url.h"
#include "core/preview_kind.h"
#include "platform/file_reading.h"

namespace lumisk {

/// The kind of the file at `url`, told from its name. Never `Folder`.
PreviewKind previewKindOf(const FileURL& url);

/// A file that was read and understood as text, ready for the builder of its kind.
class PreviewedFile {
 public:
  /// Reads the item at `url`, which is no folder, tells its kind from its name and decodes it. An
  /// error of reading is in the domain "POSIX", one of decoding in "Lumisk". A film of 8 GB is not
  /// read through to find that it is no text: its beginning tells.
  ///
  /// `isWanted` is asked now and then; after a no the result is of no use.
  static std::variant<PreviewedFile, ErrorRecord> load(const FileURL& url,
                                                       const std::function<bool()>& isWanted = {});

  PreviewKind kind() const { return kind_; }
  /// The path extension in lower case.
  const std::string& extension() const { return extension_; }
  /// The file's text; good as long as this object.
  std::string_view text() const { return text_; }

 private:
  PreviewedFile() = default;

  FileContents contents_;
  std::string_view text_;  // in contents_
  std::string extension_;
  PreviewKind kind_ = PreviewKind::Code;
};

}  // namespace lumisk
