#include "desktop/text_search.h"

#include <algorithm>
#include <string>

#include "desktop/broken_lines.h"
#include "desktop/gref.h"

namespace lumisk::desktop {
namespace {

constexpr auto kOptions = static_cast<GtkTextSearchFlags>(
    GTK_TEXT_SEARCH_CASE_INSENSITIVE | GTK_TEXT_SEARCH_TEXT_ONLY | GTK_TEXT_SEARCH_VISIBLE_ONLY);

/// The line end for display that ends at or after `from`; it moves there.
bool toBreak(GtkTextIter& from, GtkTextTag* tag) {
  if (gtk_text_iter_ends_tag(&from, tag)) return true;
  while (gtk_text_iter_forward_to_tag_toggle(&from, tag))
    if (gtk_text_iter_ends_tag(&from, tag)) return true;
  return false;
}

/// The toolkit finds nothing across a line end, so the text around one that is there for display
/// only is searched again without it.
class Seam {
 public:
  /// `after` is the beginning of the second line.
  Seam(const GtkTextIter& after, const char* text)
      : text_(text),
        length_(static_cast<int>(g_utf8_strlen(text, -1)) * kMostCharactersForOne),
        after_(after),
        before_(after) {
    gtk_text_iter_backward_char(&before_);
  }

  std::optional<TextMatch> match(const GtkTextIter& from) const {
    GtkTextIter first = before_;
    gtk_text_iter_backward_chars(&first, length_);
    if (gtk_text_iter_compare(&first, &from) < 0) first = from;
    GtkTextIter last = after_;
    gtk_text_iter_forward_chars(&last, length_);
    char* around = gtk_text_iter_get_visible_text(&first, &last);
    const auto buffer = GRef<GtkTextBuffer>::adopt(gtk_text_buffer_new(nullptr));
    gtk_text_buffer_set_text(buffer.get(), around, -1);
    g_free(around);
    return matchIn(buffer.get(), first);
  }

 private:
  /// The first match in `around`, which begins at `first`, that lies on both sides.
  std::optional<TextMatch> matchIn(GtkTextBuffer* around, const GtkTextIter& first) const {
    GtkTextIter at;
    GtkTextIter start;
    GtkTextIter end;
    gtk_text_buffer_get_start_iter(around, &at);
    while (gtk_text_iter_forward_search(&at, text_, kOptions, &start, &end, nullptr) == TRUE) {
      const TextMatch found{moved(first, gtk_text_iter_get_offset(&start)),
                            moved(first, gtk_text_iter_get_offset(&end))};
      if (gtk_text_iter_compare(&found.start, &before_) < 0 &&
          gtk_text_iter_compare(&found.end, &after_) > 0)
        return found;
      at = start;
      gtk_text_iter_forward_char(&at);
    }
    return std::nullopt;
  }

  /// `count` characters of the text on from `from`.
  static GtkTextIter moved(GtkTextIter from, int count) {
    GtkTextTag* tag = lineBreakTag(gtk_text_iter_get_buffer(&from));
    for (; count > 0; --count) {
      gtk_text_iter_forward_char(&from);
      if (count > 1 && gtk_text_iter_has_tag(&from, tag)) gtk_text_iter_forward_char(&from);
    }
    return from;
  }

  const char* text_;
  int length_;
  GtkTextIter after_;
  GtkTextIter before_;
};

bool isBefore(const GtkTextIter& one, const GtkTextIter& other) {
  return gtk_text_iter_compare(&one, &other) < 0;
}

/// The first match across a line end for display that begins before `limit`.
std::optional<TextMatch> findAcross(const GtkTextIter& from, const char* text,
                                    const GtkTextIter& limit) {
  GtkTextTag* tag = lineBreakTag(gtk_text_iter_get_buffer(&from));
  if (tag == nullptr) return std::nullopt;
  GtkTextIter after = from;
  gtk_text_iter_forward_char(&after);
  while (toBreak(after, tag)) {
    const auto found = Seam(after, text).match(from);
    if (found && isBefore(found->start, limit)) return found;
    if (!isBefore(after, limit)) break;
    gtk_text_iter_forward_char(&after);
  }
  return std::nullopt;
}

}  // namespace

std::optional<TextMatch> findForward(const GtkTextIter& from, const char* text,
                                     const GtkTextIter* limit) {
  TextMatch match{};
  const bool isWithin =
      gtk_text_iter_forward_search(&from, text, kOptions, &match.start, &match.end, limit) == TRUE;
  GtkTextIter end;
  gtk_text_buffer_get_end_iter(gtk_text_iter_get_buffer(&from), &end);
  const GtkTextIter& until = isWithin ? match.start : (limit == nullptr ? end : *limit);
  if (const auto across = findAcross(from, text, until)) return across;
  return isWithin ? std::optional(match) : std::nullopt;
}

std::optional<TextMatch> findBackward(const GtkTextIter& from, const char* text,
                                      const GtkTextIter* limit) {
  TextMatch match{};
  bool isFound =
      gtk_text_iter_backward_search(&from, text, kOptions, &match.start, &match.end, limit) == TRUE;
  GtkTextIter at;
  gtk_text_buffer_get_start_iter(gtk_text_iter_get_buffer(&from), &at);
  if (limit != nullptr) at = *limit;
  if (isFound) at = match.start;
  // Those across line ends that come after what was found.
  while (const auto across = findAcross(at, text, from)) {
    if (gtk_text_iter_compare(&across->end, &from) > 0) break;
    match = *across;
    isFound = true;
    at = across->start;
    gtk_text_iter_forward_char(&at);
  }
  return isFound ? std::optional(match) : std::nullopt;
}

}  // namespace lumisk::desktop
