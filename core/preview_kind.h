#pragma once

#include <string_view>

namespace lumisk {

/// What a preview shows an item as.
enum class PreviewKind { Folder, Markdown, Table, Jsonl, Json, Code };

/// The kind of a file with this path extension, which must be in lower case. Never `Folder`: that
/// is decided by the file system, before any name is looked at.
PreviewKind previewKindOfFile(std::string_view lowercasedExtension);

/// The cell separator of a table file with this (lower-case) extension.
std::string_view tableSeparator(std::string_view lowercasedExtension);

}  // namespace lumisk
