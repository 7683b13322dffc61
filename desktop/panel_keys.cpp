#include <utility>

#include "desktop/document_control.h"
#include "desktop/panel.h"

// What the panel does on keys, on the wheel and on its menu.

namespace lumisk::desktop {
namespace {

std::optional<ScrollStep> scrollStep(Command command) {
  switch (command) {
    case Command::LineUp:
      return ScrollStep::LineUp;
    case Command::LineDown:
      return ScrollStep::LineDown;
    case Command::LineLeft:
      return ScrollStep::LineLeft;
    case Command::LineRight:
      return ScrollStep::LineRight;
    case Command::PageUp:
      return ScrollStep::PageUp;
    case Command::PageDown:
      return ScrollStep::PageDown;
    case Command::ToStart:
      return ScrollStep::ToStart;
    case Command::ToEnd:
      return ScrollStep::ToEnd;
    default:
      return std::nullopt;
  }
}

std::optional<SelectionStep> selectionStep(guint key) {
  switch (key) {
    case GDK_KEY_Up:
      return SelectionStep::Up;
    case GDK_KEY_Down:
      return SelectionStep::Down;
    case GDK_KEY_Left:
      return SelectionStep::Left;
    case GDK_KEY_Right:
      return SelectionStep::Right;
    default:
      return std::nullopt;
  }
}

}  // namespace

/// The toolkit's controller keeps to itself the release of each key whose press was handled. The
/// release of the Space that closes the panel never comes, so that it would take the next one: a
/// button in the page, which is pressed when the key is let go, would not be. Hence a new one each
/// time the window comes on screen.
void Panel::renewKeys() {
  if (keys_ != nullptr) gtk_widget_remove_controller(GTK_WIDGET(window_), keys_);
  keys_ = gtk_event_controller_key_new();
  gtk_event_controller_set_propagation_phase(keys_, GTK_PHASE_CAPTURE);
  g_signal_connect(keys_, "key-pressed", G_CALLBACK(&Panel::keyPressed), this);
  gtk_widget_add_controller(GTK_WIDGET(window_), keys_);
}

void Panel::perform(Command command) {
  const ShownDocument shown = shownDocument();
  if (const auto step = scrollStep(command)) return scroll(shown, *step);
  switch (command) {
    case Command::Close:
      return close();
    case Command::Quit:
      close();
      if (onQuit) onQuit();
      return;
    case Command::OpenWithDefault:
      return openWithDefault();
    case Command::Find:
      return findBar_->open();
    case Command::FindNext:
      return findBar_->next();
    case Command::FindPrevious:
      return findBar_->previous();
    case Command::Copy:
      return copySelection(shown);
    case Command::ZoomIn:
      return setZoomLevel(zoom_ * kZoomStep);
    case Command::ZoomOut:
      return setZoomLevel(zoom_ / kZoomStep);
    case Command::ZoomReset:
      return setZoomLevel(1);
    case Command::Print:
      return webViews_.print(window_);
    case Command::Reload:
      if (url_) show(FileURL(*url_));
      return;
    case Command::FullScreen:
      if (gtk_window_is_fullscreen(window_) == TRUE)
        gtk_window_unfullscreen(window_);
      else
        gtk_window_fullscreen(window_);
      return;
    case Command::GoBack:
      if (shown.page != nullptr && webViews_.canGoBack()) webkit_web_view_go_back(shown.page);
      return;
    case Command::ShowShortcuts:
      return shortcuts_.show(window_);
    default:
      return;
  }
}

/// What has the focus in the page, if the page has the keys.
PageFocus Panel::pageFocus() const {
  GtkWidget* focus = gtk_root_get_focus(GTK_ROOT(window_));
  const bool isPage = focus != nullptr && WEBKIT_IS_WEB_VIEW(focus);
  return isPage ? webViews_.focus() : PageFocus::None;
}

/// Whether the key belongs to something that takes text: the find bar, or a field of the page.
bool Panel::isTyping() const { return findBar_->hasFocus() || pageFocus() == PageFocus::Text; }

/// Whether the key presses what has the focus, a button of the header or something in the page, or
/// works in an open menu. The button of a calm page has the focus without having been come to, so
/// it takes Return alone: Space closes there as everywhere.
bool Panel::isPressing(const KeyReading& reading) const {
  GtkWidget* focus = gtk_root_get_focus(GTK_ROOT(window_));
  if (focus == nullptr) return false;
  if (gtk_widget_get_ancestor(focus, GTK_TYPE_POPOVER) != nullptr) return true;
  const bool isReturn = reading.key == GDK_KEY_Return;
  if (reading.modifiers != 0 || (!isReturn && reading.key != GDK_KEY_space)) return false;
  if (pageFocus() == PageFocus::Link) return isReturn;
  if (pageFocus() == PageFocus::Button) return true;
  if (!GTK_IS_BUTTON(focus)) return false;
  if (gtk_widget_is_ancestor(focus, contentBin_) == TRUE)
    return isReturn && GTK_IS_TOGGLE_BUTTON(focus) == FALSE;
  return !GTK_IS_TOGGLE_BUTTON(focus) ||
         gtk_widget_get_ancestor(focus, GTK_TYPE_MENU_BUTTON) != nullptr;
}

gboolean Panel::keyPressed(GtkEventControllerKey* keys, guint, guint, GdkModifierType,
                           gpointer self) {
  auto* panel = static_cast<Panel*>(self);
  GdkEvent* event = gtk_event_controller_get_current_event(GTK_EVENT_CONTROLLER(keys));
  return event != nullptr && panel->takesKey(keyReadings(event));
}

bool Panel::takesKey(const std::vector<KeyReading>& readings) {
  if (readings.empty()) return false;
  if (WebKitWebView* page = webViews_.latestView()) keepFocusOutOfHelpers(page);
  if (isPressing(readings.front())) return false;
  if (readings.front().key == GDK_KEY_Escape && findBar_->isOpen()) {
    closeFindBar();
    return true;
  }
  for (const KeyReading& reading : readings) {
    const std::optional<Command> command = commandOf(reading);
    if (!command) continue;
    if (isTyping() && !isMeantWhileTyping(*command, reading)) return false;
    perform(*command);
    return true;
  }
  return moveSelection(readings.front());
}

/// The bare arrows go to whoever chose the item, if anybody listens; else they stay with the
/// document.
bool Panel::moveSelection(const KeyReading& reading) {
  GtkWidget* focus = gtk_root_get_focus(GTK_ROOT(window_));
  const bool isInPicker = focus != nullptr && GTK_IS_TOGGLE_BUTTON(focus);
  if (!onSelectionStep || reading.modifiers != 0 || isTyping() || isInPicker) return false;
  const std::optional<SelectionStep> step = selectionStep(reading.key);
  if (step) onSelectionStep(*step);
  return step.has_value();
}

gboolean Panel::wheelTurned(GtkEventControllerScroll* wheel, double, double dy, gpointer self) {
  const GdkModifierType modifiers =
      gtk_event_controller_get_current_event_state(GTK_EVENT_CONTROLLER(wheel));
  if ((modifiers & GDK_CONTROL_MASK) == 0) return FALSE;
  auto* panel = static_cast<Panel*>(self);
  panel->setZoomLevel(panel->zoom_ * zoomFactor(dy, gtk_event_controller_scroll_get_unit(wheel)));
  return TRUE;
}

}  // namespace lumisk::desktop
