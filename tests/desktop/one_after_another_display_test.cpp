// One document after another in the same panel: nothing of the one before reaches the next, and of
// many in a row the last one stays.

#include <filesystem>
#include <iterator>

#include "panel_on_screen.h"
#include "panel_test.h"
#include "process_tree.h"

namespace lumisk::test {
namespace {

class OneAfterAnother : public PanelTest {
 protected:
  OneAfterAnother() {
    writeAll(folder_ / "first.md", "# First\n\nOf tides and more tides.\n");
    writeAll(folder_ / "second.md", "# Second\n\nOf other tides.\n");
    writeAll(folder_ / "third.csv", "Name,Year\ntides,1815\n");
  }
  /// What is selected in the document, whichever layer shows it.
  std::string selected() {
    const desktop::ShownDocument shown = desktop::findShownDocument(panel_->content());
    if (shown.text == nullptr) return evaluate(page(), "getSelection().toString()");
    GtkTextIter start;
    GtkTextIter end;
    gtk_text_buffer_get_selection_bounds(gtk_text_view_get_buffer(shown.text), &start, &end);
    char* const text = gtk_text_iter_get_text(&start, &end);
    std::string result = text;
    g_free(text);
    return result;
  }
  std::string typed() { return gtk_editable_get_text(GTK_EDITABLE(focus())); }
  std::string count() { return panel_->findBar().countText(); }
};

// --- finding ---

TEST_F(OneAfterAnother, AFindIsOverWithItsDocument) {
  for (const char* mode : {"rendered", "source"}) {
    for (const char* next : {"second.md", "third.csv"}) {
      for (const bool closes : {false, true}) {
        SCOPED_TRACE(std::string(mode) + ", then " + next + (closes ? ", closed between" : ""));
        open("first.md");
        ASSERT_TRUE(panel_->presentation()->selectMode(mode));
        press("ctrl+f");
        ASSERT_TRUE(runUntil([&] { return panel_->findBar().hasFocus(); }));
        press("t i d e s");
        ASSERT_TRUE(runUntil([&] { return count() == "2 matches" && selected() == "tides"; }));
        if (closes) panel_->close();
        open(next);
        runFor(300);
        EXPECT_FALSE(panel_->findBar().isOpen());
        EXPECT_EQ(count(), "");
        EXPECT_EQ(selected(), "");
        press("ctrl+f");
        ASSERT_TRUE(runUntil([&] { return panel_->findBar().hasFocus(); }));
        runFor(300);
        EXPECT_EQ(typed(), "");
        EXPECT_EQ(count(), "");
        EXPECT_EQ(selected(), "");
        press("F3");
        runFor(300);
        EXPECT_EQ(selected(), "") << "there is nothing to find the next one of";
        press("Escape");
        EXPECT_TRUE(runUntil([&] { return !panel_->findBar().isOpen(); }));
      }
    }
  }
}

// --- many in a row ---

/// What is there of all that a preview takes.
struct Held {
  std::size_t processes = 0;
  std::size_t webProcesses = 0;
  std::size_t descriptors = 0;
  guint windows = 0;
  bool operator==(const Held&) const = default;
};
Held held() {
  const std::filesystem::directory_iterator descriptors("/proc/self/fd");
  return {processTree().size(), webProcesses().size(),
          static_cast<std::size_t>(std::distance(begin(descriptors), end(descriptors))),
          g_list_model_get_n_items(gtk_window_get_toplevels())};
}

/// What is held once it changes no more: processes that were told to end take their time.
Held settled() {
  constexpr int kLooksAlike = 10;
  Held last = held();
  int alike = 0;
  runUntil([&] {
    runFor(100);
    const Held now = held();
    alike = now == last ? alike + 1 : 0;
    last = now;
    return alike == kLooksAlike;
  });
  return last;
}

TEST_F(OneAfterAnother, OfTenInASecondTheLastStaysAndNothingElse) {
  ItemsToShow items;
  writeAll(items / "large.md", "# Large\n\n<!--" + std::string(3'000'000, 'x') + "-->\n");
  const char* const names[] = {"guide.md", "large.md", "table.csv",   "folder", "data.json",
                               "missing",  "main.cpp", "picture.png", "empty",  "guide.md"};
  const auto showAll = [&] {
    for (const char* name : names) {
      panel_->show(FileURL::fromPath((items / name).string()));
      runFor(90);
    }
    ASSERT_TRUE(runUntil([&] {
      return evaluate(page(), "document.readyState + document.querySelector('h1')?.textContent") ==
             "completeGuide";
    }));
  };
  // What is made once and kept is made by now.
  ASSERT_NO_FATAL_FAILURE(showAll());
  panel_->close();
  const Held before = settled();
  constexpr std::size_t kRounds = 3;
  for (std::size_t i = 0; i < kRounds; ++i) {
    ASSERT_NO_FATAL_FAILURE(showAll());
    const Held whileOpen = settled();
    EXPECT_STREQ(gtk_window_get_title(panel_->window()), "guide.md");
    EXPECT_EQ(evaluate(page(), "document.querySelector('h1').textContent"), "Guide") << "it stays";
    EXPECT_FALSE(panel_->webViews().canGoBack());
    EXPECT_EQ(desktop_.windows().size(), 1U);
    EXPECT_LE(whileOpen.webProcesses, 2U) << "its own, and one for the next at most";
  }
  panel_->close();
  const Held after = settled();
  EXPECT_TRUE(desktop_.windows().empty());
  EXPECT_EQ(after.windows, before.windows);
  EXPECT_EQ(after.webProcesses, before.webProcesses);
  EXPECT_EQ(after.processes, before.processes);
  // One or two are opened by chance; a leak opens one at each request.
  EXPECT_LE(after.descriptors, before.descriptors + 2 * kRounds);
}

// --- closed in the middle ---

/// Calls a function once, soon after the engine has taken up a page and before the page is drawn.
struct AtCommit {
  std::function<void()> call;
  desktop::Deferred soon;
  static void loadChanged(WebKitWebView*, WebKitLoadEvent event, gpointer data) {
    auto* self = static_cast<AtCommit*>(data);
    if (event == WEBKIT_LOAD_COMMITTED) self->soon.after(0, self->call);
  }
};

TEST_F(OneAfterAnother, ClosedBeforeItIsDrawnALargeDocumentIsLetGo) {
  writeAll(folder_ / "large.md", "# Large\n\n" + std::string(3'000'000, 'x') + "\n");
  for (int i = 0; i < 3; ++i) {
    AtCommit atCommit{[&] { panel_->close(); }, {}};
    panel_->show(FileURL::fromPath((folder_ / "large.md").string()));
    ASSERT_TRUE(runUntil([&] { return !panel_->isMakingReady(); }));
    ASSERT_NE(page(), nullptr);
    const auto view = desktop::GRef<WebKitWebView>::retain(page());
    const desktop::SignalHandler loading(view.get(), "load-changed",
                                         G_CALLBACK(AtCommit::loadChanged), &atCommit);
    EXPECT_TRUE(closes());
    closings_ = 0;
  }
  ASSERT_NO_FATAL_FAILURE(open("first.md"));
  EXPECT_EQ(evaluate(page(), "document.querySelector('h1').textContent"), "First");
}

}  // namespace
}  // namespace lumisk::test
