#include "desktop/page_menu.h"

#include <algorithm>
#include <iterator>

namespace lumisk::desktop {
namespace {

constexpr WebKitContextMenuAction kKept[] = {
    WEBKIT_CONTEXT_MENU_ACTION_OPEN_LINK,
    WEBKIT_CONTEXT_MENU_ACTION_COPY_LINK_TO_CLIPBOARD,
    WEBKIT_CONTEXT_MENU_ACTION_COPY_IMAGE_TO_CLIPBOARD,
    WEBKIT_CONTEXT_MENU_ACTION_COPY_IMAGE_URL_TO_CLIPBOARD,
    WEBKIT_CONTEXT_MENU_ACTION_COPY_VIDEO_LINK_TO_CLIPBOARD,
    WEBKIT_CONTEXT_MENU_ACTION_COPY_AUDIO_LINK_TO_CLIPBOARD,
    WEBKIT_CONTEXT_MENU_ACTION_COPY,
    WEBKIT_CONTEXT_MENU_ACTION_SELECT_ALL,
    // in a field
    WEBKIT_CONTEXT_MENU_ACTION_CUT,
    WEBKIT_CONTEXT_MENU_ACTION_PASTE,
    WEBKIT_CONTEXT_MENU_ACTION_PASTE_AS_PLAIN_TEXT,
    WEBKIT_CONTEXT_MENU_ACTION_DELETE,
    WEBKIT_CONTEXT_MENU_ACTION_INPUT_METHODS,
    WEBKIT_CONTEXT_MENU_ACTION_UNICODE,
    WEBKIT_CONTEXT_MENU_ACTION_INSERT_EMOJI,
    // on a film or a sound
    WEBKIT_CONTEXT_MENU_ACTION_MEDIA_PLAY,
    WEBKIT_CONTEXT_MENU_ACTION_MEDIA_PAUSE,
    WEBKIT_CONTEXT_MENU_ACTION_MEDIA_MUTE,
    WEBKIT_CONTEXT_MENU_ACTION_TOGGLE_MEDIA_CONTROLS,
    WEBKIT_CONTEXT_MENU_ACTION_TOGGLE_MEDIA_LOOP,
};

bool isKept(WebKitContextMenuItem* item) {
  const WebKitContextMenuAction action = webkit_context_menu_item_get_stock_action(item);
  return std::find(std::begin(kKept), std::end(kKept), action) != std::end(kKept);
}

/// FALSE: the engine shows what is left.
gboolean trim(WebKitWebView*, WebKitContextMenu* menu, WebKitHitTestResult*, gpointer) {
  bool wantsSeparator = false;
  bool hasItems = false;
  for (guint i = 0; i < webkit_context_menu_get_n_items(menu);) {
    WebKitContextMenuItem* const item = webkit_context_menu_get_item_at_position(menu, i);
    // One between two items that stay, and none at an end.
    const bool isSeparator = webkit_context_menu_item_is_separator(item) == TRUE;
    if (isSeparator ? wantsSeparator : isKept(item)) {
      wantsSeparator = !isSeparator;
      hasItems = true;
      ++i;
    } else {
      webkit_context_menu_remove(menu, item);
    }
  }
  if (hasItems && !wantsSeparator) webkit_context_menu_remove(menu, webkit_context_menu_last(menu));
  return hasItems ? FALSE : TRUE;
}

}  // namespace

void trimPageMenu(WebKitWebView* view) {
  g_signal_connect(view, "context-menu", G_CALLBACK(trim), nullptr);
}

}  // namespace lumisk::desktop
