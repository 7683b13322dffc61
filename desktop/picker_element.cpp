#include <gtk/gtk.h>

#include <algorithm>
#include <string>

#include "desktop/accessible_name.h"
#include "desktop/display_text.h"
#include "desktop/node_elements.h"
#include "desktop/texts.h"

namespace lumisk::desktop {
namespace {

/// A row of linked toggle buttons of which one is down. To the keyboard and to a screen reader it
/// is a group of radio buttons: Tab enters and leaves it as one, the arrows choose in it.
class PickerElement final : public NodeElement {
 public:
  explicit PickerElement(const ui::SegmentedPicker& picker)
      : box_(GRef<GtkWidget>::retain(GTK_WIDGET(g_object_new(
            GTK_TYPE_BOX, "accessible-role", GTK_ACCESSIBLE_ROLE_RADIO_GROUP, nullptr)))) {
    gtk_widget_add_css_class(box_.get(), "linked");
    gtk_widget_add_css_class(box_.get(), "mode-picker");
    GtkEventController* keys = gtk_event_controller_key_new();
    gtk_event_controller_set_propagation_phase(keys, GTK_PHASE_CAPTURE);
    g_signal_connect(keys, "key-pressed", G_CALLBACK(&PickerElement::keyPressed), this);
    gtk_widget_add_controller(box_.get(), keys);
    makeButtons(picker);
    showSelection(picker);
  }
  PickerElement(const PickerElement&) = delete;
  PickerElement& operator=(const PickerElement&) = delete;
  ~PickerElement() override {
    for (GtkWidget* button : buttons_) g_signal_handlers_disconnect_by_data(button, this);
  }

  GtkWidget* widget() const override { return box_.get(); }
  bool update(const ui::Node& node) override {
    const auto& picker = std::get<ui::SegmentedPicker>(node);
    if (picker.segments != shown_.segments || picker.label != shown_.label) return false;
    showSelection(picker);
    return true;
  }
  ui::Node readBack() const override {
    ui::SegmentedPicker picker;
    const std::string name = accessibleName(box_.get());
    picker.label = name == nameOf(shown_) ? shown_.label : name;
    picker.onSelect = shown_.onSelect;
    for (GtkWidget* button : buttons_) {
      const char* tag = gtk_widget_get_name(button);
      picker.segments.push_back({tag, gtk_button_get_label(GTK_BUTTON(button))});
      if (gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(button)) == TRUE) picker.selection = tag;
    }
    return picker;
  }

 private:
  void makeButtons(const ui::SegmentedPicker& picker) {
    for (const ui::Segment& segment : picker.segments) {
      GtkWidget* button = GTK_WIDGET(g_object_new(
          GTK_TYPE_TOGGLE_BUTTON, "accessible-role", GTK_ACCESSIBLE_ROLE_RADIO, "label",
          displayLine(segment.title).c_str(), "name", segment.tag.c_str(), nullptr));
      gtk_box_append(GTK_BOX(box_.get()), button);
      g_signal_connect(button, "toggled", G_CALLBACK(&PickerElement::toggled), this);
      buttons_.push_back(button);
    }
    setAccessibleName(box_.get(), nameOf(picker).c_str());
  }

  /// A group without a name says nothing to who cannot see what it stands over.
  static std::string nameOf(const ui::SegmentedPicker& picker) {
    return picker.label.empty() ? tr("panel.modes") : picker.label;
  }

  void showSelection(const ui::SegmentedPicker& picker) {
    shown_ = picker;
    isShowing_ = true;
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
      const bool isOn = shown_.segments[i].tag == shown_.selection;
      gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(buttons_[i]), isOn);
      gtk_widget_set_focusable(buttons_[i], isOn);
      gtk_accessible_update_state(
          GTK_ACCESSIBLE(buttons_[i]), GTK_ACCESSIBLE_STATE_CHECKED,
          isOn ? GTK_ACCESSIBLE_TRISTATE_TRUE : GTK_ACCESSIBLE_TRISTATE_FALSE, -1);
    }
    isShowing_ = false;
  }

  /// Asks the owner; what is down afterwards is what the owner's value says.
  void choose(std::size_t index) {
    const ui::SegmentedPicker before = shown_;
    const std::string tag = before.segments[index].tag;
    if (tag != before.selection) before.onSelect(tag);
    showSelection(ui::SegmentedPicker(shown_));
  }

  static void toggled(GtkToggleButton* button, gpointer self) {
    auto* picker = static_cast<PickerElement*>(self);
    if (picker->isShowing_) return;
    const auto found =
        std::find(picker->buttons_.begin(), picker->buttons_.end(), GTK_WIDGET(button));
    picker->choose(static_cast<std::size_t>(found - picker->buttons_.begin()));
  }

  std::size_t selectedIndex() const {
    const auto found =
        std::find_if(shown_.segments.begin(), shown_.segments.end(),
                     [&](const ui::Segment& segment) { return segment.tag == shown_.selection; });
    return static_cast<std::size_t>(found - shown_.segments.begin());
  }

  /// -1 and 1 for the arrows, in the direction of the text; 0 for other keys.
  int step(guint key) const {
    const bool isRightToLeft = gtk_widget_get_direction(box_.get()) == GTK_TEXT_DIR_RTL;
    switch (key) {
      case GDK_KEY_Right:
      case GDK_KEY_KP_Right:
        return isRightToLeft ? -1 : 1;
      case GDK_KEY_Left:
      case GDK_KEY_KP_Left:
        return isRightToLeft ? 1 : -1;
      case GDK_KEY_Down:
      case GDK_KEY_KP_Down:
        return 1;
      case GDK_KEY_Up:
      case GDK_KEY_KP_Up:
        return -1;
      default:
        return 0;
    }
  }

  static gboolean keyPressed(GtkEventControllerKey*, guint key, guint, GdkModifierType state,
                             gpointer self) {
    auto* picker = static_cast<PickerElement*>(self);
    const int step = picker->step(key);
    constexpr auto kModifiers =
        static_cast<GdkModifierType>(GDK_SHIFT_MASK | GDK_CONTROL_MASK | GDK_ALT_MASK);
    if (step == 0 || (state & kModifiers) != 0 || picker->buttons_.empty()) return FALSE;
    const std::size_t count = picker->buttons_.size();
    const std::size_t index =
        (picker->selectedIndex() + count + (step < 0 ? count - 1 : 1)) % count;
    GtkWidget* button = picker->buttons_[index];
    picker->choose(index);
    gtk_widget_grab_focus(button);
    return TRUE;
  }

  GRef<GtkWidget> box_;
  std::vector<GtkWidget*> buttons_;  // the box holds them
  ui::SegmentedPicker shown_;
  bool isShowing_ = false;
};

}  // namespace

std::unique_ptr<NodeElement> makePicker(const ui::SegmentedPicker& picker) {
  return std::make_unique<PickerElement>(picker);
}

}  // namespace lumisk::desktop
