#include <gtk/gtk.h>

#include <map>
#include <string>
#include <utility>

#include "desktop/accessible_name.h"
#include "desktop/display_text.h"
#include "desktop/node_elements.h"
#include "desktop/row_model.h"
#include "desktop/texts.h"

namespace lumisk::desktop {
namespace {

/// The rows of a list as values, read back from widgets.
class ReadRows final : public ui::RowSource {
 public:
  explicit ReadRows(std::vector<ui::View> rows) : rows_(std::move(rows)) {}
  std::size_t count() const override { return rows_.size(); }
  ui::View row(std::size_t index) const override { return rows_[index]; }

 private:
  std::vector<ui::View> rows_;
};

/// All texts of a row, from the leading edge on: what a screen reader says of it.
std::string wordsOf(const ui::View& row) {
  if (const auto* text = std::get_if<ui::Text>(&row.node)) return displayLine(text->text.view());
  std::string words;
  if (const auto* stack = std::get_if<ui::HStack>(&row.node)) {
    for (const ui::View& child : stack->children) {
      const std::string more = wordsOf(child);
      if (!more.empty()) words += (words.empty() ? "" : ", ") + more;
    }
  }
  return words;
}

/// Scrolling rows, of which only those on screen have widgets: a row that leaves lends its widgets
/// to one that enters.
class ListElement final : public NodeElement {
 public:
  ListElement(const ui::List& list, RenderContext& context) : context_(context) {
    GtkListItemFactory* factory = gtk_signal_list_item_factory_new();
    g_signal_connect(factory, "setup", G_CALLBACK(&ListElement::setUp), this);
    g_signal_connect(factory, "bind", G_CALLBACK(&ListElement::bind), this);
    g_signal_connect(factory, "teardown", G_CALLBACK(&ListElement::tearDown), this);
    list_ = GRef<GtkWidget>::retain(gtk_list_view_new(nullptr, factory));
    gtk_widget_add_css_class(list_.get(), "plain-rows");
    setAccessibleName(list_.get(), tr("panel.list"));
    scrolled_ = GRef<GtkWidget>::retain(gtk_scrolled_window_new());
    gtk_scrolled_window_set_child(GTK_SCROLLED_WINDOW(scrolled_.get()), list_.get());
    gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(scrolled_.get()), GTK_POLICY_NEVER,
                                   GTK_POLICY_AUTOMATIC);
    showList(list);
  }
  ListElement(const ListElement&) = delete;
  ListElement& operator=(const ListElement&) = delete;
  ~ListElement() override {
    // Rows are torn down while this object still answers for them.
    gtk_list_view_set_model(GTK_LIST_VIEW(list_.get()), nullptr);
    gtk_list_view_set_factory(GTK_LIST_VIEW(list_.get()), nullptr);
  }

  GtkWidget* widget() const override { return scrolled_.get(); }
  bool update(const ui::Node& node) override {
    const auto& list = std::get<ui::List>(node);
    if (list != shown_) showList(list);
    return true;
  }
  ui::Node readBack() const override {
    GtkSelectionModel* model = gtk_list_view_get_model(GTK_LIST_VIEW(list_.get()));
    const guint count = g_list_model_get_n_items(G_LIST_MODEL(model));
    std::vector<ui::View> rows;
    for (guint index = 0; index < count; ++index) rows.push_back(readRow(index));
    return ui::List{std::make_shared<ReadRows>(std::move(rows))};
  }

 private:
  void showList(const ui::List& list) {
    shown_ = list;
    // The wrapper takes over the rows, but the list view takes a reference of its own.
    const auto model =
        GRef<GtkNoSelection>::adopt(gtk_no_selection_new(rowModelNew(list.rows->count())));
    gtk_list_view_set_model(GTK_LIST_VIEW(list_.get()), GTK_SELECTION_MODEL(model.get()));
  }

  /// From the row's widgets, or, where a row is off screen, from widgets made for the question.
  ui::View readRow(std::size_t index) const {
    for (const auto& [item, element] : elements_) {
      GtkListItem* listItem = item;
      if (element && gtk_list_item_get_position(listItem) == index) return element->readBack();
    }
    return Element(shown_.rows->row(index), Axis::None, context_).readBack();
  }

  static void setUp(GtkSignalListItemFactory*, GtkListItem* item, gpointer) {
    gtk_list_item_set_activatable(item, FALSE);
    gtk_list_item_set_selectable(item, FALSE);
  }

  static void bind(GtkSignalListItemFactory*, GtkListItem* item, gpointer self) {
    auto* list = static_cast<ListElement*>(self);
    const std::size_t position = rowPosition(gtk_list_item_get_item(item));
    std::unique_ptr<Element>& element = list->elements_[item];
    const ui::View row = list->shown_.rows->row(position);
    if (show(element, row, Axis::None, list->context_))
      gtk_list_item_set_child(item, element->widget());
    // The toolkit's own widget of the row has no name of its own.
    setAccessibleName(gtk_widget_get_parent(element->widget()), wordsOf(row).c_str());
  }

  static void tearDown(GtkSignalListItemFactory*, GtkListItem* item, gpointer self) {
    static_cast<ListElement*>(self)->elements_.erase(item);
  }

  RenderContext& context_;
  GRef<GtkWidget> list_;
  GRef<GtkWidget> scrolled_;
  ui::List shown_;
  std::map<GtkListItem*, std::unique_ptr<Element>> elements_;
};

}  // namespace

std::unique_ptr<NodeElement> makeList(const ui::List& list, RenderContext& context) {
  return std::make_unique<ListElement>(list, context);
}

}  // namespace lumisk::desktop
