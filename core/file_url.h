#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lumisk {

/// The URL of a file or folder on this machine: an absolute, lexically normalised path, as bytes.
///
/// A path is bytes and need not be text, so nothing here decodes it. A trailing slash says that the
/// URL names a folder; it is part of the value and of its absolute string.
class FileURL {
 public:
  /// The URL of `path`. A relative path is completed by `currentDirectory` (absolute); ".", ".."
  /// and doubled slashes are resolved in the text alone: no symbolic link is followed.
  static FileURL fromPath(std::string_view path, std::string_view currentDirectory = "/");

  /// The URL that `text` states: "file:///path", "file:/path" or "file://localhost/path", with
  /// percent escapes (RFC 8089). A query or fragment is dropped: it names a place in the file.
  /// Nothing when the scheme is another, the host is another machine, the path is relative, an
  /// escape is malformed, or the path would hold a NUL.
  static std::optional<FileURL> fromString(std::string_view text);

  /// Whether `text` begins with "file:", in letters of either case.
  static bool hasFileScheme(std::string_view text);

  /// The path's bytes without the trailing slash (the root is "/").
  std::string path() const;

  /// "file://" and the path. Letters, digits and -._~!$&'()*+,=:@/ stand as they are; every other
  /// byte is "%" and two upper-case hex digits, so the string is safe in an attribute value.
  std::string absoluteString() const;

  /// "notes.md" of "/a/notes.md", "a" of "/x/a/", "/" of the root.
  std::string lastPathComponent() const;

  /// "gz" of "a.tar.gz"; empty for "Makefile", ".bashrc" and "name.".
  std::string pathExtension() const;

  /// The folder that holds the item: "/a/" of "/a/b.md" and of "/a/b/"; "/" of the root.
  FileURL deletingLastPathComponent() const;

  /// This folder's item `component`.
  FileURL appendingPathComponent(std::string_view component) const;

  bool hasDirectoryPath() const { return path_.back() == '/'; }

  bool operator==(const FileURL&) const = default;

 private:
  explicit FileURL(std::string path) : path_(std::move(path)) {}
  std::string path_;  // starts with "/"
};

}  // namespace lumisk
