#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace lumisk {

enum class Subcommand { Page, Describe, Open, Snapshot, Integrate, Help, Version };

/// What `lumisk integrate` does.
enum class Integration { Install, Remove, Status };

/// Which form of a document that has two is meant. JSON has a formatted one and its text, Markdown
/// a rendered one and its source; the last of each pair are two names for the same.
enum class DocumentMode { Formatted, Rendered, Source, Text };

/// The mode's word on the command line.
std::string_view nameOf(DocumentMode mode);

/// What the command line asks for.
struct Arguments {
  Subcommand subcommand = Subcommand::Help;
  bool isDark = false;
  std::optional<DocumentMode> mode = {};
  Integration integration = Integration::Install;
  /// As written: each a path or a "file:" URI, with `Open` any URI. With `Snapshot` all words,
  /// options included, which the previewer reads.
  std::vector<std::string> paths = {};

  /// The one item of a command that takes one.
  const std::string& path() const { return paths.front(); }
};

/// A sentence that says what is wrong with the command line.
struct UsageError {
  std::string message;
};

/// Reads the words after the program's name.
std::variant<Arguments, UsageError> parseArguments(const std::vector<std::string_view>& words);

/// The text of `lumisk --help`, with its last line feed.
extern const std::string_view kHelpText;

}  // namespace lumisk
