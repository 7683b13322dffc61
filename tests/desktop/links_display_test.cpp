// Where a link of a document leads, and the way back: everything opens inside the panel, and
// nothing is handed to another application.

#include <gmock/gmock.h>

#include "panel_on_screen.h"
#include "panel_test.h"

namespace lumisk::test {
namespace {

using testing::HasSubstr;

struct Target {
  const char* label;
  const char* address;
  const char* text;  ///< what stands there then
};
std::ostream& operator<<(std::ostream& out, const Target& target) { return out << target.label; }

constexpr const char* kHeading = "document.querySelector('h1').textContent";

/// A document whose first link leads to an address.
class Links : public PanelTest {
 protected:
  Links() {
    writeAll(folder_ / "other.md", "# Other *file*\n");
    writeAll(folder_ / "other.txt", "Other text\n");
    writeAll(folder_ / "other.csv", "other,cells\n");
    writeAll(folder_ / "other.bin", std::string("\x7f"
                                                "ELF\1\0\xff\xfe",
                                                8));
    std::filesystem::create_directory(folder_ / "inner");
    writeAll(folder_ / "inner/inside.txt", "x");
  }
  void openLinkTo(const std::string& address) {
    writeAll(folder_ / "doc.md", "# Tides\n\n[on](" + address + ")\n");
    ASSERT_NO_FATAL_FAILURE(open("doc.md"));
    EXPECT_FALSE(panel_->webViews().canGoBack());
    evaluate(page(), "document.querySelector('a').click(), 1");
  }
  bool isBackOffered() {
    const auto isBack = [](GtkWidget* widget) {
      return GTK_IS_BUTTON(widget) &&
             g_strcmp0(gtk_button_get_icon_name(GTK_BUTTON(widget)), "go-previous-symbolic") == 0;
    };
    return shownBelow(GTK_WIDGET(panel_->window()), isBack).size() == 1;
  }
  std::string textOfThePage() { return evaluate(page(), "document.body.innerText"); }
};

class LinkTest : public Links, public testing::WithParamInterface<Target> {
 protected:
  void follow() {
    ASSERT_NO_FATAL_FAILURE(openLinkTo(GetParam().address));
    ASSERT_TRUE(runUntil([&] { return panel_->webViews().canGoBack() && isBackOffered(); }));
    ASSERT_TRUE(runUntil([&] {
      return textOfThePage().find(GetParam().text) != std::string::npos;
    })) << textOfThePage();
  }
};

TEST_P(LinkTest, LeadsThereInsideThePanelAndBack) {
  ASSERT_NO_FATAL_FAILURE(follow());
  EXPECT_STREQ(gtk_window_get_title(panel_->window()), "doc.md");
  press("alt+Left");
  ASSERT_TRUE(runUntil([&] { return evaluate(page(), kHeading) == "Tides"; }));
  EXPECT_TRUE(runUntil([&] { return !isBackOffered(); }));
  EXPECT_FALSE(panel_->webViews().canGoBack());
  press("alt+Left");
  runFor(300);
  EXPECT_EQ(evaluate(page(), kHeading), "Tides") << "there is nothing before it";
  EXPECT_TRUE(panel_->isVisible());
}

TEST_P(LinkTest, EscapeClosesThere) {
  ASSERT_NO_FATAL_FAILURE(follow());
  press("Escape");
  EXPECT_TRUE(closes());
}

// The page's own base makes a link within it one to its folder.
INSTANTIATE_TEST_SUITE_P(Targets, LinkTest,
                         testing::Values(Target{"Markdown", "other.md", "# Other *file*"},
                                         Target{"Text", "other.txt", "Other text"},
                                         Target{"Table", "other.csv", "other,cells"},
                                         Target{"Folder", "inner", "inside.txt"},
                                         Target{"Missing", "missing.html",
                                                "missing.html: No such file"},
                                         Target{"Mail", "mailto:a@example.org", "can’t be shown"},
                                         Target{"Unheard", "unheard:of", "can’t be shown"},
                                         Target{"Heading", "#tides", "other.csv"}),
                         [](const auto& row) { return std::string(row.param.label); });

TEST_F(Links, WhatThePanelCannotShowIsNotGoneTo) {
  ASSERT_NO_FATAL_FAILURE(openLinkTo("other.bin"));
  runFor(1000);
  EXPECT_EQ(evaluate(page(), kHeading), "Tides");
  EXPECT_FALSE(isBackOffered());
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(g_get_home_dir()) / "Downloads"));
  press("Escape");
  EXPECT_TRUE(closes());
}

// --- one document after another ---

TEST_F(Links, TheNextDocumentHasNothingToGoBackTo) {
  for (const char* next : {"data.csv", "long.md"}) {
    SCOPED_TRACE(next);
    ASSERT_NO_FATAL_FAILURE(openLinkTo("other.txt"));
    ASSERT_TRUE(runUntil([&] { return isBackOffered(); }));
    ASSERT_NO_FATAL_FAILURE(open(next));
    EXPECT_FALSE(panel_->webViews().canGoBack());
    EXPECT_FALSE(isBackOffered());
    const std::string text = textOfThePage();
    press("alt+Left");
    runFor(500);
    EXPECT_EQ(textOfThePage(), text);
    EXPECT_EQ(evaluate(page(), "history.back(), 1"), "1");
    runFor(500);
    EXPECT_EQ(textOfThePage(), text) << "nor by a script of its own";
    EXPECT_TRUE(panel_->isVisible());
  }
}

}  // namespace
}  // namespace lumisk::test
