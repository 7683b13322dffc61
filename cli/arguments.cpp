#include "cli/arguments.h"

#include <cstddef>

namespace lumisk {

const std::string_view kHelpText =
    R"(Usage: lumisk page [--dark|--light] [--mode formatted|text] PATH
       lumisk --help | --version

Shows a file at a glance.

Commands:
  page PATH            write the finished HTML page of PATH to standard output

PATH is a path or a file: URI. Markdown becomes a document, JSON and JSON Lines
are laid out, CSV and TSV become tables, any other text coloured source.

Options:
  --dark, --light      the page's colours (default: light)
  --mode MODE          for JSON and JSON Lines: "formatted" lays the document
                       out, "text" shows it as it stands (default: formatted
                       for JSON, text for JSON Lines)
  --                   what follows is no option
  --help               show this text
  --version            show the version

Exit status: 0 when the page was written, 1 when PATH cannot be shown, 2 when
the command line is wrong.
)";

namespace {

using ParseResult = std::variant<Arguments, UsageError>;

std::string quoted(std::string_view word) { return "'" + std::string(word) + "'"; }

std::optional<DocumentMode> modeNamed(std::string_view name) {
  if (name == "formatted") return DocumentMode::Formatted;
  if (name == "text") return DocumentMode::Text;
  return std::nullopt;
}

ParseResult parsePage(const std::vector<std::string_view>& words) {
  constexpr std::string_view kModeWithValue = "--mode=";
  Arguments arguments{.subcommand = Subcommand::Page};
  std::optional<std::string_view> path;
  bool optionsEnded = false;
  for (std::size_t at = 1; at < words.size(); ++at) {
    const std::string_view word = words[at];
    if (!optionsEnded && word == "--") {
      optionsEnded = true;
    } else if (!optionsEnded && word == "--help") {
      return Arguments{.subcommand = Subcommand::Help};
    } else if (!optionsEnded && (word == "--dark" || word == "--light")) {
      arguments.isDark = word == "--dark";
    } else if (!optionsEnded && (word == "--mode" || word.starts_with(kModeWithValue))) {
      if (word == "--mode" && at + 1 == words.size()) {
        return UsageError{"--mode needs a value: formatted or text"};
      }
      const std::string_view name =
          word == "--mode" ? words[++at] : word.substr(kModeWithValue.size());
      arguments.mode = modeNamed(name);
      if (!arguments.mode) {
        return UsageError{"no mode is called " + quoted(name) + ": use formatted or text"};
      }
    } else if (!optionsEnded && word.size() > 1 && word.front() == '-') {
      return UsageError{"unknown option " + quoted(word)};
    } else if (path) {
      return UsageError{"one PATH at a time, but there is also " + quoted(word)};
    } else {
      path = word;
    }
  }
  if (!path || path->empty()) return UsageError{"the page of what? PATH is missing"};
  arguments.path = *path;
  return arguments;
}

}  // namespace

ParseResult parseArguments(const std::vector<std::string_view>& words) {
  if (words.empty()) return UsageError{"a command is missing"};
  if (words[0] == "page") return parsePage(words);
  const bool isHelp = words[0] == "--help" || words[0] == "-h";
  if (isHelp || words[0] == "--version") {
    if (words.size() > 1) return UsageError{quoted(words[0]) + " stands alone"};
    return Arguments{.subcommand = isHelp ? Subcommand::Help : Subcommand::Version};
  }
  return UsageError{"unknown command " + quoted(words[0])};
}

}  // namespace lumisk
