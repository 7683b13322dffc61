#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/file_url.h"

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

}  // namespace lumisk
