#pragma once

#include <limits>
#include <optional>
#include <variant>

namespace lumisk::ui {

// What may be done to a view after it is made. A view holds its modifiers in the order in which
// they apply, the innermost first: a background that follows a padding lies behind the padding too,
// one that comes before it does not. Lengths are in points.

enum class HorizontalAlignment { Leading, Center, Trailing };
enum class VerticalAlignment { Top, Center, Bottom };

enum class Edges { All, Horizontal, Vertical };

/// Room around the view on some of its edges.
struct Padding {
  Edges edges = Edges::All;
  double length = 0;
  bool operator==(const Padding&) const = default;
};

/// The length of a side that takes all the room there is.
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A frame around the view, which stands in it as aligned (vertically always in the centre). A side
/// without a figure is as long as the view's. `maxWidth` gives a frame that is as wide as its
/// surroundings allow, up to that length.
struct Frame {
  std::optional<double> width = {};
  std::optional<double> height = {};
  std::optional<double> maxWidth = {};
  HorizontalAlignment alignment = HorizontalAlignment::Center;
  bool operator==(const Frame&) const = default;
};

enum class BackgroundRole {
  Window,  ///< what windows stand on
  Text,    ///< what documents stand on
};

/// A colour behind the view.
struct Background {
  BackgroundRole role = BackgroundRole::Window;
  double opacity = 1;
  /// Whether it reaches under what the window lays over the edges of its content.
  bool extendsUnderSafeAreas = false;
  bool operator==(const Background&) const = default;
};

/// How much of the view is seen, from 0 to 1. At 0 it is as good as absent: no clicks, no keyboard
/// focus, hidden from assistive technology. It keeps its place and its state.
struct Opacity {
  double opacity = 1;
  bool operator==(const Opacity&) const = default;
};

/// The view keeps its ideal size in both directions, whatever room there is.
struct FixedSize {
  bool operator==(const FixedSize&) const = default;
};

using Modifier = std::variant<Padding, Frame, Background, Opacity, FixedSize>;

}  // namespace lumisk::ui
