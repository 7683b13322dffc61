#include "desktop/item_facts.h"

#include <gio/gio.h>

#include <cerrno>

#include "desktop/display_text.h"
#include "desktop/gref.h"
#include "desktop/texts.h"

namespace lumisk::desktop {
namespace {

constexpr const char* kAttributes = G_FILE_ATTRIBUTE_STANDARD_CONTENT_TYPE
    "," G_FILE_ATTRIBUTE_STANDARD_SIZE "," G_FILE_ATTRIBUTE_STANDARD_TYPE
    "," G_FILE_ATTRIBUTE_TIME_MODIFIED "," G_FILE_ATTRIBUTE_TIME_CREATED;

/// Reading so much and building and writing its page take some 20 ms.
constexpr std::uint64_t kLargeFile = std::uint64_t{2} * 1024 * 1024;  // bytes
/// Of a folder most file systems tell how long its list of names is, or once was: this is one of
/// some ten thousand.
constexpr std::uint64_t kLargeFolder = std::uint64_t{256} * 1024;  // bytes

std::string takeText(char* text) {
  std::string result = text == nullptr ? "" : text;
  g_free(text);
  return result;
}

/// "Modified 21 Nov 2026, 14:05", or nothing where the file system does not tell.
std::string dateText(GFileInfo* info, const char* attribute, TextKey format,
                     const Platform& platform) {
  const guint64 seconds = g_file_info_get_attribute_uint64(info, attribute);
  if (seconds == 0) return {};
  const FileTime time{static_cast<std::time_t>(seconds), 0};
  return trWith(format, platform.makeDateFormatter()->stringFromDate(time));
}

std::string capitalized(const std::string& text) {
  if (text.empty()) return text;
  const char* rest = g_utf8_next_char(text.c_str());
  char first[8] = {};
  g_unichar_to_utf8(g_unichar_toupper(g_utf8_get_char(text.c_str())), first);
  return std::string(first) + rest;
}

void addIfAny(std::vector<std::string>& texts, std::string text) {
  if (!text.empty()) texts.push_back(std::move(text));
}

}  // namespace

ItemFacts readItemFacts(const FileURL& url, const Platform& platform) {
  ItemFacts facts;
  const std::string path = url.path();
  facts.name = displayTitle(url.lastPathComponent());
  facts.iconName = platform.icons.iconForFile(path, std::nullopt).name;
  const auto file = GRef<GFile>::adopt(g_file_new_for_path(path.c_str()));
  const auto info = GRef<GFileInfo>::adopt(
      g_file_query_info(file.get(), kAttributes, G_FILE_QUERY_INFO_NONE, nullptr, nullptr));
  if (!info) return facts;
  if (const char* type = g_file_info_get_content_type(info.get())) {
    facts.contentType = type;
    facts.kind = capitalized(takeText(g_content_type_get_description(type)));
  }
  std::string kindAndSize = facts.kind;
  const GFileType type = g_file_info_get_file_type(info.get());
  const auto size = static_cast<std::uint64_t>(g_file_info_get_size(info.get()));
  facts.isFolder = type == G_FILE_TYPE_DIRECTORY;
  facts.isLarge = size >= (facts.isFolder ? kLargeFolder : kLargeFile);
  if (type == G_FILE_TYPE_REGULAR) {
    facts.size = size;
    kindAndSize += (kindAndSize.empty() ? "" : " · ") + takeText(g_format_size(facts.size));
  }
  addIfAny(facts.details, kindAndSize);
  addIfAny(facts.details,
           dateText(info.get(), G_FILE_ATTRIBUTE_TIME_CREATED, "item.created", platform));
  addIfAny(facts.details,
           dateText(info.get(), G_FILE_ATTRIBUTE_TIME_MODIFIED, "item.modified", platform));
  return facts;
}

std::string failureSentence(const ErrorRecord& error, const ItemFacts& facts) {
  const bool isNoText = error.domain == kLumiskErrorDomain;
  const bool isNoFile = error.code == ENOTSUP && !isNoText;  // a pipe, a device
  const bool isKnownKind =
      !facts.kind.empty() && !g_content_type_is_unknown(facts.contentType.c_str());
  if (isNoFile && isKnownKind) return trWith("item.no-preview", facts.kind);
  if (isNoText && isKnownKind && !g_content_type_is_a(facts.contentType.c_str(), "text/plain"))
    return trWith("item.no-preview", facts.kind);
  if (isNoText) return tr("item.not-text");
  if (error.code == ENOENT) return tr("item.gone");
  if (error.code == EACCES || error.code == EPERM) return tr("item.forbidden");
  return trWith("item.unreadable", displayLine(error.localizedDescription));
}

}  // namespace lumisk::desktop
