#pragma once

#include <span>
#include <string>
#include <string_view>

namespace lumisk::desktop {

/// One of the panel's own texts: its key in the catalogues and how it reads in English, which needs
/// no catalogue.
struct PanelText {
  const char* key = "";
  const char* singular = "";
  const char* plural = nullptr;  ///< only where a number decides the form
};

inline constexpr PanelText kPanelTexts[] = {
    {"command.close", "Close"},
    {"command.quit", "Quit"},
    {"command.open", "Open in Default Application"},
    {"command.shortcuts", "Keyboard Shortcuts"},
    {"command.find", "Find…"},
    {"command.find-next", "Find Next"},
    {"command.find-previous", "Find Previous"},
    {"command.copy", "Copy Selection"},
    {"command.print", "Print…"},
    {"command.back", "Go Back"},
    {"command.zoom-in", "Zoom In"},
    {"command.zoom-out", "Zoom Out"},
    {"command.zoom-reset", "Normal Size"},
    {"command.reload", "Reload"},
    {"command.full-screen", "Full Screen"},
    {"command.page-up", "Page Up"},
    {"command.page-down", "Page Down"},
    {"command.to-start", "To the Start"},
    {"command.to-end", "To the End"},
    {"command.line-up", "Scroll Up"},
    {"command.line-down", "Scroll Down"},
    {"command.line-left", "Scroll Left"},
    {"command.line-right", "Scroll Right"},
    {"group.general", "General"},
    {"group.document", "Document"},
    {"group.view", "View"},
    {"group.scrolling", "Scrolling"},
    {"panel.back", "Back"},
    {"panel.menu", "Menu"},
    {"panel.open-with", "Open With %s"},
    {"panel.open-failed", "%s could not be started."},
    {"panel.loading", "Loading"},
    {"panel.modes", "View"},
    {"panel.page", "Document"},
    {"panel.source", "Text of the document"},
    {"panel.list", "Contents of the folder"},
    {"find.entry", "Find in the document"},
    {"find.none", "No matches"},
    {"find.count", "%lld match", "%lld matches"},
    {"item.created", "Created %s"},
    {"item.modified", "Modified %s"},
    {"item.no-preview", "Files of the kind “%s” have no preview."},
    {"item.not-text", "This file cannot be read as text."},
    {"item.gone", "This item is no longer there."},
    {"item.forbidden", "You are not allowed to read this item."},
    {"item.unreadable", "This item cannot be read: %s"},
    {"request.bad-address", "This address does not name a file."},
    {"request.not-local", "This item is not stored on this computer."},
    {"request.unreachable", "This item cannot be reached."},
    {"crash.title", "The Preview Stopped Working"},
    {"crash.sentence", "The process that shows pages has ended unexpectedly."},
};

/// The key of a text of the panel's; one that is not in the table does not compile.
class TextKey {
 public:
  // Implicit: a key is written as the text that it is.
  consteval TextKey(const char* key) : text_(&textOf(key)) {}
  constexpr const PanelText& text() const { return *text_; }

 private:
  static constexpr const PanelText& textOf(std::string_view key) {
    for (const PanelText& text : kPanelTexts)
      if (key == text.key) return text;
    throw "no text has this key";
  }
  const PanelText* text_;
};

/// The panel's text in the person's language.
const char* tr(TextKey key);

/// A text with `%s`, which `value` takes the place of.
std::string trWith(TextKey key, const std::string& value);

/// A text with `%lld` in the form that `count` takes.
std::string trCount(TextKey key, long long count);

}  // namespace lumisk::desktop
