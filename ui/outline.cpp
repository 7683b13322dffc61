#include "ui/outline.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "ui/names.h"
#include "ui/view.h"

namespace lumisk::ui {

namespace {

// How much of a text that is too long is shown: enough to know it by.
constexpr std::size_t kTextPrefix = 64;

// The shortest decimal that reads back as the same number, in any locale.
std::string decimal(double number) {
  if (std::isinf(number)) return number > 0 ? "infinity" : "-infinity";
  std::array<char, 32> digits{};
  const auto end = std::to_chars(digits.begin(), digits.end(), number);
  return {digits.data(), end.ptr};
}

// The beginning of a text that is longer than that, not cut within a character.
std::string_view beginningOf(std::string_view text) {
  const auto continuesCharacter = [](char c) {
    return (static_cast<unsigned>(c) & 0xC0U) == 0x80U;
  };
  constexpr std::size_t kLongestCharacter = 4;
  std::size_t length = kTextPrefix;
  while (length > kTextPrefix - kLongestCharacter && continuesCharacter(text[length])) --length;
  return text.substr(0, length);
}

// Tells texts of one length apart that are not printed whole: 64 bits of FNV-1a, which is the same
// on every machine. It is for finding differences, not for keeping anybody from making equal ones.
std::string digest(std::string_view text) {
  constexpr std::uint64_t kOffset = 0xCBF29CE484222325;
  constexpr std::uint64_t kPrime = 0x100000001B3;
  std::uint64_t hash = kOffset;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * kPrime;
  std::string digits(16, '0');
  for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit, hash >>= 4)
    *digit = "0123456789abcdef"[hash & 0xF];
  return digits;
}

/// One line: a kind and words after it.
class Line {
 public:
  explicit Line(std::string& out) : out_(out) {}

  void kind(std::string_view kind) { out_ += kind; }
  void word(std::string_view word) {
    out_ += ' ';
    out_ += word;
  }
  void field(std::string_view name, std::string_view value) {
    word(name);
    out_ += '=';
    out_ += value;
  }
  void number(std::string_view name, std::optional<double> value) {
    if (value) field(name, decimal(*value));
  }
  void flag(std::string_view name, bool isOn) {
    if (isOn) word(name);
  }

 private:
  std::string& out_;
};

/// Kind and fields of a node.
struct NodePrinter {
  Line& line;

  void operator()(const VStack& stack) const {
    line.kind("vstack");
    if (stack.alignment != VStack{}.alignment) line.field("alignment", name(stack.alignment));
    line.number("spacing", stack.spacing);
  }
  void operator()(const HStack& stack) const {
    line.kind("hstack");
    if (stack.alignment != HStack{}.alignment) line.field("alignment", name(stack.alignment));
    line.number("spacing", stack.spacing);
  }
  void operator()(const Overlay& /*overlay*/) const { line.kind("overlay"); }
  void operator()(const Spacer& spacer) const {
    line.kind("spacer");
    line.number("min", spacer.minLength);
  }
  void operator()(const Divider& /*divider*/) const { line.kind("divider"); }
  void operator()(const Text& text) const {
    line.kind("text");
    printText(text.text.view());
    printFont(text.font);
    line.flag("secondary", text.foreground == ForegroundRole::Secondary);
    line.flag("selectable", text.isSelectable);
    if (text.lineLimit) line.field("lines", std::to_string(*text.lineLimit));
  }
  void operator()(const Image& image) const {
    line.kind("image");
    if (const auto* icon = std::get_if<NamedIcon>(&image.source)) {
      line.field("icon", inQuotes(icon->name));
    } else {
      line.field("file", inQuotes(std::get<FileIcon>(image.source).path));
    }
    line.flag("resizable", image.isResizable);
  }
  void operator()(const SegmentedPicker& picker) const {
    line.kind("picker");
    if (!picker.label.empty()) line.field("label", inQuotes(picker.label));
    line.field("selection", inQuotes(picker.selection));
    line.flag("on-select", picker.onSelect.isPresent());
  }
  void operator()(const List& list) const {
    line.kind("list");
    line.field("rows", std::to_string(list.rows->count()));
  }
  void operator()(const ScrollView& scroll) const {
    line.kind("vertical-scroll");
    line.flag("indicators", scroll.showsIndicators);
  }
  void operator()(const ProgressIndicator& /*indicator*/) const { line.kind("progress"); }
  void operator()(const WebPage& page) const {
    line.kind("webpage");
    printLength(page.htmlContent.view());
    if (page.baseURL) line.field("base", inQuotes(page.baseURL->absoluteString()));
    line.flag("on-checkbox-toggle", page.onCheckboxToggle.isPresent());
    line.flag("on-load", page.onLoad.isPresent());
  }

 private:
  void printText(std::string_view text) const {
    if (text.size() <= kOutlineTextLimit) {
      line.word(inQuotes(text));
    } else {
      line.word(inQuotes(beginningOf(text)));
      printLength(text);
    }
  }
  /// What stands for a text that is not there in full.
  void printLength(std::string_view text) const {
    line.field("length", std::to_string(text.size()));
    if (!text.empty()) line.field("digest", digest(text));
  }
  void printFont(const Font& font) const {
    if (font.size != Font{}.size) {
      const auto* style = std::get_if<TextStyle>(&font.size);
      line.field("font", style ? std::string(name(*style)) : decimal(std::get<double>(font.size)));
    }
    line.flag("monospaced", font.design == FontDesign::Monospaced);
    line.flag("bold", font.weight == FontWeight::Bold);
  }
};

struct ModifierPrinter {
  Line& line;

  void operator()(const Padding& padding) const {
    line.field(name(padding.edges), decimal(padding.length));
  }
  void operator()(const Frame& frame) const {
    std::string inner;
    Line fields(inner);
    fields.number("width", frame.width);
    fields.number("height", frame.height);
    fields.number("max-width", frame.maxWidth);
    if (frame.alignment != Frame{}.alignment) fields.field("alignment", name(frame.alignment));
    line.word("frame(" + inner.substr(inner.empty() ? 0 : 1) + ")");
  }
  void operator()(const Background& background) const {
    std::string inner;
    Line fields(inner);
    fields.kind(name(background.role));
    if (background.opacity != Background{}.opacity) fields.number("opacity", background.opacity);
    fields.flag("safe-areas", background.extendsUnderSafeAreas);
    line.word("background(" + inner + ")");
  }
  void operator()(const Opacity& opacity) const { line.field("opacity", decimal(opacity.opacity)); }
  void operator()(const FixedSize& /*fixed*/) const { line.word("fixed-size"); }
};

/// The whole tree, a line a node.
class TreePrinter {
 public:
  explicit TreePrinter(std::string& out) : out_(out) {}

  void print(const View& view) {
    beginLine();
    Line line(out_);
    std::visit(NodePrinter{line}, view.node);
    for (const Modifier& modifier : view.modifiers) std::visit(ModifierPrinter{line}, modifier);
    out_ += '\n';
    ++level_;
    std::visit(*this, view.node);
    --level_;
  }

  // The lines below a node.
  void operator()(const VStack& stack) { printAll(stack.children); }
  void operator()(const HStack& stack) { printAll(stack.children); }
  void operator()(const Overlay& overlay) { printAll(overlay.children); }
  void operator()(const Spacer& /*spacer*/) {}
  void operator()(const Divider& /*divider*/) {}
  void operator()(const Text& /*text*/) {}
  void operator()(const Image& /*image*/) {}
  void operator()(const SegmentedPicker& picker) {
    for (const Segment& segment : picker.segments) {
      beginLine();
      Line line(out_);
      line.kind("segment");
      line.word(inQuotes(segment.title));
      line.field("tag", inQuotes(segment.tag));
      out_ += '\n';
    }
  }
  void operator()(const List& list) {
    for (std::size_t i = 0; i < list.rows->count(); ++i) print(list.rows->row(i));
  }
  void operator()(const ScrollView& scroll) { print(*scroll.content); }
  void operator()(const ProgressIndicator& /*indicator*/) {}
  void operator()(const WebPage& /*page*/) {}

 private:
  void beginLine() { out_.append(2 * level_, ' '); }
  void printAll(const std::vector<View>& views) {
    for (const View& view : views) print(view);
  }

  std::string& out_;
  std::size_t level_ = 0;
};

}  // namespace

std::string outline(const View& view) {
  std::string out;
  TreePrinter(out).print(view);
  return out;
}

}  // namespace lumisk::ui
