#include "cli/arguments.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace lumisk {

namespace {

using ParseResult = std::variant<Arguments, UsageError>;

std::string quoted(std::string_view word) { return "'" + std::string(word) + "'"; }

struct Flag {
  std::string_view name;
  /// Notes the flag; false when it contradicts one before.
  bool (*note)(Arguments& arguments);
};

constexpr Flag kAppearanceFlags[] = {
    {"--dark", [](Arguments& arguments) { return arguments.isDark = true; }},
    {"--light",
     [](Arguments& arguments) {
       arguments.isDark = false;
       return true;
     }},
};

bool noteIntegration(Arguments& arguments, Integration integration) {
  if (arguments.integration != Integration::Install && arguments.integration != integration) {
    return false;
  }
  arguments.integration = integration;
  return true;
}

constexpr Flag kIntegrateFlags[] = {
    {"--remove",
     [](Arguments& arguments) { return noteIntegration(arguments, Integration::Remove); }},
    {"--status",
     [](Arguments& arguments) { return noteIntegration(arguments, Integration::Status); }},
};

constexpr DocumentMode kModes[] = {DocumentMode::Formatted, DocumentMode::Text,
                                   DocumentMode::Rendered, DocumentMode::Source};
// A Markdown document has one page.
constexpr std::span<const DocumentMode> kPageModes = std::span(kModes).first(2);

bool isHelp(std::string_view word) { return word == "--help" || word == "-h"; }

enum class Paths { None, One, Several };

struct Command {
  std::string_view name;
  Subcommand subcommand;
  Paths paths;
  std::span<const Flag> flags;
  std::span<const DocumentMode> modes;
};

constexpr Command kCommands[] = {
    {"page", Subcommand::Page, Paths::One, kAppearanceFlags, kPageModes},
    {"describe", Subcommand::Describe, Paths::One, kAppearanceFlags, kModes},
    {"open", Subcommand::Open, Paths::Several, {}, {}},
    {"integrate", Subcommand::Integrate, Paths::None, kIntegrateFlags, {}},
};
// What a bare path means.
constexpr const Command& kOpen = kCommands[2];

std::string listOf(std::span<const DocumentMode> modes) {
  std::string list;
  for (std::size_t i = 0; i < modes.size(); ++i) {
    const bool isLast = i + 1 == modes.size();
    list += (i == 0 ? "" : isLast ? " or " : ", ") + std::string(nameOf(modes[i]));
  }
  return list;
}

/// Reads the words of one command, without its name.
class CommandParser {
 public:
  explicit CommandParser(const Command& command) : command_(command) {
    arguments_.subcommand = command.subcommand;
  }

  ParseResult parse(std::span<const std::string_view> words) {
    for (std::size_t at = 0; at < words.size() && !error_; ++at) {
      const std::string_view word = words[at];
      if (optionsEnded_ || word.size() < 2 || word.front() != '-') {
        readPath(word);
      } else if (isHelp(word)) {
        return Arguments{.subcommand = Subcommand::Help};
      } else if (word == "--mode" && !command_.modes.empty()) {
        ++at;
        readMode(at < words.size() ? std::optional(words[at]) : std::nullopt);
      } else {
        readOption(word);
      }
    }
    if (!error_ && command_.paths != Paths::None) requirePath();
    if (error_) return *std::move(error_);
    return std::move(arguments_);
  }

 private:
  void readOption(std::string_view word) {
    constexpr std::string_view kModeWithValue = "--mode=";
    if (word == "--") {
      optionsEnded_ = true;
    } else if (word.starts_with(kModeWithValue) && !command_.modes.empty()) {
      readMode(word.substr(kModeWithValue.size()));
    } else {
      readFlag(word);
    }
  }

  void readFlag(std::string_view word) {
    const auto flag = std::find_if(command_.flags.begin(), command_.flags.end(),
                                   [&](const Flag& known) { return known.name == word; });
    if (flag == command_.flags.end()) {
      error_ = UsageError{"unknown option " + quoted(word)};
    } else if (!flag->note(arguments_)) {
      error_ = UsageError{quoted(word) + " contradicts the option before"};
    }
  }

  void readMode(std::optional<std::string_view> name) {
    const std::string list = listOf(command_.modes);
    if (!name) {
      error_ = UsageError{"--mode needs a value: " + list};
      return;
    }
    const auto mode = std::find_if(command_.modes.begin(), command_.modes.end(),
                                   [&](DocumentMode known) { return nameOf(known) == *name; });
    if (mode != command_.modes.end()) {
      arguments_.mode = *mode;
    } else {
      error_ = UsageError{"no mode is called " + quoted(*name) + ": use " + list};
    }
  }

  void readPath(std::string_view word) {
    if (command_.paths == Paths::None) {
      error_ = UsageError{quoted(command_.name) + " takes no PATH, but there is " + quoted(word)};
    } else if (command_.paths == Paths::One && !arguments_.paths.empty()) {
      error_ = UsageError{"one PATH at a time, but there is also " + quoted(word)};
    } else {
      arguments_.paths.emplace_back(word);
    }
  }

  void requirePath() {
    const auto& paths = arguments_.paths;
    const bool isNamed = std::none_of(paths.begin(), paths.end(),
                                      [](const std::string& path) { return path.empty(); });
    if (paths.empty() || !isNamed) error_ = UsageError{"of what? PATH is missing"};
  }

  const Command& command_;
  Arguments arguments_;
  std::optional<UsageError> error_;
  bool optionsEnded_ = false;
};

bool asksForHelp(std::span<const std::string_view> words) {
  for (const std::string_view word : words) {
    if (isHelp(word)) return true;
    if (word == "--") break;
  }
  return false;
}

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
  const std::span<const std::string_view> all(words);
  for (const Command& command : kCommands) {
    if (words[0] == command.name) return CommandParser(command).parse(all.subspan(1));
  }
  if (words[0] == "snapshot") {
    if (asksForHelp(all)) return Arguments{.subcommand = Subcommand::Help};
    return Arguments{.subcommand = Subcommand::Snapshot, .paths = {words.begin() + 1, words.end()}};
  }
  if (isHelp(words[0]) || words[0] == "--version") {
    if (words.size() > 1) return UsageError{quoted(words[0]) + " stands alone"};
    return Arguments{.subcommand = isHelp(words[0]) ? Subcommand::Help : Subcommand::Version};
  }
  return CommandParser(kOpen).parse(all);
}

}  // namespace lumisk
