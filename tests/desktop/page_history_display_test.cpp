// Where a page can go by itself, and what it finds there: its own past and no other document's.

#include <gtest/gtest.h>

#include "local_server.h"
#include "preview_on_screen.h"

namespace lumisk::test {
namespace {

class PageHistory : public PreviewTest {
 protected:
  PageHistory() { writeAll(folder_ / "second.md", "# Second\n\n[part](#second)\n"); }

  bool becomes(Preview& preview, const std::string& script) {
    return runUntil([&] { return evaluate(preview.page(), script) == "true"; });
  }
};

TEST_F(PageHistory, BeginsWithTheDocument) {
  ASSERT_TRUE(Preview(folder_ / "guide.md").finishes()) << "its page is in the view's history";
  Preview second(folder_ / "second.md");
  ASSERT_TRUE(second.finishes());
  evaluate(second.page(), "window.mark = 1");
  for (const char* const way : {"history.back()", "history.go(-1)"}) {
    evaluate(second.page(), std::string(way) + ", 1");
    runFor(400);
    EXPECT_EQ(evaluate(second.page(), "String(window.mark)"), "1") << way;
    EXPECT_EQ(evaluate(second.page(), "document.querySelector('h1').textContent"), "Second") << way;
  }
  EXPECT_EQ(second.finishedLoads(), 1);
}

TEST_F(PageHistory, HoldsThePartsOfThePage) {
  ASSERT_TRUE(Preview(folder_ / "guide.md").finishes());
  Preview second(folder_ / "second.md");
  ASSERT_TRUE(second.finishes());
  evaluate(second.page(), "window.mark = 1, location.hash = 'second', 1");
  EXPECT_TRUE(becomes(second, "location.hash === '#second'"));
  evaluate(second.page(), "history.back(), 1");
  EXPECT_TRUE(becomes(second, "location.hash === ''"));
  EXPECT_EQ(evaluate(second.page(), "String(window.mark)"), "1") << "it is the same page";
}

/// Its pages hand something on to each other.
std::string site(const std::string& request) {
  const bool isFirst = request.starts_with("GET /first ");
  return httpAnswer("200 OK", "Content-Type: text/html\r\n",
                    isFirst ? "<a href=\"/second\">on</a><script>"
                              "sessionStorage.setItem('from', 'first'); window.name = 'name';"
                              "</script>"
                            : "<p id=\"second\"></p>");
}

TEST_F(PageHistory, SitesKeepWhatTheirPagesHandOn) {
  LocalServer server(site);
  writeAll(folder_ / "leads.md", "[on](" + server.url("/first") + ")");
  Preview preview(folder_ / "leads.md");
  ASSERT_TRUE(preview.finishes());
  for (const char* const path : {"/first", "/second"}) {
    evaluate(preview.page(), "document.querySelector('a').click(), 1");
    ASSERT_TRUE(becomes(preview, "location.pathname === '" + std::string(path) + "'"));
  }
  EXPECT_EQ(evaluate(preview.page(), "sessionStorage.getItem('from') + window.name"), "firstname");
}

TEST_F(PageHistory, AViewThatWasLedAwayIsFollowedByAWarmOne) {
  LocalServer server(site);
  writeAll(folder_ / "leads.md", "[on](" + server.url("/first") + ")");
  {
    Preview preview(folder_ / "leads.md");
    ASSERT_TRUE(preview.finishes());
    evaluate(preview.page(), "document.querySelector('a').click(), 1");
    ASSERT_TRUE(becomes(preview, "location.pathname === '/first'"));
    EXPECT_FALSE(Program::shared().liveViews.hasWarmView()) << "it is in use";
  }
  EXPECT_TRUE(runUntil([] { return Program::shared().liveViews.hasWarmView(); }));
}

}  // namespace
}  // namespace lumisk::test
