#pragma once

#include <string_view>

#include "ui/view.h"

namespace lumisk::ui {

// The words of the outline.

constexpr std::string_view name(HorizontalAlignment alignment) {
  switch (alignment) {
    case HorizontalAlignment::Leading:
      return "leading";
    case HorizontalAlignment::Center:
      return "center";
    case HorizontalAlignment::Trailing:
      return "trailing";
  }
  return {};
}

constexpr std::string_view name(VerticalAlignment alignment) {
  switch (alignment) {
    case VerticalAlignment::Top:
      return "top";
    case VerticalAlignment::Center:
      return "center";
    case VerticalAlignment::Bottom:
      return "bottom";
  }
  return {};
}

constexpr std::string_view name(Edges edges) {
  switch (edges) {
    case Edges::All:
      return "padding";
    case Edges::Horizontal:
      return "padding-horizontal";
    case Edges::Vertical:
      return "padding-vertical";
  }
  return {};
}

constexpr std::string_view name(TextStyle style) {
  switch (style) {
    case TextStyle::Body:
      return "body";
    case TextStyle::Headline:
      return "headline";
    case TextStyle::Caption:
      return "caption";
  }
  return {};
}

constexpr std::string_view name(BackgroundRole role) {
  switch (role) {
    case BackgroundRole::Window:
      return "window";
    case BackgroundRole::Text:
      return "text";
  }
  return {};
}

}  // namespace lumisk::ui
