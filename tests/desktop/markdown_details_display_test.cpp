// The finer points of alerts, carousels and diagrams, read out of the page in the live engine.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "markdown_document.h"
#include "screen.h"

namespace lumisk::test {
namespace {

// --- alerts ---

TEST(Alert, IsWhatBeginsWithAMarkerHoweverTheLineEnds) {
  const struct {
    const char* label;
    const char* source;
    const char* quotes;  ///< of each quote: its type as an alert, or "-"
    const char* text;    ///< the paragraph that had the marker
  } rows[] = {
      {"a line break after the marker", "> [!NOTE]  \n> text\n", "note", "text"},
      {"text on the marker's line", "> [!TIP] text\n", "tip", "text"},
      {"text on the marker's line and below it", "> [!TIP] one\n> two\n", "tip", "one\ntwo"},
      {"a marker alone", "> [!CAUTION]\n", "caution", ""},
      {"a marker alone, text in the next paragraph", "> [!NOTE]\n>\n> text\n", "note", ""},
      {"a marker in the second paragraph", "> text\n>\n> [!NOTE]\n> more\n", "-", "text"},
      {"a marker with a blank inside", "> [! NOTE]\n> text\n", "-", "[! NOTE]\ntext"},
      {"a marker that another follows", "> [!NOTE]\n> [!TIP] text\n", "note", "[!TIP] text"},
      {"a quote in a quote", "> text\n>\n> > [!WARNING]\n> > more\n", "-,warning", "text"},
      {"a quote that begins with a quote", "> > [!WARNING]\n> > text\n", "warning,-", "text"},
      {"a marker in capitals and small letters", "> [!Important]\n> text\n", "important", "text"},
  };
  for (const auto& row : rows) {
    PageOnScreen page(pageOf(row.source));
    EXPECT_EQ(page("[...document.querySelectorAll('blockquote')].map((quote) => "
                   "quote.classList.contains('markdown-alert') ? "
                   "quote.className.replace('markdown-alert markdown-alert-', '') : '-').join()"),
              row.quotes)
        << row.label;
    EXPECT_EQ(page("document.querySelector('blockquote p').textContent"), row.text) << row.label;
    const bool isAlert = std::string(row.quotes).find_first_not_of("-,") != std::string::npos;
    EXPECT_EQ(page("document.querySelectorAll('.markdown-alert-title').length"),
              isAlert ? "1" : "0")
        << row.label;
    EXPECT_EQ(page("[...document.querySelectorAll('.markdown-alert-title')].every((title) => "
                   "title.nextElementSibling.tagName === 'P')"),
              "true")
        << row.label;
    EXPECT_EQ(page("consoleErrors.join()"), "") << row.label;
  }
}

TEST(Alert, HasItsIconApartFromItsTitle) {
  const struct {
    const char* marker;
    const char* icon;
    const char* title;
  } rows[] = {
      {"NOTE", "\u24d8", " Note"},           {"TIP", "\U0001F4A1", " Tip"},
      {"IMPORTANT", "\u2757", " Important"}, {"WARNING", "\u26a0\ufe0f", " Warning"},
      {"CAUTION", "\U0001F6D1", " Caution"},
  };
  for (const auto& row : rows) {
    PageOnScreen page(pageOf("> [!" + std::string(row.marker) + "]\n> text\n"));
    EXPECT_EQ(page("document.querySelector('.markdown-alert-title > .markdown-alert-icon')"
                   ".textContent"),
              row.icon);
    EXPECT_EQ(page("document.querySelector('.markdown-alert-icon').nextSibling.data"), row.title);
  }
}

// --- carousels ---

TEST(CarouselDetails, BeginsWithItsFirstSlide) {
  PageOnScreen page(pageOf(fence("carousel", "a\n<!-- slide -->\nb\n<!-- slide -->\nc")));
  EXPECT_EQ(page("document.querySelector('.carousel-container').dataset.index"), "0");
  EXPECT_EQ(page("document.querySelector('.carousel-container').dataset.total"), "3");
  EXPECT_EQ(page("[...document.querySelectorAll('.carousel-dot')].map((dot) => "
                 "dot.className).join()"),
            "carousel-dot active,carousel-dot,carousel-dot");
  EXPECT_EQ(page("document.querySelector('.carousel-stage').style.transform"), "");
  EXPECT_EQ(page("Math.round(document.querySelector('.carousel-slide').getBoundingClientRect().left"
                 " - document.querySelector('.carousel-stage').getBoundingClientRect().left)"),
            "0");
}

TEST(CarouselDetails, HasItsControlsAfterItsStage) {
  PageOnScreen page(pageOf(fence("carousel", "a\n<!-- slide -->\nb")));
  EXPECT_EQ(page("[...document.querySelector('.carousel-container').children].map((child) => "
                 "child.className).join()"),
            "carousel-stage,carousel-nav carousel-prev,carousel-nav carousel-next,carousel-dots");
  EXPECT_EQ(page("document.querySelector('.carousel-prev').textContent"), "\u276e");
  EXPECT_EQ(page("document.querySelector('.carousel-next').textContent"), "\u276f");
}

TEST(CarouselDetails, SlidesHaveImagesOfEachKind) {
  const std::string data = "data:image/gif;base64,R0lGODlhAQABAAAAACw=";
  PageOnScreen page(pageOf(fence("carousel", "![](" + data +
                                                 ") ![](a.png) ![](/b.png) ![](file:///c.png)\n"
                                                 "<!-- slide -->\n![](/d.png)")));
  EXPECT_EQ(page("[...document.querySelectorAll('.carousel-slide img')].map((image) => "
                 "image.getAttribute('src')).join(' ')"),
            data + " a.png file:///b.png file:///c.png file:///d.png");
}

TEST(CarouselDetails, EachGoesItsOwnWay) {
  const std::string slides = fence("carousel", "a\n<!-- slide -->\nb");
  PageOnScreen page(pageOf(slides + slides));
  page("document.querySelectorAll('.carousel-next')[1].click()");
  EXPECT_EQ(page("[...document.querySelectorAll('.carousel-container')].map((carousel) => "
                 "carousel.dataset.index).join()"),
            "0,1");
}

// --- diagrams ---

TEST(Diagrams, OneWithAMistakeSpoilsNothingElse) {
  PageOnScreen page(pageOf(fence("mermaid", "graph TD\n  A--") +
                           fence("mermaid", "graph TD\n  A[First]-->B[Second]") +
                           "$x$\n\n> [!NOTE]\n> text\n"));
  EXPECT_TRUE(
      page.becomes("document.querySelectorAll('.mermaid')[1].querySelector('svg') !== null"
                   " && document.querySelectorAll('.mermaid')[1].textContent"
                   ".includes('Second')"));
  EXPECT_EQ(page("document.querySelectorAll('.markdown-alert').length"), "1");
  EXPECT_EQ(page("document.querySelectorAll('.katex').length"), "1");
}

TEST(Diagrams, AreNeverHandedToTheHighlighter) {
  PageOnScreen page(pageOf(fence("mermaid", "graph TD\n  A-->B") + fence("nosuchlanguage", "text") +
                           fence("python", "print(1)") +
                           "</script><script>window.handedOver = [];"
                           "hljs.highlightElement = (code) => { handedOver.push(code.className); };"
                           "hljs.highlight = (text, options) => {"
                           " handedOver.push(options.language); return {value: text}; };"
                           "</script><script>"));
  EXPECT_EQ(page("handedOver.join()"), "language-nosuchlanguage,python");
  EXPECT_TRUE(page.becomes("document.querySelector('div.mermaid svg') !== null"));
}

}  // namespace
}  // namespace lumisk::test
