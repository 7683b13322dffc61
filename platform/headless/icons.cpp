#include "platform/headless/icons.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <string>

namespace lumisk {
namespace {

constexpr std::string_view kFolder = "folder";
constexpr std::string_view kGeneric = "text-x-generic";
constexpr std::string_view kProgram = "application-x-executable";
constexpr std::string_view kAudio = "audio-x-generic";
constexpr std::string_view kCalendar = "x-office-calendar";
constexpr std::string_view kContact = "x-office-address-book";
constexpr std::string_view kDocument = "x-office-document";
constexpr std::string_view kFont = "font-x-generic";
constexpr std::string_view kImage = "image-x-generic";
constexpr std::string_view kPackage = "package-x-generic";
constexpr std::string_view kScript = "text-x-script";
constexpr std::string_view kSlides = "x-office-presentation";
constexpr std::string_view kSheet = "x-office-spreadsheet";
constexpr std::string_view kVideo = "video-x-generic";
constexpr std::string_view kWebPage = "text-html";

struct Row {
  std::string_view extension;
  std::string_view icon;
};

// In the order of the extensions; the test says so when it is not.
constexpr std::array kIconOfExtension = {
    Row{"7z", kPackage},   Row{"aac", kAudio},     Row{"appimage", kProgram},
    Row{"avi", kVideo},    Row{"avif", kImage},    Row{"bash", kScript},
    Row{"bmp", kImage},    Row{"bz2", kPackage},   Row{"csv", kSheet},
    Row{"deb", kPackage},  Row{"doc", kDocument},  Row{"docx", kDocument},
    Row{"eps", kImage},    Row{"epub", kDocument}, Row{"flac", kAudio},
    Row{"gif", kImage},    Row{"gz", kPackage},    Row{"heic", kImage},
    Row{"htm", kWebPage},  Row{"html", kWebPage},  Row{"ico", kImage},
    Row{"ics", kCalendar}, Row{"iso", kPackage},   Row{"jar", kPackage},
    Row{"jpeg", kImage},   Row{"jpg", kImage},     Row{"js", kScript},
    Row{"m4a", kAudio},    Row{"m4v", kVideo},     Row{"mid", kAudio},
    Row{"mkv", kVideo},    Row{"mov", kVideo},     Row{"mp3", kAudio},
    Row{"mp4", kVideo},    Row{"mpeg", kVideo},    Row{"mpg", kVideo},
    Row{"odp", kSlides},   Row{"ods", kSheet},     Row{"odt", kDocument},
    Row{"oga", kAudio},    Row{"ogg", kAudio},     Row{"ogv", kVideo},
    Row{"opus", kAudio},   Row{"otf", kFont},      Row{"pdf", kDocument},
    Row{"pl", kScript},    Row{"png", kImage},     Row{"ppt", kSlides},
    Row{"pptx", kSlides},  Row{"ps", kDocument},   Row{"py", kScript},
    Row{"rar", kPackage},  Row{"rb", kScript},     Row{"rpm", kPackage},
    Row{"rtf", kDocument}, Row{"sh", kScript},     Row{"so", kProgram},
    Row{"svg", kImage},    Row{"tar", kPackage},   Row{"tgz", kPackage},
    Row{"tif", kImage},    Row{"tiff", kImage},    Row{"tsv", kSheet},
    Row{"ttc", kFont},     Row{"ttf", kFont},      Row{"vcf", kContact},
    Row{"wav", kAudio},    Row{"webm", kVideo},    Row{"webp", kImage},
    Row{"woff", kFont},    Row{"woff2", kFont},    Row{"xhtml", kWebPage},
    Row{"xls", kSheet},    Row{"xlsx", kSheet},    Row{"xz", kPackage},
    Row{"zip", kPackage},  Row{"zsh", kScript},    Row{"zst", kPackage},
};
static_assert(std::ranges::is_sorted(kIconOfExtension, {}, &Row::extension));

constexpr std::size_t kLongestExtension = 8;

/// "gz" of "/a/b.tar.gz"; empty for names without one and for "/a/.bashrc".
std::string_view extensionOf(std::string_view path) {
  const std::string_view name = path.substr(path.rfind('/') + 1);
  const std::size_t stop = name.rfind('.');
  return stop == std::string_view::npos || stop == 0 ? std::string_view() : name.substr(stop + 1);
}

std::string_view iconOfExtension(std::string_view extension) {
  if (extension.empty() || extension.size() > kLongestExtension) return {};
  std::array<char, kLongestExtension> lower{};
  std::ranges::transform(extension, lower.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  const std::string_view wanted(lower.data(), extension.size());
  const auto* found = std::ranges::lower_bound(kIconOfExtension, wanted, {}, &Row::extension);
  const bool isKnown = found != kIconOfExtension.end() && found->extension == wanted;
  return isKnown ? found->icon : std::string_view();
}

std::string_view iconOfItemOnDisk(std::string_view path) {
  struct stat status {};
  if (stat(std::string(path).c_str(), &status) != 0) return kGeneric;
  if (S_ISDIR(status.st_mode)) return kFolder;
  const bool isProgram = S_ISREG(status.st_mode) && (status.st_mode & S_IXUSR) != 0;
  return isProgram ? kProgram : kGeneric;
}

}  // namespace

Icon HeadlessIcons::iconForFile(std::string_view path, std::optional<bool> isDirectory) const {
  if (isDirectory.value_or(false)) return {std::string(kFolder)};
  const std::string_view onDisk = isDirectory ? kGeneric : iconOfItemOnDisk(path);
  if (onDisk == kFolder) return {std::string(kFolder)};
  const std::string_view known = iconOfExtension(extensionOf(path));
  return {std::string(known.empty() ? onDisk : known)};
}

}  // namespace lumisk
