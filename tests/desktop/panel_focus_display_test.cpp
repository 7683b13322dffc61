// Who has the keys: the document, something in its page, the picker of its modes.

#include "panel_test.h"

namespace lumisk::test {
namespace {

using desktop::SelectionStep;

class PanelFocusTest : public PanelTest {
 protected:
  PanelFocusTest() {
    writeAll(folder_ / "doc.md", "# Title\n\n[next](file://" + (folder_ / "form.html").string() +
                                     ")\n\n- [ ] one\n- [ ] two\n\n<input type=\"checkbox\" "
                                     "id=\"tick\">\n\n<button onclick=\"document"
                                     ".title = 'pressed'\">press</button>\n\n[up](#title)\n");
    writeAll(folder_ / "form.html",
             "<p>form</p><p><input id=\"field\"></p><textarea id=\"area\"></textarea>");
    panel_->onSelectionStep = [this](SelectionStep step) { steps_.push_back(step); };
  }

  /// Presses Tab until the page's element that `selector` finds has the focus.
  bool tabTo(const std::string& selector) {
    for (int i = 0; i < 12; ++i) {
      press("Tab");
      runFor(100);
      if (evaluate(page(), "document.activeElement.matches('" + selector + "')") == "true")
        return GTK_WIDGET(page()) == focus();
    }
    return false;
  }
  bool becomes(const std::string& script) {
    return runUntil([&] { return evaluate(page(), script) == "true"; });
  }
  void followLink() {
    evaluate(page(), "document.querySelector('a').click(), 1");
    ASSERT_TRUE(runUntil([&] { return panel_->webViews().canGoBack() && finishedLoads_ == 2; }));
  }
  void clickInPage(const std::string& selector) {
    const std::string box = "document.querySelector('" + selector + "').getBoundingClientRect()";
    click(GTK_WIDGET(page()), std::stod(evaluate(page(), box + ".left + 5")),
          std::stod(evaluate(page(), box + ".top + 5")));
  }
  GtkWidget* findBelow(GtkWidget* root, const std::function<bool(GtkWidget*)>& isWanted) {
    if (isWanted(root)) return root;
    GtkWidget* found = nullptr;
    for (GtkWidget* child = gtk_widget_get_first_child(root); child != nullptr && found == nullptr;
         child = gtk_widget_get_next_sibling(child))
      found = findBelow(child, isWanted);
    return found;
  }
  /// The picker's button for this mode.
  GtkWidget* segment(const std::string& mode) {
    return findBelow(panel_->content(), [&](GtkWidget* widget) {
      return GTK_IS_TOGGLE_BUTTON(widget) &&
             std::string(gtk_widget_get_name(widget)).ends_with(mode);
    });
  }
  bool isChosen(const char* mode) {
    return gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(segment(mode))) == TRUE;
  }

  std::vector<SelectionStep> steps_;
};

// --- in the page ---

TEST_F(PanelFocusTest, KeysGoToWhatTabCameTo) {
  struct Row {
    const char* selector;
    const char* key;
    const char* becomesTrue;  ///< in the page; null where the panel closes
  };
  const Row rows[] = {
      {"a", "Return", "document.querySelector('#field') !== null"},
      {"a", "space", nullptr},
      {"#tick", "space", "document.querySelector('#tick').checked"},
      {"button", "space", "document.title == 'pressed'"},
      {"button", "Return", "document.title == 'pressed'"},
      {"#tick", "space", "document.querySelector('#tick').checked"},
      {"a", "space", nullptr},
      {"button", "space", "document.title == 'pressed'"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.key) + " on " + row.selector);
    open("doc.md");
    ASSERT_TRUE(tabTo(row.selector));
    press(row.key);
    if (row.becomesTrue != nullptr) {
      EXPECT_TRUE(becomes(row.becomesTrue));
      EXPECT_TRUE(panel_->isVisible());
      EXPECT_EQ(panel_->webViews().canGoBack(), row.selector == std::string("a"));
      press("Escape");
    }
    EXPECT_TRUE(closes());
    closings_ = 0;
  }
}

TEST_F(PanelFocusTest, ATickIsOnThePageOnly) {
  open("doc.md");
  const std::string text = readAll(folder_ / "doc.md");
  ASSERT_TRUE(tabTo("#tick"));
  press("space");
  ASSERT_TRUE(becomes("document.querySelector('#tick').checked"));
  finishedLoads_ = 0;
  press("F5");
  ASSERT_TRUE(runUntil([&] { return finishedLoads_ == 1; }));
  EXPECT_TRUE(becomes("document.querySelector('#tick').checked === false"));
  EXPECT_EQ(readAll(folder_ / "doc.md"), text);
}

TEST_F(PanelFocusTest, ArrowsStayWithTheSelectionOverALink) {
  open("doc.md");
  ASSERT_TRUE(tabTo("a"));
  press("Down");
  EXPECT_TRUE(runUntil([&] { return steps_.size() == 1; }));
}

TEST_F(PanelFocusTest, SpaceClosesAfterAClick) {
  for (const char* selector : {"#tick", "button", "a[href=\"#title\"]"}) {
    SCOPED_TRACE(selector);
    open("doc.md");
    clickInPage(selector);
    press("space");
    EXPECT_TRUE(closes());
    closings_ = 0;
  }
}

TEST_F(PanelFocusTest, TheNextDocumentHasNothingInFocus) {
  open("doc.md");
  ASSERT_TRUE(tabTo("button"));
  open("long.md");
  press("space");
  EXPECT_TRUE(closes());
}

TEST_F(PanelFocusTest, APageCannotKeepTheKeys) {
  const char* const attempts[] = {
      "document.body.insertAdjacentHTML('beforeend', '<input id=i>'), "
      "document.getElementById('i').focus(), 1",
      "dispatchEvent(new KeyboardEvent('keydown', {key: 'Tab'})), "
      "document.querySelector('button').focus(), 1",
      "document.body.insertAdjacentHTML('beforeend', '<img name=activeElement>'), 1",
      "history.pushState({}, '', location.href + '#here'), 1"};
  for (const char* attempt : attempts) {
    SCOPED_TRACE(attempt);
    open("doc.md");
    EXPECT_EQ(evaluate(page(), attempt), "1");
    runFor(100);
    press("space");
    EXPECT_TRUE(closes());
    closings_ = 0;
  }
}

TEST_F(PanelFocusTest, APageCannotSpeakForTheHost) {
  open("doc.md");
  EXPECT_EQ(evaluate(page(),
                     "Object.keys(window.webkit.messageHandlers).includes('lumisk-focus') "
                     "|| 'lumisk-focus' in window.webkit.messageHandlers"),
            "false");
}

TEST_F(PanelFocusTest, AfterALinkSpaceAndEscapeClose) {
  for (const char* key : {"space", "Escape"}) {
    SCOPED_TRACE(key);
    open("doc.md");
    followLink();
    press(key);
    EXPECT_TRUE(closes());
    closings_ = 0;
  }
}

TEST_F(PanelFocusTest, AFieldTakesWhatIsTyped) {
  for (const char* selector : {"#field", "#area"}) {
    SCOPED_TRACE(selector);
    open("doc.md");
    followLink();
    clickInPage(selector);
    press("a space b Left Return");
    EXPECT_TRUE(becomes("document.activeElement.value.startsWith('a ')"));
    EXPECT_TRUE(panel_->isVisible());
    EXPECT_TRUE(steps_.empty());
    press("Escape");
    EXPECT_TRUE(closes());
    closings_ = 0;
  }
}

// --- between page, text and picker ---

TEST_F(PanelFocusTest, EscapeFromTheFindBarLeadsToTheDocument) {
  open("doc.md");
  for (const char* mode : {"rendered", "source"}) {
    SCOPED_TRACE(mode);
    panel_->presentation()->selectMode(mode);
    press("ctrl+f");
    ASSERT_TRUE(runUntil([&] { return panel_->findBar().hasFocus(); }));
    press("Escape");
    EXPECT_TRUE(runUntil([&] { return hasDocumentFocus(); }));
    press("Right");
    EXPECT_TRUE(runUntil([&] { return !steps_.empty(); })) << "not a move in the picker";
    steps_.clear();
  }
}

TEST_F(PanelFocusTest, AClickOnAnotherModeLeadsToTheDocument) {
  open("doc.md");
  for (const char* mode : {"source", "rendered"}) {
    SCOPED_TRACE(mode);
    click(segment(mode), 10, 10);
    ASSERT_TRUE(isChosen(mode));
    EXPECT_TRUE(runUntil([&] { return hasDocumentFocus(); }));
  }
  click(segment("source"), 10, 10);
  press("ctrl+a");
  GtkTextBuffer* const buffer =
      gtk_text_view_get_buffer(desktop::findShownDocument(panel_->content()).text);
  EXPECT_TRUE(runUntil([&] { return gtk_text_buffer_get_has_selection(buffer) == TRUE; }));
}

TEST_F(PanelFocusTest, ThePickersArrowsFollowTheDirectionOfTheText) {
  gtk_widget_set_default_direction(GTK_TEXT_DIR_RTL);
  open("doc.md");
  EXPECT_TRUE(runUntil(
      [&] { return onScreen(segment("rendered"), 0, 0).x > onScreen(segment("source"), 0, 0).x; }));
  gtk_widget_grab_focus(segment("rendered"));
  press("Left");
  EXPECT_TRUE(runUntil([&] { return focus() == segment("source"); }));
  EXPECT_NE(desktop::findShownDocument(panel_->content()).text, nullptr);
  press("Right");
  EXPECT_TRUE(runUntil([&] { return focus() == segment("rendered"); }));
  press("Down");
  EXPECT_TRUE(runUntil([&] { return focus() == segment("source"); }));
  panel_->close();
  gtk_widget_set_default_direction(GTK_TEXT_DIR_LTR);
}

TEST_F(PanelFocusTest, BackIsOfferedBesideThePageOnly) {
  open("doc.md");
  followLink();
  GtkWidget* const back = findBelow(GTK_WIDGET(panel_->window()), [](GtkWidget* widget) {
    return GTK_IS_BUTTON(widget) &&
           g_strcmp0(gtk_button_get_icon_name(GTK_BUTTON(widget)), "go-previous-symbolic") == 0;
  });
  ASSERT_NE(back, nullptr);
  EXPECT_EQ(gtk_widget_get_visible(back), TRUE);
  panel_->presentation()->selectMode("source");
  EXPECT_EQ(gtk_widget_get_visible(back), FALSE);
  panel_->presentation()->selectMode("rendered");
  EXPECT_EQ(gtk_widget_get_visible(back), TRUE);
  click(back, 10, 10);
  EXPECT_TRUE(runUntil([&] { return !panel_->webViews().canGoBack(); }));
}

}  // namespace
}  // namespace lumisk::test
