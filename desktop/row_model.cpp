#include "desktop/row_model.h"

#include <algorithm>
#include <limits>

namespace lumisk::desktop {
namespace {

struct RowItem {
  GObject parent;
  std::size_t position;
};
struct RowItemClass {
  GObjectClass parent;
};
G_DEFINE_TYPE(RowItem, row_item, G_TYPE_OBJECT)
void row_item_class_init(RowItemClass*) {}
void row_item_init(RowItem*) {}

struct RowModel {
  GObject parent;
  guint count;
};
struct RowModelClass {
  GObjectClass parent;
};

GType itemType(GListModel*) { return row_item_get_type(); }
guint itemCount(GListModel* model) { return reinterpret_cast<RowModel*>(model)->count; }
gpointer item(GListModel* model, guint position) {
  if (position >= itemCount(model)) return nullptr;
  auto* made = static_cast<RowItem*>(g_object_new(row_item_get_type(), nullptr));
  made->position = position;
  return made;
}

void listModelInit(gpointer made, gpointer) {
  auto* interface = static_cast<GListModelInterface*>(made);
  interface->get_item_type = itemType;
  interface->get_n_items = itemCount;
  interface->get_item = item;
}

G_DEFINE_TYPE_WITH_CODE(RowModel, row_model, G_TYPE_OBJECT,
                        G_IMPLEMENT_INTERFACE(G_TYPE_LIST_MODEL, listModelInit))
void row_model_class_init(RowModelClass*) {}
void row_model_init(RowModel*) {}

}  // namespace

GListModel* rowModelNew(std::size_t count) {
  auto* model = static_cast<RowModel*>(g_object_new(row_model_get_type(), nullptr));
  model->count = static_cast<guint>(std::min<std::size_t>(count, std::numeric_limits<gint>::max()));
  return G_LIST_MODEL(model);
}

std::size_t rowPosition(gpointer item) { return static_cast<RowItem*>(item)->position; }

}  // namespace lumisk::desktop
