#pragma once

#include <gtk/gtk.h>

#include <string>
#include <string_view>

#include "desktop/source_text.h"

namespace lumisk::test {

inline GtkTextBuffer* bufferOf(const desktop::SourceText& source) { return source.buffer(); }

inline std::string textBetween(const GtkTextIter& start, const GtkTextIter& end) {
  char* text = gtk_text_iter_get_visible_text(&start, &end);
  std::string result = text;
  g_free(text);
  return result;
}

/// Numbers without a blank, none like another: "1000;1001;1002;…"
inline std::string numbers(std::size_t size) {
  std::string text;
  for (int i = 1'000'000; text.size() < size; ++i) text += std::to_string(i) + ";";
  return text;
}

inline std::string repeated(std::string_view piece, std::size_t size) {
  std::string text;
  while (text.size() < size) text += piece;
  return text;
}

}  // namespace lumisk::test
