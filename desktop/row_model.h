#pragma once

#include <gio/gio.h>

#include <cstddef>

namespace lumisk::desktop {

/// A list model of `count` items that hold nothing but their position. It makes an item when it is
/// asked for, so a hundred thousand of them cost nothing until they are seen.
GListModel* rowModelNew(std::size_t count);

/// The position of one of its items.
std::size_t rowPosition(gpointer item);

}  // namespace lumisk::desktop
