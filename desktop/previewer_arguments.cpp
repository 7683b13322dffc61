#include "desktop/previewer_arguments.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>

namespace lumisk::desktop {
namespace {

/// Beyond it no graphics library draws a picture.
constexpr int kLongestSide = 16'384;

/// What the views call their modes.
constexpr std::string_view kModes[] = {"formatted", "text", "rendered", "source"};

bool isMode(std::string_view name) {
  return std::find(std::begin(kModes), std::end(kModes), name) != std::end(kModes);
}

std::optional<int> sideLength(std::string_view text) {
  int length = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
  const bool isWhole = error == std::errc() && end == text.data() + text.size();
  if (!isWhole || length < 1 || length > kLongestSide) return std::nullopt;
  return length;
}

std::optional<Size> sizeIn(std::string_view text) {
  const std::size_t by = text.find('x');
  if (by == std::string_view::npos) return std::nullopt;
  const auto width = sideLength(text.substr(0, by));
  const auto height = sideLength(text.substr(by + 1));
  if (!width || !height) return std::nullopt;
  return Size{*width, *height};
}

bool isOption(std::string_view word) { return word.size() > 1 && word.front() == '-'; }

/// Takes the words one by one; an option's value is "--size 800x600" or "--size=800x600".
class SnapshotParser {
 public:
  explicit SnapshotParser(const std::vector<std::string_view>& words) : words_(words) {}

  PreviewerArguments parse() {
    bool optionsEnded = false;
    for (; at_ < words_.size() && error_.empty() && !isHelpWanted_; ++at_) {
      const std::string_view word = words_[at_];
      if (!optionsEnded && word == "--")
        optionsEnded = true;
      else if (!optionsEnded && isOption(word))
        takeOption(word);
      else
        paths_.emplace_back(word);
    }
    if (isHelpWanted_) return HelpRequest{};
    if (!error_.empty()) return WrongUsage{error_};
    if (paths_.size() != 2) return WrongUsage{"snapshot needs a FILE and the picture to write"};
    request_.path = paths_[0];
    request_.output = paths_[1];
    return request_;
  }

 private:
  void takeOption(std::string_view word) {
    if (word == "--help") {
      isHelpWanted_ = true;
    } else if (word == "--dark" || word == "--light") {
      request_.isDark = word == "--dark";
    } else if (const auto size = valueOf("--size", word)) {
      request_.size = sizeIn(*size);
      if (!request_.size && error_.empty()) error_ = "--size is like 800x600";
    } else if (const auto mode = valueOf("--mode", word)) {
      takeMode(*mode);
    } else {
      error_ = "unknown option " + std::string(word);
    }
  }

  void takeMode(std::string_view name) {
    request_.mode = name;
    if (error_.empty() && !isMode(name))
      error_ = "there is no mode called " + std::string(name) +
               "; use formatted, text, rendered or source";
  }

  std::optional<std::string_view> valueOf(std::string_view option, std::string_view word) {
    if (word.starts_with(option) && word.size() > option.size() && word[option.size()] == '=')
      return word.substr(option.size() + 1);
    if (word != option) return std::nullopt;
    if (at_ + 1 < words_.size()) return words_[++at_];
    error_ = std::string(option) + " needs a value";
    return "";
  }

  const std::vector<std::string_view>& words_;
  std::size_t at_ = 1;
  SnapshotRequest request_;
  std::vector<std::string> paths_;
  std::string error_;
  bool isHelpWanted_ = false;
};

PreviewerArguments parseOpen(const std::vector<std::string_view>& words) {
  OpenRequest request;
  bool optionsEnded = false;
  const bool saysOpen = !words.empty() && words.front() == "open";
  for (std::size_t i = saysOpen ? 1 : 0; i < words.size(); ++i) {
    if (optionsEnded || !isOption(words[i]))
      request.paths.emplace_back(words[i]);
    else if (words[i] == "--")
      optionsEnded = true;
    else if (words[i] == "--help")
      return HelpRequest{};
    else
      return WrongUsage{"unknown option " + std::string(words[i])};
  }
  if (request.paths.empty()) return WrongUsage{"open what? FILE is missing"};
  return request;
}

}  // namespace

PreviewerArguments parsePreviewerArguments(const std::vector<std::string_view>& words) {
  if (!words.empty() && words.front() == "snapshot") return SnapshotParser(words).parse();
  if (words.size() == 1 && words[0] == "--gapplication-service") return ServiceRequest{};
  if (words.size() == 1 && words[0] == "reload-bus") return ReloadBusRequest{};
  return parseOpen(words);
}

}  // namespace lumisk::desktop
