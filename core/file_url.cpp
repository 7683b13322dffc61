#include "core/file_url.h"

#include <algorithm>
#include <cstddef>

namespace lumisk {

namespace {

constexpr std::string_view kScheme = "file:";
constexpr char kHexDigits[] = "0123456789ABCDEF";

bool isAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool staysInUrl(char c) {
  constexpr std::string_view kUnescaped = "-._~!$&'()*+,=:@/";
  return isAsciiLetter(c) || isDigit(c) || kUnescaped.find(c) != std::string_view::npos;
}

char asciiLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 0x20) : c; }

bool startsWithIgnoringCase(std::string_view text, std::string_view lowerPrefix) {
  return text.size() >= lowerPrefix.size() &&
         std::equal(lowerPrefix.begin(), lowerPrefix.end(), text.begin(),
                    [](char prefix, char c) { return prefix == asciiLower(c); });
}

int hexValue(char c) {
  if (isDigit(c)) return c - '0';
  const char lower = asciiLower(c);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::optional<std::string> percentDecoded(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] != '%') {
      bytes += text[at];
      continue;
    }
    if (text.size() - at < 3) return std::nullopt;
    const int high = hexValue(text[at + 1]);
    const int low = hexValue(text[at + 2]);
    if (high < 0 || low < 0) return std::nullopt;
    bytes += static_cast<char>(high * 16 + low);
    at += 2;
  }
  return bytes;
}

// The components of `path` appended to `normalized` (a path that ends in a slash), "." left out and
// ".." taking one component back. The result ends in a slash when it can only be a folder.
std::string resolved(std::string normalized, std::string_view path) {
  while (!path.empty()) {
    const std::size_t slash = path.find('/');
    const bool isLast = slash == std::string_view::npos;
    const std::string_view component = path.substr(0, slash);
    path.remove_prefix(isLast ? path.size() : slash + 1);
    if (component.empty() || component == ".") continue;
    if (component == "..") {
      if (normalized.size() > 1) normalized.erase(normalized.rfind('/', normalized.size() - 2) + 1);
      continue;
    }
    normalized += component;
    if (!isLast) normalized += '/';
  }
  return normalized;
}

}  // namespace

FileURL FileURL::fromPath(std::string_view path, std::string_view currentDirectory) {
  std::string base = "/";
  if (path.empty() || path.front() != '/') {
    base = resolved("/", currentDirectory);
    if (base.back() != '/') base += '/';
  }
  return FileURL(resolved(std::move(base), path));
}

bool FileURL::hasFileScheme(std::string_view text) { return startsWithIgnoringCase(text, kScheme); }

std::optional<FileURL> FileURL::fromString(std::string_view text) {
  constexpr std::string_view kLocalhost = "localhost/";
  if (!hasFileScheme(text)) return std::nullopt;
  text.remove_prefix(kScheme.size());
  text = text.substr(0, text.find_first_of("?#"));
  if (text.substr(0, 2) == "//") {
    text.remove_prefix(2);
    if (startsWithIgnoringCase(text, kLocalhost)) text.remove_prefix(kLocalhost.size() - 1);
  }
  if (text.empty() || text.front() != '/') return std::nullopt;
  const std::optional<std::string> path = percentDecoded(text);
  if (!path || path->find('\0') != std::string::npos) return std::nullopt;
  return fromPath(*path);
}

std::string FileURL::path() const {
  return path_.size() > 1 && path_.back() == '/' ? path_.substr(0, path_.size() - 1) : path_;
}

std::string FileURL::absoluteString() const {
  std::string text = "file://";
  text.reserve(text.size() + path_.size());
  for (const char c : path_) {
    if (staysInUrl(c)) {
      text += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      text += {'%', kHexDigits[byte >> 4], kHexDigits[byte & 15]};
    }
  }
  return text;
}

std::string FileURL::lastPathComponent() const {
  const std::string whole = path();
  return whole == "/" ? whole : whole.substr(whole.rfind('/') + 1);
}

std::string FileURL::pathExtension() const {
  const std::string name = lastPathComponent();
  const std::size_t dot = name.rfind('.');
  // A name's leading full stop hides it and begins no extension.
  if (dot == std::string::npos || dot == 0) return {};
  return name.substr(dot + 1);
}

FileURL FileURL::deletingLastPathComponent() const {
  const std::string whole = path();
  return FileURL(whole.substr(0, whole.rfind('/') + 1));
}

FileURL FileURL::appendingPathComponent(std::string_view component) const {
  return FileURL((hasDirectoryPath() ? path_ : path_ + '/') + std::string(component));
}

}  // namespace lumisk
