#include "ui/outline.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>
#include <vector>

#include "support/files.h"
#include "support/vector_row_source.h"
#include "ui/view.h"

namespace lumisk::ui {
namespace {

using test::VectorRowSource;

struct OutlineCase {
  const char* label;
  View view;
  std::string line;  // without its line feed
};

void expectLines(const std::vector<OutlineCase>& cases) {
  for (const OutlineCase& row : cases) EXPECT_EQ(outline(row.view), row.line + "\n") << row.label;
}

Text text(SharedText words) { return Text{.text = std::move(words)}; }

TEST(Outline, DefaultsAreLeftOut) {
  expectLines({
      {"vertical stack", VStack{}, "vstack"},
      {"horizontal stack", HStack{}, "hstack"},
      {"overlay", Overlay{}, "overlay"},
      {"spacer", Spacer{}, "spacer"},
      {"divider", Divider{}, "divider"},
      {"text", text("hello"), R"(text "hello")"},
      {"image", Image{.source = NamedIcon{"folder"}}, R"(image icon="folder")"},
      {"picker", SegmentedPicker{.label = {}, .segments = {}, .selection = "a", .onSelect = {}},
       R"(picker selection="a")"},
      {"list", List{std::make_shared<VectorRowSource>(std::vector<View>{})}, "list rows=0"},
      {"progress", ProgressIndicator{}, "progress"},
      {"web page", WebPage{}, "webpage length=0"},
  });
}

TEST(Outline, StatesWhatDiffersFromTheDefault) {
  expectLines({
      {"leading", VStack{.alignment = HorizontalAlignment::Leading, .children = {}},
       "vstack alignment=leading"},
      {"trailing", VStack{.alignment = HorizontalAlignment::Trailing, .children = {}},
       "vstack alignment=trailing"},
      {"top", HStack{.alignment = VerticalAlignment::Top, .children = {}}, "hstack alignment=top"},
      {"bottom", HStack{.alignment = VerticalAlignment::Bottom, .children = {}},
       "hstack alignment=bottom"},
      {"no spacing", VStack{.spacing = 0, .children = {}}, "vstack spacing=0"},
      {"spacing", HStack{.spacing = 10, .children = {}}, "hstack spacing=10"},
      {"alignment before spacing",
       VStack{.alignment = HorizontalAlignment::Leading, .spacing = 2.5, .children = {}},
       "vstack alignment=leading spacing=2.5"},
      {"spacer with a length", Spacer{.minLength = 0}, "spacer min=0"},
      {"headline", Text{.text = "a", .font = {.size = TextStyle::Headline}},
       R"(text "a" font=headline)"},
      {"caption", Text{.text = "a", .font = {.size = TextStyle::Caption}},
       R"(text "a" font=caption)"},
      {"size", Text{.text = "a", .font = {.size = 13.0}}, R"(text "a" font=13)"},
      {"all of a text",
       Text{.text = "a",
            .font = {.size = 12.0, .design = FontDesign::Monospaced, .weight = FontWeight::Bold},
            .foreground = ForegroundRole::Secondary,
            .isSelectable = true,
            .lineLimit = 1},
       R"(text "a" font=12 monospaced bold secondary selectable lines=1)"},
      {"picker that reports",
       SegmentedPicker{.selection = "a", .onSelect = [](const std::string&) {}},
       R"(picker selection="a" on-select)"},
      {"image of a path", Image{.source = FileIcon{"/a \"b\""}, .isResizable = true},
       R"(image file="/a \"b\"" resizable)"},
      {"web page",
       WebPage{.htmlContent = "<p>hi</p>",
               .baseURL = FileURL::fromPath("/home/ada/a b/"),
               .onCheckboxToggle = [](std::int64_t, bool) {},
               .onLoad = [] {}},
       R"(webpage length=9 digest=2af7677882c30339 base="file:///home/ada/a%20b/" on-checkbox-toggle on-load)"},
  });
}

TEST(Outline, StatesModifiersInTheirOrderInnermostFirst) {
  expectLines({
      {"padding", View(Divider{}).with(Padding{Edges::All, 12}), "divider padding=12"},
      {"padding twice",
       View(Divider{}).with(Padding{Edges::Horizontal, 8}).with(Padding{Edges::Vertical, 8}),
       "divider padding-horizontal=8 padding-vertical=8"},
      {"the other way round",
       View(Divider{}).with(Padding{Edges::Vertical, 8}).with(Padding{Edges::Horizontal, 8}),
       "divider padding-vertical=8 padding-horizontal=8"},
      {"frame", View(Divider{}).with(Frame{.width = 32, .height = 20}),
       "divider frame(width=32 height=20)"},
      {"aligned frame",
       View(Divider{}).with(Frame{.width = 80, .alignment = HorizontalAlignment::Trailing}),
       "divider frame(width=80 alignment=trailing)"},
      {"widest frame",
       View(Divider{}).with(
           Frame{.maxWidth = kInfinity, .alignment = HorizontalAlignment::Leading}),
       "divider frame(max-width=infinity alignment=leading)"},
      {"frame without a figure", View(Divider{}).with(Frame{}), "divider frame()"},
      {"background", View(Divider{}).with(Background{BackgroundRole::Text}),
       "divider background(text)"},
      {"all of a background", View(Divider{}).with(Background{BackgroundRole::Window, 0.95, true}),
       "divider background(window opacity=0.95 safe-areas)"},
      {"opacity, also the usual one", View(Divider{}).with(Opacity{1}).with(Opacity{0}),
       "divider opacity=1 opacity=0"},
      {"fixed size", View(Divider{}).with(FixedSize{}).with(Padding{Edges::All, 1}),
       "divider fixed-size padding=1"},
  });
}

TEST(Outline, ATreeIsOneNodeALineTwoBlanksALevel) {
  const View row = HStack{.children = {text("name"), Spacer{}, text("1 KB")}};
  const View view =
      VStack{.spacing = 0,
             .children = {
                 SegmentedPicker{.label = "Mode",
                                 .segments = {{"one", "First"}, {"two", "Second \"half\""}},
                                 .selection = "two",
                                 .onSelect = {}},
                 Overlay{{ScrollView{.showsIndicators = true, .content = Content(text("long"))},
                          ProgressIndicator{}}},
                 List{std::make_shared<VectorRowSource>(std::vector<View>{row, row})},
             }};
  EXPECT_EQ(outline(view), R"(vstack spacing=0
  picker label="Mode" selection="two"
    segment "First" tag="one"
    segment "Second \"half\"" tag="two"
  overlay
    vertical-scroll indicators
      text "long"
    progress
  list rows=2
    hstack
      text "name"
      spacer
      text "1 KB"
    hstack
      text "name"
      spacer
      text "1 KB"
)");
}

TEST(Outline, TextsAreWholeUpToTheLimitThenABeginningTheLengthAndADigest) {
  const std::string longest(kOutlineTextLimit, 'x');
  EXPECT_EQ(outline(text(longest)), "text \"" + longest + "\"\n");
  EXPECT_EQ(outline(text(longest + "y")),
            "text \"" + std::string(64, 'x') + "\" length=257 digest=9bfbd42e3054d154\n");
}

TEST(Outline, TheBeginningOfALongTextEndsBetweenCharacters) {
  // Wherever the cut falls in a four-byte character, no byte of a part of it is shown.
  const std::string character = "\xF0\x9F\x93\x81";
  for (std::size_t shift = 0; shift < 4; ++shift) {
    std::string words(shift, 'x');
    while (words.size() <= kOutlineTextLimit) words += character;
    const std::string line = outline(text(words));
    EXPECT_EQ(line.find("\\x"), std::string::npos) << line;
    EXPECT_NE(line.find("length=" + std::to_string(words.size())), std::string::npos) << line;
  }
  // Bytes that continue nothing are cut all the same.
  EXPECT_NE(outline(text(std::string(kOutlineTextLimit + 1, '\x80'))).find("length=257"),
            std::string::npos);
}

TEST(Outline, NumbersAreWrittenTheSameInEveryLocale) {
  const char* const found = std::setlocale(LC_ALL, "de_DE.UTF-8");
  EXPECT_EQ(outline(VStack{.spacing = 0.95, .children = {}}), "vstack spacing=0.95\n");
  if (found) std::setlocale(LC_ALL, "C");
}

TEST(Outline, EqualViewsHaveEqualOutlines) {
  const auto make = [] {
    return View(VStack{.spacing = 1, .children = {text("a"), View(Divider{}).with(Opacity{0.5})}});
  };
  EXPECT_EQ(make(), make());
  EXPECT_EQ(outline(make()), outline(make()));
}

}  // namespace
}  // namespace lumisk::ui
