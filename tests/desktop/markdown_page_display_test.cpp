// The Markdown page in the live engine: what its script and the libraries make of a document, read
// out of the page itself.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "markdown_document.h"
#include "screen.h"
#include "support/files.h"

namespace lumisk::test {
namespace {

using testing::HasSubstr;

TEST(MarkdownPage, AnEmptyDocumentStaysEmpty) {
  PageOnScreen page(pageOf(""));
  EXPECT_EQ(page("document.getElementById('content').innerHTML"), "");
  EXPECT_EQ(page("consoleErrors.length"), "0");
}

TEST(MarkdownPage, BecomesADocument) {
  PageOnScreen page(pageOf("# Title\n\nSome *text*.\n\n| a | b |\n| - | - |\n| 1 | 2 |\n"));
  EXPECT_EQ(page("document.querySelector('#content h1').textContent"), "Title");
  EXPECT_EQ(page("document.querySelector('#content em').textContent"), "text");
  EXPECT_EQ(page("document.querySelectorAll('#content table td').length"), "2");
  EXPECT_EQ(page("consoleErrors.length"), "0");
}

TEST(MarkdownPage, ASourceThatClosesItsHolderEndsThere) {
  PageOnScreen page(pageOf("before </script><b id=\"out\">after</b>"));
  EXPECT_EQ(page("document.getElementById('content').textContent.trim()"), "before");
  EXPECT_EQ(page("document.getElementById('out').textContent"), "after");
}

TEST(MarkdownPage, AppearanceChoosesThePalette) {
  for (const bool isDark : {false, true}) {
    PageOnScreen page(pageOf("text", isDark));
    EXPECT_EQ(page("getComputedStyle(document.body).backgroundColor"),
              isDark ? "rgb(30, 30, 30)" : "rgb(255, 255, 255)");
    EXPECT_EQ(page("getComputedStyle(document.body).color"),
              isDark ? "rgb(230, 230, 230)" : "rgb(36, 41, 46)");
  }
}

TEST(MarkdownPage, OnlyAbsoluteImagePathsAreChanged) {
  PageOnScreen page(
      pageOf("![](/a/b.png) ![](c.png) ![](data:image/gif;base64,R0lGODlhAQABAAAAACw=) "
             "![](file:///d.png)\n\n<img src=\"\">"));
  const auto source = [&](int index) {
    return page("document.images[" + std::to_string(index) + "].getAttribute('src')");
  };
  EXPECT_EQ(source(0), "file:///a/b.png");
  EXPECT_EQ(source(1), "c.png");
  EXPECT_EQ(page("document.images[1].src"), "file:///notes/c.png");
  EXPECT_EQ(source(2), "data:image/gif;base64,R0lGODlhAQABAAAAACw=");
  EXPECT_EQ(source(3), "file:///d.png");
  EXPECT_EQ(source(4), "");
}

TEST(MarkdownPage, ImagesOfTheDiskAreShown) {
  const TemporaryFolder folder;
  writeAll(folder / "dot.gif", kDot);
  const std::string path = (folder / "dot.gif").string();
  PageOnScreen page(buildMarkdownPage("![](" + path + ") ![](dot.gif)",
                                      "file://" + folder.path().string() + "/", false));
  EXPECT_EQ(page("[...document.images].map((image) => image.naturalWidth).join()"), "1,1");
}

struct Alert {
  const char* marker;
  const char* className;
  const char* title;
};
constexpr Alert kAlerts[] = {
    {"NOTE", "markdown-alert-note", "\u24d8 Note"},
    {"TIP", "markdown-alert-tip", "\U0001F4A1 Tip"},
    {"IMPORTANT", "markdown-alert-important", "\u2757 Important"},
    {"WARNING", "markdown-alert-warning", "\u26a0\ufe0f Warning"},
    {"CAUTION", "markdown-alert-caution", "\U0001F6D1 Caution"},
    {"note", "markdown-alert-note", "\u24d8 Note"},
};

TEST(MarkdownPage, QuotesWithAMarkerBecomeAlerts) {
  std::string source;
  for (const Alert& alert : kAlerts)
    source += std::string("> [!") + alert.marker + "]\n> Read this.\n\nbetween\n\n";
  PageOnScreen page(pageOf(source));
  int index = 0;
  for (const Alert& alert : kAlerts) {
    const std::string quote =
        "document.querySelectorAll('blockquote')[" + std::to_string(index) + "]";
    EXPECT_EQ(page(quote + ".className"), std::string("markdown-alert ") + alert.className);
    EXPECT_EQ(page(quote + ".querySelector('.markdown-alert-title').textContent"), alert.title);
    EXPECT_EQ(page(quote + ".querySelector('p').textContent"), "Read this.");
    EXPECT_EQ(page(quote + ".firstElementChild.className"), "markdown-alert-title");
    ++index;
  }
}

TEST(MarkdownPage, OtherQuotesStayQuotes) {
  PageOnScreen page(
      pageOf("> Plain.\n\nx\n\n> Text [!NOTE]\n\nx\n\n> - [!NOTE]\n\nx\n\n> [!OTHER] x\n"));
  EXPECT_EQ(page("document.querySelectorAll('blockquote').length"), "4");
  EXPECT_EQ(page("document.querySelectorAll('.markdown-alert').length"), "0");
}

TEST(MarkdownPage, DiagramsAreDrawn) {
  PageOnScreen page(pageOf(fence("mermaid", "graph TD\n  A-->B")));
  EXPECT_TRUE(page.becomes("document.querySelector('div.mermaid svg') !== null"));
  EXPECT_EQ(page("document.querySelectorAll('pre').length"), "0");
}

TEST(MarkdownPage, MathHasFourDelimiters) {
  PageOnScreen page(pageOf("$$a$$\n\n$b$\n\n\\\\(c\\\\)\n\n\\\\[d\\\\]\n"));
  EXPECT_EQ(page("document.querySelectorAll('.katex').length"), "4");
  EXPECT_EQ(page("document.querySelectorAll('.katex-display').length"), "2");
  EXPECT_EQ(page("[...document.querySelectorAll('annotation')].map((a) => a.textContent).join()"),
            "a,b,c,d");
  EXPECT_TRUE(page.becomes("[...document.fonts].some((font) => font.status === 'loaded')"))
      << "the formulas' fonts come from the store";
}

TEST(MarkdownPage, AFormulaWithAMistakeIsShownAsOne) {
  PageOnScreen page(pageOf("$\\notacommand$ and $x$"));
  EXPECT_EQ(page("document.querySelectorAll('.katex').length"), "2");
  EXPECT_THAT(page("document.querySelector('.katex').textContent"), HasSubstr("notacommand"));
  EXPECT_EQ(page("consoleErrors.length"), "0");
}

TEST(MarkdownPage, AliasesNameTheirLanguage) {
  const struct {
    const char* alias;
    const char* language;
  } rows[] = {{"js", "javascript"}, {"py", "python"}, {"rb", "ruby"},  {"rs", "rust"},
              {"ts", "typescript"}, {"sh", "bash"},   {"yml", "yaml"}, {"h", "cpp"},
              {"hpp", "cpp"},       {"cc", "cpp"},    {"cxx", "cpp"},  {"objc", "objectivec"},
              {"kt", "kotlin"},     {"cs", "csharp"}};
  std::string source;
  std::string languages;
  for (const auto& row : rows) {
    source += fence(row.alias, "x");
    languages += (languages.empty() ? "" : ",") + std::string(row.language);
  }
  // Stands where the highlighter has been loaded and the page's own script has not run.
  PageOnScreen page(pageOf(source + "</script><script>window.asked = [];"
                                    "hljs.highlight = (text, options) => {"
                                    " asked.push(options.language); return {value: text}; };"
                                    "</script><script>"));
  EXPECT_EQ(page("asked.join()"), languages);
}

TEST(MarkdownPage, CodeWithoutALanguageIsGuessed) {
  PageOnScreen page(pageOf(fence("", "def f():\n    return None")));
  EXPECT_EQ(page("document.querySelector('pre code').classList.contains('hljs')"), "true");
  EXPECT_EQ(page("document.querySelector('pre code .hljs-keyword') !== null"), "true");
}

// The highlighter itself declines what it does not know; the page hands it over all the same.
TEST(MarkdownPage, AnUnknownLanguageIsLeftToTheHighlighter) {
  PageOnScreen page(pageOf(fence("nosuchlanguage", "some text") +
                           "</script><script>"
                           "window.handedOver = [];"
                           "hljs.highlightElement = function(e) { handedOver.push(e.className); };"
                           "</script><script>"));
  EXPECT_EQ(page("handedOver.join()"), "language-nosuchlanguage");
  EXPECT_EQ(page("consoleErrors.length"), "0");
}

TEST(MarkdownPage, CheckboxesReportTheirPlace) {
  PageOnScreen page(pageOf("- [ ] a\n- [x] b\n\n<input type=\"checkbox\" id=\"raw\">\n\n" +
                           fence("carousel", "one <input type=\"checkbox\" id=\"slide\">")));
  page("document.getElementById('raw').click()");
  page("document.getElementById('raw').click()");
  page("document.getElementById('slide').click()");
  const std::vector<PageOnScreen::Toggle> expected = {{2, true}, {2, false}, {3, true}};
  EXPECT_TRUE(runUntil([&] { return page.toggles().size() == expected.size(); }));
  EXPECT_EQ(page.toggles(), expected);
}

TEST(MarkdownPage, ACheckboxThatAnAlertRebuildsIsSilent) {
  PageOnScreen page(
      pageOf("> [!NOTE]\n> <input type=\"checkbox\" id=\"in\"> x\n\n"
             "<input type=\"checkbox\" id=\"after\">"));
  page("document.getElementById('in').click()");
  page("document.getElementById('after').click()");
  const std::vector<PageOnScreen::Toggle> expected = {{1, true}};
  EXPECT_TRUE(runUntil([&] { return !page.toggles().empty(); }));
  EXPECT_EQ(page.toggles(), expected);
}

TEST(MarkdownPage, MessagesThatAreNoCheckboxesAreIgnored) {
  PageOnScreen page(pageOf("x"));
  const char* const messages[] = {
      "null",
      "undefined",
      "'checkbox'",
      "1",
      "[]",
      "['checkbox', 1, true]",
      "{}",
      "{type: 'Checkbox', index: 1, checked: true}",
      "{type: 'checkbox', index: 1}",
      "{type: 'checkbox', checked: true}",
      "{type: 'checkbox', index: '1', checked: true}",
      "{type: 'checkbox', index: true, checked: true}",
      "{type: 'checkbox', index: 1.5, checked: true}",
      "{type: 'checkbox', index: NaN, checked: true}",
      "{type: 'checkbox', index: 1, checked: 1}",
      "{type: 'checkbox', index: 1, checked: 'true'}",
      "{index: 1, checked: true}",
      "{type: ['checkbox'], index: 1, checked: true}",
  };
  const std::string post = "window.webkit.messageHandlers.lumisk.postMessage(";
  for (const char* const message : messages) page(post + message + "), 1");
  // Messages come in order: when this one is here the others were.
  page(post + "{type: 'checkbox', index: 9, checked: false, more: [1]}), 1");
  const std::vector<PageOnScreen::Toggle> expected = {{9, false}};
  EXPECT_TRUE(runUntil([&] { return !page.toggles().empty(); }));
  EXPECT_EQ(page.toggles(), expected);
}

TEST(MarkdownPage, AMessageMayHoldMoreThanIsRead) {
  PageOnScreen page(pageOf("x"));
  page(
      "const message = {}; for (let i = 0; i < 1000; ++i) message['a' + i] = i;"
      "Object.assign(message, {type: 'checkbox', index: 3, checked: true});"
      "window.webkit.messageHandlers.lumisk.postMessage(message), 1");
  const std::vector<PageOnScreen::Toggle> expected = {{3, true}};
  EXPECT_TRUE(runUntil([&] { return !page.toggles().empty(); }));
  EXPECT_EQ(page.toggles(), expected);
}

// --- carousels ---

TEST(Carousel, OneSlideHasNoControls) {
  PageOnScreen page(pageOf(fence("carousel", "# Only")));
  EXPECT_EQ(page("document.querySelectorAll('.carousel-slide').length"), "1");
  EXPECT_EQ(page("document.querySelectorAll('.carousel-nav, .carousel-dots').length"), "0");
  EXPECT_EQ(page("document.querySelector('.carousel-container').dataset.total"), "undefined");
  EXPECT_EQ(page("document.querySelectorAll('pre').length"), "0");
}

TEST(Carousel, ALeadingSeparatorBringsControlsToOneSlide) {
  PageOnScreen page(pageOf(fence("carousel", "<!-- slide -->\nOnly")));
  EXPECT_EQ(page("document.querySelectorAll('.carousel-slide').length"), "1");
  EXPECT_EQ(page("document.querySelectorAll('.carousel-nav').length"), "2");
  EXPECT_EQ(page("document.querySelectorAll('.carousel-dot').length"), "1");
  EXPECT_EQ(page("document.querySelector('.carousel-container').dataset.total"), "1");
}

TEST(Carousel, WrapsAroundAtBothEnds) {
  PageOnScreen page(
      pageOf(fence("carousel", "a\n<!--slide-->\nb\n<!-- slide -->\n\n<!-- slide -->\nc")));
  EXPECT_EQ(page("document.querySelectorAll('.carousel-slide').length"), "3")
      << "blank ones are left out";
  const auto state = [&] {
    return page(
        "document.querySelector('.carousel-container').dataset.index + ' ' + "
        "document.querySelector('.carousel-stage').style.transform + ' ' + "
        "[...document.querySelectorAll('.carousel-dot')].map("
        "(dot) => dot.classList.contains('active') ? 1 : 0).join('')");
  };
  page("document.querySelector('.carousel-prev').click()");
  EXPECT_EQ(state(), "2 translateX(-200%) 001");
  page("document.querySelector('.carousel-next').click()");
  EXPECT_EQ(state(), "0 translateX(0%) 100");
  page("document.querySelectorAll('.carousel-dot')[1].click()");
  EXPECT_EQ(state(), "1 translateX(-100%) 010");
}

TEST(Carousel, SlidesHaveCodeMathAndImages) {
  PageOnScreen page(pageOf("````carousel\n```python\nprint(1)\n```\n\n$x^2$ ![](/p.png)\n````\n"));
  EXPECT_EQ(page("document.querySelector('.carousel-slide pre code').classList.contains('hljs')"),
            "true");
  EXPECT_EQ(page("document.querySelectorAll('.carousel-slide .katex').length"), "1");
  EXPECT_EQ(page("document.querySelector('.carousel-slide img').getAttribute('src')"),
            "file:///p.png");
}

TEST(Carousel, ADiagramInASlideIsCode) {
  PageOnScreen page(pageOf("````carousel\n```mermaid\ngraph TD\n  A-->B\n```\n````\n"));
  EXPECT_EQ(page("document.querySelectorAll('.carousel-slide pre code').length"), "1");
  EXPECT_EQ(page("document.querySelectorAll('.mermaid').length"), "0");
}

}  // namespace
}  // namespace lumisk::test
