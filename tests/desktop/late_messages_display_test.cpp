// What a page posts after its document has gone is nobody's any more.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "markdown_document.h"
#include "screen.h"

namespace lumisk::test {
namespace {

/// The place that the earlier document gives to all its messages.
constexpr std::int64_t kEarlier = 1;
constexpr std::int64_t kOwn = 2;

std::string post(std::int64_t index) {
  return "window.webkit.messageHandlers.lumisk.postMessage({type: 'checkbox', index: " +
         std::to_string(index) + ", checked: true});";
}

std::string pageWith(const std::string& script) {
  return "<!DOCTYPE html><body><p>text</p><script>" + script + "</script></body>";
}

/// When a page still posts though the next document has been opened.
struct Row {
  const char* label;
  std::string script;
};

TEST(LateMessages, OfAnEarlierDocumentReachNoLaterOne) {
  const std::string post1 = post(kEarlier);
  const Row rows[] = {
      {"again and again", "setInterval(() => { " + post1 + " }, 0);"},
      {"when it goes",
       "for (const end of ['pagehide', 'unload', 'visibilitychange', 'beforeunload'])"
       "  addEventListener(end, () => { " +
           post1 + " });"},
      {"from a loop that takes a while",
       "setTimeout(() => { const end = Date.now() + 300; while (Date.now() < end) " + post1 +
           " }, 50);"},
  };
  for (const Row& row : rows) {
    for (const unsigned pause : {0U, 1U, 60U, 100U}) {
      SCOPED_TRACE(row.label + std::string(" ") + std::to_string(pause));
      {
        PageOnScreen earlier(pageWith(row.script));
        runFor(pause);
      }
      PageOnScreen page(pageWith(post(kOwn)));
      // Messages come in order: what the earlier one had to say has come before.
      page(post(kOwn) + "1");
      EXPECT_TRUE(runUntil([&] { return page.toggles().size() >= 2; }));
      const std::vector<PageOnScreen::Toggle> own = {{kOwn, true}, {kOwn, true}};
      EXPECT_EQ(page.toggles(), own);
    }
  }
}

}  // namespace
}  // namespace lumisk::test
