#pragma once

#include <string>

#include "core/preview_kind.h"

namespace lumisk {

/// Why a preview failed, as the host is told.
struct ErrorRecord {
  std::string domain;
  int code = 0;
  std::string localizedDescription;

  /// `Error Domain=Lumisk Code=1 "Failed …" UserInfo={NSLocalizedDescription=Failed …}`
  std::string description() const;

  bool operator==(const ErrorRecord&) const = default;
};

/// The domain of this system's own errors.
inline constexpr const char* kLumiskErrorDomain = "Lumisk";
/// The domain of errors that the operating system reported; the code is the errno.
inline constexpr const char* kPosixErrorDomain = "POSIX";

/// The record for a file of this kind (not `Folder`) whose bytes are no UTF-8.
ErrorRecord undecodableTextError(PreviewKind kind);

}  // namespace lumisk
