#include "cli/arguments.h"

#include <array>
#include <cstddef>
#include <span>

namespace lumisk {

const std::string_view kHelpText =
    R"(Usage: lumisk page [--dark|--light] [--mode MODE] PATH
       lumisk describe [--dark|--light] [--mode MODE] PATH
       lumisk --help | --version

Shows a file or folder at a glance.

Commands:
  page PATH            write the finished HTML page of the file PATH to standard
                       output
  describe PATH        write an outline of everything the preview of PATH shows:
                       one element a line, web pages by their length and base

PATH is a path or a file: URI. Markdown becomes a document, JSON and JSON Lines
are laid out, CSV and TSV become tables, any other text coloured source.

Options:
  --dark, --light      the appearance (default: light)
  --mode MODE          for JSON and JSON Lines: "formatted" lays the document
                       out, "text" shows it as it stands (default: formatted
                       for JSON, text for JSON Lines); describe takes "rendered"
                       and "source" for Markdown, too
  --                   what follows is no option
  --help               show this text
  --version            show the version

Exit status: 0 when PATH was shown, 1 when it cannot be, 2 when the command line
is wrong.
)";

namespace {

using ParseResult = std::variant<Arguments, UsageError>;

std::string quoted(std::string_view word) { return "'" + std::string(word) + "'"; }

// The modes that a command takes, as a table of words.
std::span<const DocumentMode> modesOf(Subcommand subcommand) {
  static constexpr std::array kAll = {DocumentMode::Formatted, DocumentMode::Text,
                                      DocumentMode::Rendered, DocumentMode::Source};
  constexpr std::size_t kPageModes = 2;  // a Markdown document has one page
  return std::span(kAll).first(subcommand == Subcommand::Page ? kPageModes : kAll.size());
}

std::string listOfModes(Subcommand subcommand) {
  const auto modes = modesOf(subcommand);
  std::string list;
  for (std::size_t i = 0; i < modes.size(); ++i) {
    const bool isLast = i + 1 == modes.size();
    list += (i == 0 ? "" : isLast ? " or " : ", ") + std::string(nameOf(modes[i]));
  }
  return list;
}

/// Reads what follows the name of a command that shows one item.
class ItemCommandParser {
 public:
  explicit ItemCommandParser(Subcommand subcommand) { arguments_.subcommand = subcommand; }

  ParseResult parse(const std::vector<std::string_view>& words) {
    for (std::size_t at = 1; at < words.size() && !error_; ++at) {
      const std::string_view word = words[at];
      if (optionsEnded_ || word.size() < 2 || word.front() != '-') {
        readPath(word);
      } else if (word == "--help") {
        return Arguments{.subcommand = Subcommand::Help};
      } else if (word == "--mode") {
        ++at;
        readMode(at < words.size() ? std::optional(words[at]) : std::nullopt);
      } else {
        readOption(word);
      }
    }
    if (error_) return *std::move(error_);
    if (!path_ || path_->empty()) return UsageError{"of what? PATH is missing"};
    arguments_.path = *path_;
    return std::move(arguments_);
  }

 private:
  void readOption(std::string_view word) {
    constexpr std::string_view kModeWithValue = "--mode=";
    if (word == "--") {
      optionsEnded_ = true;
    } else if (word == "--dark" || word == "--light") {
      arguments_.isDark = word == "--dark";
    } else if (word.starts_with(kModeWithValue)) {
      readMode(word.substr(kModeWithValue.size()));
    } else {
      error_ = UsageError{"unknown option " + quoted(word)};
    }
  }

  void readMode(std::optional<std::string_view> name) {
    const std::string list = listOfModes(arguments_.subcommand);
    if (!name) {
      error_ = UsageError{"--mode needs a value: " + list};
      return;
    }
    for (const DocumentMode mode : modesOf(arguments_.subcommand)) {
      if (nameOf(mode) != *name) continue;
      arguments_.mode = mode;
      return;
    }
    error_ = UsageError{"no mode is called " + quoted(*name) + ": use " + list};
  }

  void readPath(std::string_view word) {
    if (path_) error_ = UsageError{"one PATH at a time, but there is also " + quoted(word)};
    path_ = word;
  }

  Arguments arguments_;
  std::optional<std::string_view> path_;
  std::optional<UsageError> error_;
  bool optionsEnded_ = false;
};

}  // namespace

std::string_view nameOf(DocumentMode mode) {
  switch (mode) {
    case DocumentMode::Formatted:
      return "formatted";
    case DocumentMode::Rendered:
      return "rendered";
    case DocumentMode::Source:
      return "source";
    case DocumentMode::Text:
      return "text";
  }
  return {};
}

ParseResult parseArguments(const std::vector<std::string_view>& words) {
  if (words.empty()) return UsageError{"a command is missing"};
  if (words[0] == "page") return ItemCommandParser(Subcommand::Page).parse(words);
  if (words[0] == "describe") return ItemCommandParser(Subcommand::Describe).parse(words);
  const bool isHelp = words[0] == "--help" || words[0] == "-h";
  if (isHelp || words[0] == "--version") {
    if (words.size() > 1) return UsageError{quoted(words[0]) + " stands alone"};
    return Arguments{.subcommand = isHelp ? Subcommand::Help : Subcommand::Version};
  }
  return UsageError{"unknown command " + quoted(words[0])};
}

}  // namespace lumisk
