#include "folder/folder_subtitle.h"

#include <optional>
#include <string_view>

#include "folder/message.h"

namespace lumisk {
namespace {

void appendPart(std::string& text, std::string_view separator, std::string_view part) {
  if (!text.empty()) text.append(separator);
  text.append(part);
}

void appendCount(std::string& text, std::string_view key, std::int64_t count,
                 const StringTable& strings) {
  if (count < 1) return;
  // A text that is missing everywhere shows as its key.
  const std::string pattern = strings.pluralText(key, count).value_or(std::string(key));
  appendPart(text, ", ", formatMessage(pattern, std::to_string(count)));
}

}  // namespace

std::string buildFolderSubtitle(const FolderState& folder, const StringTable& strings) {
  std::string subtitle;
  appendCount(subtitle, "folder.items", folder.totalCount, strings);
  appendCount(subtitle, "folder.items.hidden", folder.hiddenCount, strings);
  if (folder.folderSizeStr) appendPart(subtitle, ", ", *folder.folderSizeStr);
  if (folder.folderDateStr) {
    const std::string pattern = strings.text("folder.modified").value_or("folder.modified");
    appendPart(subtitle, " - ", formatMessage(pattern, *folder.folderDateStr));
  }
  return subtitle;
}

}  // namespace lumisk
