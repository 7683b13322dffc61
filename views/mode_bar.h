#pragma once

#include <string>
#include <vector>

#include "ui/view.h"

namespace lumisk {

// What the views that show one document in several modes have in common: a strip with a segmented
// picker, a line, and the document below.

/// The picker, without a label or a size of its own.
ui::View modePicker(std::vector<ui::Segment> segments, std::string_view selection,
                    ui::Action<const std::string&> onSelect);

/// `picker` with room at its sides, then above and below.
ui::View withModePickerPadding(ui::View picker);

/// The strip: a row of `children` on the window's colour, nearly opaque, up to the window's edges.
ui::View modeBar(std::vector<ui::View> children);

/// The whole view.
ui::View underModeBar(ui::View bar, ui::View content);

}  // namespace lumisk
