// One document after another in the same view: what a document does is over with the document.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>

#include "desktop/curtain.h"
#include "local_server.h"
#include "preview_on_screen.h"
#include "process_tree.h"

namespace lumisk::test {
namespace {

using testing::HasSubstr;

/// What a document may do to be remembered by the next.
struct Trick {
  const char* label;
  const char* script;
};
constexpr Trick kTricks[] = {
    {"plainly",
     "window.leak = 1; window.name = 'leak'; sessionStorage.setItem('leak', 1); "
     "history.pushState({}, '', ''); history.pushState({}, '', ''); "
     "document.body.style.height = '9000px'; window.scrollTo(0, 4000);"},
    {"clearing made to do nothing",
     "Storage.prototype.clear = () => {}; sessionStorage.setItem('leak', 1); window.name = "
     "'leak';"},
    {"when it goes",
     "for (const end of ['pagehide', 'unload', 'visibilitychange']) addEventListener(end, () => {"
     "  sessionStorage.setItem('leak', 1); window.name = 'leak'; });"},
    {"again and again",
     "setInterval(() => { sessionStorage.setItem('leak', 1); window.name = 'leak'; }, 1);"},
};

/// Looks before the page does anything else.
constexpr const char* kLooks =
    "# Looks\n\n</script><script>"
    "window.found = window.name + sessionStorage.length + typeof window.leak;</script>";

class OneDocument : public PreviewTest {
 protected:
  OneDocument() { writeAll(folder_ / "looks.md", kLooks); }

  /// How long the history is in a view that has shown other documents.
  std::string entriesOfTheNext() {
    Preview preview(folder_ / "looks.md");
    EXPECT_TRUE(preview.finishes());
    return evaluate(preview.page(), "history.length");
  }
};

TEST_F(OneDocument, LeavesNothingToTheNext) {
  ASSERT_TRUE(Preview(folder_ / "guide.md").finishes()) << "warms a view up";
  const std::string entriesAfterAPlainOne = entriesOfTheNext();
  for (const Trick& trick : kTricks) {
    for (const unsigned pause : {0U, 100U}) {
      SCOPED_TRACE(trick.label + std::string(" ") + std::to_string(pause));
      WebKitWebView* first = nullptr;
      {
        Preview preview(folder_ / "guide.md");
        ASSERT_TRUE(preview.finishes());
        first = preview.page();
        evaluate(first, std::string(trick.script) + " 1");
        webkit_web_view_set_zoom_level(first, 2);
      }
      runFor(pause);
      Preview preview(folder_ / "looks.md");
      ASSERT_TRUE(preview.finishes());
      EXPECT_EQ(preview.page(), first) << "the warm view is used again";
      EXPECT_EQ(evaluate(first, "window.found"), "0undefined");
      EXPECT_EQ(evaluate(first, "window.scrollY"), "0");
      EXPECT_EQ(webkit_web_view_get_zoom_level(first), 1);
      EXPECT_LE(webkit_back_forward_list_get_length(webkit_web_view_get_back_forward_list(first)),
                2u);
      EXPECT_EQ(evaluate(first, "history.length"), entriesAfterAPlainOne);
      EXPECT_FALSE(preview.canGoBack());
    }
  }
}

/// A view of the engine's with what it tells, in the order of that.
struct ToldOf {
  explicit ToldOf(unsigned longestLag) : live(Program::shared().engine, longestLag) {}
  ToldOf(const ToldOf&) = delete;
  ToldOf& operator=(const ToldOf&) = delete;
  ~ToldOf() {
    if (window != nullptr) gtk_window_destroy(window);
  }

  static constexpr unsigned kForEver = 600'000;  // milliseconds
  desktop::LiveView live;
  GtkWindow* window = nullptr;
  std::vector<std::string> told;
  desktop::Deferred aMomentLater;

  void present() {
    window = GTK_WINDOW(gtk_window_new());
    gtk_window_set_child(window, live.widget());
    gtk_window_present(window);
  }
  void load(const std::string& page) {
    live.onFinished = [this] {
      told.emplace_back("finished");
      aMomentLater.after(50, [this] { told.emplace_back("a moment later"); });
    };
    live.onDrawn = [this] { told.emplace_back("drawn"); };
    live.load("file://" + page);
  }
  bool tells(const char* what) {
    return runUntil([&] { return std::find(told.begin(), told.end(), what) != told.end(); });
  }
};

TEST_F(PreviewTest, TheEndOfALoadIsToldWithThePageInSight) {
  // Its first frame takes a while.
  writeAll(folder_ / "slow.html",
           "<p>text<script>requestAnimationFrame(() => { const end = performance.now() + 100; "
           "while (performance.now() < end); });</script>");
  ToldOf view(ToldOf::kForEver);
  view.present();
  ASSERT_TRUE(runUntil([&] { return desktop::placementOf(view.live.view()).isCurrent; }));
  view.load(folder_ / "slow.html");
  EXPECT_TRUE(view.tells("drawn"));
  EXPECT_TRUE(view.tells("a moment later"));
  EXPECT_THAT(view.told, testing::ElementsAre("finished", "drawn", "a moment later"));
}

TEST_F(PreviewTest, TheEndOfALoadThatNobodySeesIsToldAllTheSame) {
  writeAll(folder_ / "page.html", "<p>text");
  ToldOf view(desktop::LiveView::kLongestLag);
  view.load(folder_ / "page.html");
  EXPECT_TRUE(view.tells("finished"));
  EXPECT_THAT(view.told, testing::ElementsAre("finished"));
}

TEST_F(PreviewTest, TheEndOfALoadIsNotToldOfAProcessThatHasDied) {
  writeAll(folder_ / "page.html", "<p>text");
  constexpr unsigned kLag = 3000;  // milliseconds
  ToldOf view(kLag);
  view.live.onTerminated = [&] { view.told.emplace_back("terminated"); };
  view.load(folder_ / "page.html");
  ASSERT_TRUE(runUntil([&] {
    return view.live.hasOwnPage() && webkit_web_view_is_loading(view.live.view()) == FALSE;
  }));
  webkit_web_view_terminate_web_process(view.live.view());
  EXPECT_TRUE(view.tells("terminated"));
  runFor(kLag + 500);
  EXPECT_THAT(view.told, testing::ElementsAre("terminated"));
}

TEST_F(PreviewTest, TheLastOfTenQuickRequestsWins) {
  std::unique_ptr<Preview> preview;
  for (int i = 0; i < 10; ++i) {
    const std::string name = std::to_string(i) + ".md";
    writeAll(folder_ / name, "# Number " + std::to_string(i));
    preview.reset();
    preview = std::make_unique<Preview>(folder_ / name);
    runFor(20);
  }
  ASSERT_TRUE(preview->finishes());
  EXPECT_EQ(evaluate(preview->page(), "document.querySelector('h1').textContent"), "Number 9");
  runFor(500);
  EXPECT_EQ(preview->finishedLoads(), 1);
}

TEST_F(PreviewTest, AnEarlierDocumentNeverFinishesForTheNext) {
  writeAll(folder_ / "first.md", "# First");
  writeAll(folder_ / "second.md", "# Second");
  ASSERT_TRUE(Preview(folder_ / "first.md").finishes()) << "warms a view up";
  for (unsigned delay = 0; delay < 100; delay += 5) {
    SCOPED_TRACE(delay);
    {
      const Preview first(folder_ / "first.md");
      runFor(delay);
    }
    Preview second(folder_ / "second.md");
    ASSERT_TRUE(second.finishes());
    EXPECT_EQ(evaluate(second.page(), "document.querySelector('h1').textContent"), "Second");
    EXPECT_EQ(second.finishedLoads(), 1);
  }
}

// The page that is there while none is needed may come while the next one is awaited.
TEST_F(PreviewTest, TheEmptyPageBetweenNeverFinishesForTheNext) {
  writeAll(folder_ / "next.md", "# Next");
  ASSERT_TRUE(Preview(folder_ / "guide.md").finishes()) << "warms a view up";
  for (unsigned delay = 0; delay < 30; ++delay) {
    SCOPED_TRACE(delay);
    runFor(delay);
    Preview preview(folder_ / "next.md");
    ASSERT_TRUE(preview.finishes());
    EXPECT_EQ(evaluate(preview.page(), "document.querySelector('h1').textContent"), "Next");
    runFor(50);
    EXPECT_EQ(preview.finishedLoads(), 1);
  }
}

TEST_F(OneDocument, LeavesNoSiteThatItLedTo) {
  LocalServer server([](const std::string&) {
    return httpAnswer("200 OK",
                      "Content-Type: text/html\r\nCache-Control: max-age=3600\r\n"
                      "Set-Cookie: leak=1; Max-Age=3600; Path=/\r\n",
                      "<title>Site</title><p id=\"site\">site</p><a href=\"/again\">again</a>");
  });
  writeAll(folder_ / "leads.md", "[on](" + server.url("/") + ")");
  const auto follow = [&](Preview& preview, const char* until) {
    evaluate(preview.page(), "document.querySelector('a').click(), 1");
    return runUntil([&] { return evaluate(preview.page(), until) == "true"; });
  };
  WebKitWebView* first = nullptr;
  {
    Preview preview(folder_ / "leads.md");
    ASSERT_TRUE(preview.finishes());
    first = preview.page();
    g_object_add_weak_pointer(G_OBJECT(first), reinterpret_cast<gpointer*>(&first));
    ASSERT_TRUE(follow(preview, "document.getElementById('site') !== null"));
    ASSERT_TRUE(follow(preview, "location.pathname === '/again'"));
  }
  EXPECT_EQ(first, nullptr) << "the view is not used again";
  ASSERT_EQ(server.requests().size(), 2U);
  EXPECT_THAT(server.requests()[1], HasSubstr("Cookie: leak=1")) << "within a document it is kept";
  Preview preview(folder_ / "leads.md");
  ASSERT_TRUE(preview.finishes());
  ASSERT_TRUE(follow(preview, "document.getElementById('site') !== null"));
  ASSERT_EQ(server.requests().size(), 3U) << "nor is the answer that was kept";
  EXPECT_THAT(server.requests()[2], Not(HasSubstr("Cookie:")));
}

// --- documents that keep their process busy ---

/// Closes the holder of the source, so that the script is one of the page.
constexpr const char* kHangs = "# Hangs\n\n</script><script>while (true);</script>";

bool contains(const std::set<std::string>& processes, const std::set<std::string>& others) {
  return std::any_of(others.begin(), others.end(),
                     [&](const std::string& other) { return processes.contains(other); });
}

class HungDocument : public PreviewTest {
 protected:
  HungDocument() {
    writeAll(folder_ / "hangs.md", kHangs);
    writeAll(folder_ / "next.md", "# Next");
    EXPECT_TRUE(Preview(folder_ / "guide.md").finishes()) << "warms a view up";
  }

  /// The process that computes all the time, once the document has come to its loop.
  std::set<std::string> hang() {
    runFor(1000);
    std::map<std::string, long> ticks;
    for (const std::string& process : webProcesses()) ticks[process] = computedTicks(process);
    runFor(500);
    constexpr long kMoreThanIdle = 5;
    std::set<std::string> hung;
    for (const auto& [process, before] : ticks)
      if (computedTicks(process) > before + kMoreThanIdle) hung.insert(process);
    EXPECT_EQ(hung.size(), 1U);
    return hung;
  }
  void expectNextToCome() {
    Preview next(folder_ / "next.md");
    ASSERT_TRUE(next.finishes());
    EXPECT_EQ(evaluate(next.page(), "document.querySelector('h1').textContent"), "Next");
    EXPECT_EQ(next.finishedLoads(), 1);
    EXPECT_EQ(next.terminations(), 0) << "the person is not told of it";
  }
};

TEST_F(HungDocument, DoesNotHoldUpTheNextAtOnce) {
  std::set<std::string> hung;
  {
    Preview preview(folder_ / "hangs.md");
    hung = hang();
    EXPECT_EQ(preview.finishedLoads(), 0);
  }
  expectNextToCome();
  EXPECT_TRUE(runUntil([&] { return !contains(webProcesses(), hung); }));
}

TEST_F(HungDocument, DoesNotHoldUpTheNextAfterAWhile) {
  std::set<std::string> hung;
  {
    Preview preview(folder_ / "hangs.md");
    hung = hang();
    EXPECT_EQ(preview.finishedLoads(), 0);
  }
  EXPECT_TRUE(runUntil([&] { return !contains(webProcesses(), hung); })) << "nobody waits for it";
  expectNextToCome();
}

TEST_F(HungDocument, ReachedByALinkEndsWithItsPreview) {
  writeAll(folder_ / "hangs.html", "<h1>Led here</h1><script>while (true);</script>");
  writeAll(folder_ / "leads.md", "[on](" + (folder_ / "hangs.html").string() + ")");
  std::set<std::string> hung;
  {
    Preview preview(folder_ / "leads.md");
    ASSERT_TRUE(preview.finishes());
    evaluate(preview.page(), "setTimeout(() => document.querySelector('a').click()), 1");
    hung = hang();
  }
  expectNextToCome();
  EXPECT_TRUE(runUntil([&] { return !contains(webProcesses(), hung); }));
}

// Between one document and the next the view's process stays, whatever the pace.
TEST_F(HungDocument, IsTheOnlyOneThatCostsAProcess) {
  const std::set<std::string> before = webProcesses();
  for (const unsigned pause : {0U, 10U, 100U, 700U, 0U}) {
    SCOPED_TRACE(pause);
    runFor(pause);
    Preview preview(folder_ / "next.md");
    EXPECT_TRUE(preview.finishes());
    EXPECT_EQ(webProcesses(), before);
  }
}

}  // namespace
}  // namespace lumisk::test
