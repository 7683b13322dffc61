#include "platform/previewed_file.h"

#include <optional>
#include <utility>

#include "core/lowercase.h"
#include "core/utf8.h"

namespace lumisk {

namespace {

// A name is bytes; its extension is compared and shown as text.
std::string lowercasedExtension(const FileURL& url) {
  return lowercased(withReplacementCharacters(url.pathExtension()));
}

}  // namespace

PreviewKind previewKindOf(const FileURL& url) {
  return previewKindOfFile(lowercasedExtension(url));
}

std::variant<PreviewedFile, ErrorRecord> PreviewedFile::load(
    const FileURL& url, const std::function<bool()>& isWanted) {
  bool isText = false;
  const auto isWorthReadingOn = [&](std::string_view soFar) {
    isText = isText || canBeginUtf8(soFar);
    return isText && (!isWanted || isWanted());
  };
  std::variant<FileContents, ErrorRecord> contents = readFile(url.path(), isWorthReadingOn);
  if (auto* error = std::get_if<ErrorRecord>(&contents)) return std::move(*error);

  PreviewedFile file;
  file.contents_ = std::get<FileContents>(std::move(contents));
  file.extension_ = lowercasedExtension(url);
  file.kind_ = previewKindOfFile(file.extension_);
  const std::optional<std::string_view> text = decodedUtf8(file.contents_.bytes());
  if (!text) return undecodableTextError(file.kind_);
  file.text_ = *text;
  return file;
}

}  // namespace lumisk
