#pragma once

#include <gtk/gtk.h>

#include <optional>

namespace lumisk::desktop {

/// A match may have fewer or more characters than what is looked for, up to this many times as
/// many: "ß" matches "ss".
inline constexpr int kMostCharactersForOne = 3;

struct TextMatch {
  GtkTextIter start;
  GtkTextIter end;
};

/// The next match of `text`, without regard to case, that begins at or after `from` and, where
/// `limit` is given, before that. It may lie across line ends that are there for display only.
std::optional<TextMatch> findForward(const GtkTextIter& from, const char* text,
                                     const GtkTextIter* limit = nullptr);

/// The last match that ends at or before `from` and, where `limit` is given, begins at or after
/// that.
std::optional<TextMatch> findBackward(const GtkTextIter& from, const char* text,
                                      const GtkTextIter* limit = nullptr);

}  // namespace lumisk::desktop
