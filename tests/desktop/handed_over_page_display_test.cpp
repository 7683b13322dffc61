// Where the page file cannot be written the page is handed over to the engine as text.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "core/markdown_page.h"
#include "preview_on_screen.h"
#include "support/files.h"

namespace lumisk::test {
namespace {

/// Makes it impossible to write the page file while it lives.
class NoPageFile {
 public:
  NoPageFile() {
    std::filesystem::remove_all(pages_);
    writeAll(pages_, "a file in the folder's place");
  }
  NoPageFile(const NoPageFile&) = delete;
  NoPageFile& operator=(const NoPageFile&) = delete;
  ~NoPageFile() { std::filesystem::remove(pages_); }

 private:
  const std::filesystem::path pages_ = std::filesystem::path(g_get_user_cache_dir()) / "LumiskHTML";
};

TEST_F(PreviewTest, WhereThePageFileCannotBeWrittenThePageIsHandedOver) {
  writeAll(folder_ / "first.md", "# First");
  writeAll(folder_ / "second.md", "# Second");
  ASSERT_TRUE(Preview(folder_ / "guide.md").finishes()) << "warms a view up";
  const NoPageFile none;
  for (const char* name : {"first", "second"}) {
    Preview preview(folder_ / (name + std::string(".md")));
    EXPECT_TRUE(preview.finishes());
    EXPECT_EQ(evaluate(preview.page(), "document.querySelector('h1').textContent.toLowerCase()"),
              name);
    EXPECT_EQ(evaluate(preview.page(), "typeof mermaid"), "object") << "the libraries are there";
  }
}

TEST_F(PreviewTest, APageThatIsHandedOverIsWhole) {
  const NoPageFile none;
  writeAll(folder_ / "zero.md", std::string("# One\n\nbefore \0 after\n\n# Two\n", 29));
  Preview preview(folder_ / "zero.md");
  ASSERT_TRUE(preview.finishes());
  EXPECT_EQ(evaluate(preview.page(), "document.querySelectorAll('h1').length"), "2");
}

// In a view whose process has not begun, and with what lies outside the document's folder.
TEST_F(PreviewTest, APageThatIsHandedOverMayNameWhatLiesElsewhere) {
  const NoPageFile none;
  const TemporaryFolder elsewhere;
  writeAll(elsewhere / "other.html", "<p id=\"other\">other</p>");
  const std::string other = (elsewhere / "other.html").string();
  const std::string source("# Here\n\n![](/elsewhere/x.png)\n\n[on](file://" + other + ")\n");
  Program program({LUMISK_EXTENSION_FOLDER, LUMISK_STORE_FOLDER, LUMISK_CATALOGUES});
  PageOnScreen page(buildMarkdownPage(source, "file:///tmp/", false), program);
  EXPECT_EQ(page("document.querySelector('h1').textContent"), "Here");
  page("document.querySelector('a').click()");
  EXPECT_TRUE(page.becomes("document.getElementById('other') !== null"));
}

/// What stands in an image's place, and where it lies.
TEST_F(PreviewTest, APageThatIsHandedOverShowsImagesOfTheDisk) {
  const NoPageFile none;
  writeAll(folder_ / "dot.gif", kDot);
  const std::string folder = folder_.path().string();
  const std::string images = "<img src=\"dot.gif\"><img src=\"file://" + folder + "/dot.gif\">";
  const struct {
    const char* label;
    std::string html;
  } rows[] = {
      {"with a base of its own", buildMarkdownPage("![](dot.gif) ![](" + folder + "/dot.gif)",
                                                   "file://" + folder + "/", false)},
      {"with the folder that it was handed over with",
       "<!DOCTYPE html><html><body>" + images + "</body></html>"},
  };
  for (const auto& row : rows) {
    PageOnScreen page(row.html, FileURL::fromPath(folder + "/"));
    EXPECT_EQ(page("[...document.images].map((image) => image.naturalWidth).join()"), "1,1")
        << row.label;
  }
}

}  // namespace
}  // namespace lumisk::test
