// The Markdown page in the live engine: what its script and the libraries make of a document, read
// out of the page itself.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/markdown_page.h"
#include "screen.h"
#include "support/files.h"

namespace lumisk::test {
namespace {

using testing::HasSubstr;

std::string pageOf(const std::string& source, bool isDark = false) {
  return buildMarkdownPage(source, "file:///notes/", isDark);
}

std::string fence(const std::string& language, const std::string& text) {
  return "```" + language + "\n" + text + "\n```\n\n";
}

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
  // One red pixel.
  writeAll(folder / "dot.gif",
           std::string("GIF89a\x01\x00\x01\x00\x80\x00\x00\xff\x00\x00\x00\x00\x00,\x00\x00\x00\x00"
                       "\x01\x00\x01\x00\x00\x02\x02\x44\x01\x00;",
                       35));
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

// --- libraries that are missing ---

/// What is left of a document when a library cannot be loaded.
struct Missing {
  const char* label;
  std::vector<std::string> files;
  const char* headings;  ///< the expected number of each
  const char* highlighted;
  const char* diagrams;
  const char* formulas;
};

TEST(MarkdownPage, AMissingLibrarySkipsItsStepOnly) {
  const Missing rows[] = {
      {"marked", {"npm/marked@12.0.1/lib/marked.umd.min.js"}, "0", "0", "0", "0"},
      {"highlighter", {"npm/@highlightjs/cdn-assets@11.9.0/highlight.min.js"}, "1", "0", "1", "1"},
      {"diagrams", {"npm/mermaid@10.9.1/dist/mermaid.min.js"}, "1", "1", "0", "1"},
      {"math", {"npm/katex@0.16.8/dist/contrib/auto-render.min.js"}, "1", "1", "1", "0"},
      {"style sheets",
       {"npm/katex@0.16.8/dist/katex.min.css",
        "npm/@highlightjs/cdn-assets@11.9.0/styles/atom-one-light.min.css"},
       "1",
       "1",
       "1",
       "1"},
  };
  const std::string source =
      "# T\n\n$x$\n\n" + fence("python", "print(1)") + fence("mermaid", "graph TD\n  A-->B");
  for (const Missing& row : rows) {
    const TemporaryFolder folder;
    copyStoreWithout(folder / "store", row.files);
    Program program({LUMISK_EXTENSION_FOLDER, (folder / "store").string()});
    PageOnScreen page(pageOf(source), program);
    EXPECT_EQ(page("document.querySelectorAll('h1').length"), row.headings) << row.label;
    EXPECT_EQ(page("document.querySelectorAll('.hljs').length"), row.highlighted) << row.label;
    if (std::string(row.diagrams) == "1") {
      EXPECT_TRUE(page.becomes("document.querySelectorAll('.mermaid svg').length === 1"))
          << row.label;
    } else {
      EXPECT_EQ(page("document.querySelectorAll('.mermaid svg').length"), "0") << row.label;
    }
    EXPECT_EQ(page("document.querySelectorAll('.katex').length"), row.formulas) << row.label;
    EXPECT_EQ(page("consoleErrors.length"), "0") << row.label;
  }
}

// What finds the formulas is there; what sets them is not.
TEST(MarkdownPage, FormulasWithoutTheirLibraryFailByThemselves) {
  const TemporaryFolder folder;
  copyStoreWithout(folder / "store", {"npm/katex@0.16.8/dist/katex.min.js"});
  Program program({LUMISK_EXTENSION_FOLDER, (folder / "store").string()});
  PageOnScreen page(pageOf("$x$\n\n> [!NOTE]\n> y\n"), program);
  EXPECT_EQ(page("consoleErrors.join()"), "KaTeX error:");
  EXPECT_EQ(page("document.querySelectorAll('.katex').length"), "0");
  EXPECT_EQ(page("document.querySelectorAll('.markdown-alert').length"), "1");
}

/// A library that is there but fails: its step says so under its label and the next ones still run.
TEST(MarkdownPage, AFailingStepSaysWhichAndTheOthersGoOn) {
  const struct {
    const char*
        script;  // put where the libraries' functions are, before the page's own script runs
    const char* label;
    const char* formulas;  // where the steps go on
    const char* alerts;
  } rows[] = {
      {"marked.parse = function() { throw 1; }", "Markdown parse error:", "0", "0"},
      {"hljs.highlight = hljs.highlightElement = function() { throw 1; }", "Highlight error:", "1",
       "1"},
      {"mermaid.initialize = function() { throw 1; }", "Mermaid error:", "1", "1"},
      {"window.renderMathInElement = function() { throw 1; }", "KaTeX error:", "0", "1"},
  };
  for (const auto& row : rows) {
    // The script stands behind the document's own text, in the page but before `onload`.
    PageOnScreen page(pageOf("# T\n\n$x$\n\n> [!NOTE]\n> y\n\n" + fence("python", "x") +
                             "</script><script>" + row.script + ";</script><script>"));
    EXPECT_EQ(page("consoleErrors.join()"), row.label);
    EXPECT_EQ(page("document.querySelectorAll('.katex').length"), row.formulas) << row.label;
    EXPECT_EQ(page("document.querySelectorAll('.markdown-alert').length"), row.alerts) << row.label;
  }
}

TEST(MarkdownPage, AFailingImageOrAlertStepSaysSo) {
  PageOnScreen page(
      pageOf("![](/a.png)\n\n> [!NOTE]\n> x\n\n</script><script>"
             "Element.prototype.setAttribute = function() { throw 1; };"
             "DOMTokenList.prototype.add = function() { throw 1; };</script><script>"));
  EXPECT_THAT(page("consoleErrors.join()"), HasSubstr("Image path fix error:"));
  EXPECT_THAT(page("consoleErrors.join()"), HasSubstr("Alerts error:"));
}

TEST(MarkdownPage, CarouselsWithoutTheMarkdownLibrarySaySo) {
  PageOnScreen page(
      pageOf("</script><pre><code class=\"language-carousel\">a</code></pre><script>"
             "delete window.marked; window.marked = undefined;</script><script>"));
  EXPECT_EQ(page("consoleErrors.join()"), "Carousel error:");
}

// --- the stand-in for the diagram library ---

TEST(InertDiagramLibrary, TheFinishedPageIsTheSame) {
  const std::string source = "# T\n\n$x$\n\n" + fence("python", "print(1)") +
                             "> [!TIP]\n> x\n\n- [ ] a\n\n" +
                             fence("carousel", "a\n<!-- slide -->\nb");
  const auto finished = [&](const std::string& comment) {
    PageOnScreen page(pageOf(source + comment));
    const std::string isReal = page("typeof mermaid.render");
    std::string html = page(
        "document.getElementById('content').outerHTML + "
        "document.head.querySelectorAll('style').length + "
        "document.body.children.length");
    const std::size_t at = html.find(comment);
    if (!comment.empty() && at != std::string::npos) html.erase(at, comment.size());
    return std::pair(isReal, html);
  };
  const auto [inert, withStandIn] = finished("");
  const auto [real, withLibrary] = finished("<!-- mermaid -->");
  EXPECT_EQ(inert, "undefined");
  EXPECT_EQ(real, "function");
  EXPECT_EQ(withStandIn, withLibrary);
}

}  // namespace
}  // namespace lumisk::test
