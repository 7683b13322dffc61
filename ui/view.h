#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "core/file_url.h"
#include "ui/action.h"
#include "ui/modifier.h"
#include "ui/shared_text.h"

namespace lumisk::ui {

// What a preview shows, as plain values.
//
// A View is one node of a small tree: a kind with its fields, and modifiers in order. It can be
// copied, compared and printed, and knows no toolkit. Whoever draws it visits the kinds with one
// function each and no catch-all, so that a forgotten kind fails to compile. Trees are as deep as
// the layouts in this program make them, never as deep as an input, so plain recursion is safe.
//
// Only what the previews use is here: there are no grids, no buttons, no text fields.

// A variant compares with an exception in its signature, for the case that it lost its value while
// it was assigned to; no move of these kinds can fail, so none ever does.
// NOLINTBEGIN(bugprone-exception-escape)

struct View;

/// Room between the children of a stack; absent means the toolkit's usual one.
using Spacing = std::optional<double>;

/// Children below one another.
struct VStack {
  HorizontalAlignment alignment = HorizontalAlignment::Center;
  Spacing spacing = {};
  std::vector<View> children;
  bool operator==(const VStack& other) const noexcept;
};

/// Children side by side, from the leading edge to the trailing one.
struct HStack {
  VerticalAlignment alignment = VerticalAlignment::Center;
  Spacing spacing = {};
  std::vector<View> children;
  bool operator==(const HStack& other) const noexcept;
};

/// Children over one another, each in the centre, back to front.
struct Overlay {
  std::vector<View> children;
  bool operator==(const Overlay& other) const noexcept;
};

/// Takes the room that a stack has left, at least `minLength` (absent: the toolkit's usual length).
struct Spacer {
  std::optional<double> minLength = {};
  bool operator==(const Spacer&) const = default;
};

/// A thin line across the stack.
struct Divider {
  bool operator==(const Divider&) const = default;
};

enum class TextStyle { Body, Headline, Caption };
enum class FontDesign { Default, Monospaced };
enum class FontWeight { Default, Bold };  // Default: the style's own

/// The system's font in one of its text styles, or in a size given in points.
struct Font {
  std::variant<TextStyle, double> size = TextStyle::Body;
  FontDesign design = FontDesign::Default;
  FontWeight weight = FontWeight::Default;
  bool operator==(const Font&) const = default;
};

enum class ForegroundRole { Primary, Secondary };

/// Text as it stands: no markup in it, no key to look up. It wraps; with a line limit it is cut.
struct Text {
  SharedText text = {};
  Font font = {};
  ForegroundRole foreground = ForegroundRole::Primary;
  bool isSelectable = false;
  std::optional<int> lineLimit = {};
  bool operator==(const Text&) const = default;
};

/// The icon that a theme knows under this name.
struct NamedIcon {
  std::string name = {};
  bool operator==(const NamedIcon&) const = default;
};

/// The icon of the item at this path (bytes).
struct FileIcon {
  std::string path = {};
  bool operator==(const FileIcon&) const = default;
};

/// An icon, at its own size, or stretched to its frame when it is resizable.
struct Image {
  std::variant<NamedIcon, FileIcon> source = {};
  bool isResizable = false;
  bool operator==(const Image&) const = default;
};

struct Segment {
  std::string tag = {};
  std::string title = {};
  bool operator==(const Segment&) const = default;
};

/// A row of segments of which one is selected. An empty label takes no room; a choice of the
/// segment that is selected already is not reported.
struct SegmentedPicker {
  std::string label = {};
  std::vector<Segment> segments = {};
  std::string selection = {};  ///< a segment's tag
  Action<const std::string&> onSelect = {};
  bool operator==(const SegmentedPicker&) const = default;
};

/// The rows of a list, made when they are wanted: a folder of 100,000 entries has as many rows, of
/// which a screen shows thirty. It never changes; new content is a new source.
class RowSource {
 public:
  RowSource() = default;
  RowSource(const RowSource&) = delete;
  RowSource& operator=(const RowSource&) = delete;
  virtual ~RowSource() = default;
  virtual std::size_t count() const = 0;
  /// The row at `index`, which is below `count()`.
  virtual View row(std::size_t index) const = 0;
};

/// Rows below one another that scroll, in the toolkit's usual style; no selection. Two lists are
/// equal when they show the same source. Never without one.
struct List {
  std::shared_ptr<const RowSource> rows = {};
  bool operator==(const List&) const = default;
};

/// One view inside another, shared because it never changes.
class Content {
 public:
  explicit Content(View view);
  const View& operator*() const noexcept { return *view_; }
  const View* operator->() const noexcept { return view_.get(); }
  bool operator==(const Content& other) const noexcept;

 private:
  std::shared_ptr<const View> view_;
};

/// Content that scrolls vertically and is as wide as the scroll view.
struct ScrollView {
  bool showsIndicators = false;
  Content content;
  bool operator==(const ScrollView&) const = default;
};

/// Says that something is going on, not how far it is.
struct ProgressIndicator {
  bool operator==(const ProgressIndicator&) const = default;
};

/// A web page. Whoever draws it keeps one web view for as long as the node keeps its place in the
/// tree, and loads again exactly when `htmlContent` or `baseURL` changed.
struct WebPage {
  SharedText htmlContent = {};
  std::optional<FileURL> baseURL = {};
  Action<std::int64_t, bool> onCheckboxToggle = {};
  Action<> onLoad = {};
  bool operator==(const WebPage&) const = default;
};

using Node = std::variant<VStack, HStack, Overlay, Spacer, Divider, Text, Image, SegmentedPicker,
                          List, ScrollView, ProgressIndicator, WebPage>;

template <typename T, typename Variant>
inline constexpr bool kIsAlternative = false;
template <typename T, typename... Alternatives>
inline constexpr bool kIsAlternative<T, std::variant<Alternatives...>> =
    (std::is_same_v<T, Alternatives> || ...);

struct View {
  Node node;
  std::vector<Modifier> modifiers;  ///< innermost first

  template <typename Kind>
  requires kIsAlternative<Kind, Node> View(Kind kind) : node(std::move(kind)) {}
  View(const View& other);
  View(View&& other) noexcept;
  View& operator=(const View& other);
  View& operator=(View&& other) noexcept;
  ~View();

  /// This view with one more modifier around it.
  View with(Modifier modifier) && {
    modifiers.push_back(modifier);
    return std::move(*this);
  }

  bool operator==(const View& other) const noexcept;
};

// NOLINTEND(bugprone-exception-escape)

}  // namespace lumisk::ui
