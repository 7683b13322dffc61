#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace lumisk {

enum class Subcommand { Page, Describe, Help, Version };

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
  std::string path = {};  ///< as written: a path or a "file:" URI
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
