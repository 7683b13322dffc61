// What is left of a Markdown page when one of its libraries is missing, fails, or is stood in for.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "markdown_document.h"
#include "screen.h"
#include "support/files.h"

namespace lumisk::test {
namespace {

using testing::HasSubstr;

/// What is left of a document when a library cannot be loaded.
struct Missing {
  const char* label;
  std::vector<std::string> files;
  const char* headings;  ///< the expected number of each
  const char* highlighted;
  const char* diagrams;
  const char* formulas;
};

TEST(MarkdownLibraries, AMissingLibrarySkipsItsStepOnly) {
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
TEST(MarkdownLibraries, FormulasWithoutTheirLibraryFailByThemselves) {
  const TemporaryFolder folder;
  copyStoreWithout(folder / "store", {"npm/katex@0.16.8/dist/katex.min.js"});
  Program program({LUMISK_EXTENSION_FOLDER, (folder / "store").string()});
  PageOnScreen page(pageOf("$x$\n\n> [!NOTE]\n> y\n"), program);
  EXPECT_EQ(page("consoleErrors.join()"), "KaTeX error:");
  EXPECT_EQ(page("document.querySelectorAll('.katex').length"), "0");
  EXPECT_EQ(page("document.querySelectorAll('.markdown-alert').length"), "1");
}

/// A library that is there but fails: its step says so under its label and the next ones still run.
TEST(MarkdownLibraries, AFailingStepSaysWhichAndTheOthersGoOn) {
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

TEST(MarkdownLibraries, AFailingImageOrAlertStepSaysSo) {
  PageOnScreen page(
      pageOf("![](/a.png)\n\n> [!NOTE]\n> x\n\n</script><script>"
             "Element.prototype.setAttribute = function() { throw 1; };"
             "DOMTokenList.prototype.add = function() { throw 1; };</script><script>"));
  EXPECT_THAT(page("consoleErrors.join()"), HasSubstr("Image path fix error:"));
  EXPECT_THAT(page("consoleErrors.join()"), HasSubstr("Alerts error:"));
}

TEST(MarkdownLibraries, CarouselsWithoutTheMarkdownLibrarySaySo) {
  PageOnScreen page(
      pageOf("</script><pre><code class=\"language-carousel\">a</code></pre><script>"
             "delete window.marked; window.marked = undefined;</script><script>"));
  EXPECT_EQ(page("consoleErrors.join()"), "Carousel error:");
}

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
  // The engine has the library at hand by now, and would take it.
  EXPECT_EQ(finished("").first, "undefined");
}

}  // namespace
}  // namespace lumisk::test
