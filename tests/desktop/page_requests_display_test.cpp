// What a page asks for and does not get: questions, printing, passwords, sounds, windows,
// downloads, permissions. Nothing of it may hold up the load or come on screen.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "desktop/curtain.h"
#include "local_server.h"
#include "screen.h"
#include "support/files.h"

namespace lumisk::test {
namespace {

guint windowCount() { return g_list_model_get_n_items(gtk_window_get_toplevels()); }

std::string pageWith(const std::string& script) {
  return "<!DOCTYPE html><body><p id=\"p\">text</p><script>" + script + "</script></body>";
}

TEST(PageRequests, QuestionsAreAnsweredByNobody) {
  const struct {
    const char* label;
    const char* question;
    const char* answer;
  } rows[] = {
      {"alert", "alert('x')", "undefined"},
      {"confirm", "confirm('x')", "true"},
      {"prompt", "prompt('x', 'y')", "null"},
  };
  for (const auto& row : rows) {
    PageOnScreen page(pageWith("window.answer = " + std::string(row.question)));
    EXPECT_EQ(page("String(window.answer)"), row.answer) << row.label;
    EXPECT_EQ(windowCount(), 1U) << row.label;
  }
}

TEST(PageRequests, APageIsLeftWithoutAQuestion) {
  PageOnScreen page(
      pageWith("addEventListener('beforeunload', (event) => { event.preventDefault();"
               " event.returnValue = 'stay'; });"));
  // As after a click, without which the engine asks no question.
  page("document.body.click()");
  page("setTimeout(() => { location = 'about:blank'; }), 1");
  EXPECT_TRUE(page.becomes("location.href === 'about:blank'"));
}

TEST(PageRequests, ScriptsDoNotPrint) {
  PageOnScreen page(pageWith("print()"));
  runFor(500);
  EXPECT_EQ(windowCount(), 1U);
  EXPECT_EQ(page("document.getElementById('p').textContent"), "text");
}

TEST(PageRequests, NobodyIsAskedForAPassword) {
  LocalServer server([](const std::string&) {
    return httpAnswer("401 Unauthorized", "WWW-Authenticate: Basic realm=\"x\"\r\n", "no");
  });
  PageOnScreen page("<!DOCTYPE html><body><a href=\"" + server.url("/") + "\">on</a></body>");
  page("document.querySelector('a').click()");
  EXPECT_TRUE(page.becomes("document.body.textContent === 'no'")) << "the server's own refusal";
  EXPECT_EQ(server.requests().size(), 1U);
  EXPECT_EQ(windowCount(), 1U);
}

TEST(PageRequests, NothingPlaysByItself) {
  PageOnScreen page(
      pageWith("const video = document.createElement('video'); video.muted = true;"
               "video.src = 'data:video/webm;base64,GkXfow=='; video.play().then(() => { "
               "window.played = 'yes'; }, (error) => { window.played = error.name; })"));
  EXPECT_TRUE(page.becomes("window.played !== undefined"));
  EXPECT_EQ(page("window.played"), "NotAllowedError");
}

/// A page may do on a person's click what it may not do by itself, and each script that the host
/// runs in it is one to the engine. So the page itself tells here, by its title.
TEST(PageRequests, NobodyHasClickedInAPageThatIsJustShown) {
  PageOnScreen page(
      pageWith("let looks = 0; setInterval(() => { document.title = "
               "`${++looks} ${navigator.userActivation.hasBeenActive}`; }, 10)"));
  const auto title = [&] {
    const char* const text = webkit_web_view_get_title(page.view());
    return std::string(text == nullptr ? "" : text);
  };
  const auto looks = [&] { return std::atoi(title().c_str()); };
  ASSERT_TRUE(runUntil([&] { return !desktop::isCurtainClosed(page.view()); }));
  const int before = looks();
  ASSERT_TRUE(runUntil([&] { return looks() > before + 5; }));
  EXPECT_THAT(title(), testing::EndsWith("false"));
  page("1");
  EXPECT_TRUE(runUntil([&] { return title().ends_with("true"); })) << "now a script has";
}

TEST(PageRequests, PermissionsAreDenied) {
  const struct {
    const char* label;
    const char* question;
    const char* answer;
  } rows[] = {
      {"the place",
       "navigator.geolocation.getCurrentPosition(() => { window.answer = 'given'; },"
       " (error) => { window.answer = 'error ' + error.code; })",
       "error 1"},
      {"notifications",
       "Notification.requestPermission().then("
       "(permission) => { window.answer = permission; })",
       "denied"},
      {"the camera",
       "navigator.mediaDevices.getUserMedia({video: true}).then(() => { window.answer = 'given'; },"
       " (error) => { window.answer = error.name; })",
       "NotAllowedError"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.label);
    PageOnScreen page("<!DOCTYPE html><p>text</p>");
    WebKitSettings* const settings = webkit_web_view_get_settings(page.view());
    // Where there is no camera there is nothing to be denied.
    webkit_settings_set_enable_mock_capture_devices(settings, TRUE);
    page(std::string(row.question) + ", 1");
    EXPECT_TRUE(page.becomes("window.answer !== undefined"));
    EXPECT_EQ(page("window.answer"), row.answer);
    EXPECT_EQ(windowCount(), 1U);
    webkit_settings_set_enable_mock_capture_devices(settings, FALSE);
  }
}

TEST(PageRequests, NobodyIsAskedForAFileOrAColour) {
  for (const char* const type : {"file", "color"}) {
    PageOnScreen page("<!DOCTYPE html><body><input type=\"" + std::string(type) + "\"></body>");
    page("document.querySelector('input').click()");  // as by a person's hand
    runFor(700);
    EXPECT_EQ(windowCount(), 1U) << type;
    EXPECT_EQ(page("document.querySelector('input').files === null || "
                   "document.querySelector('input').files.length === 0"),
              "true")
        << type;
  }
}

TEST(PageRequests, ThePageDoesNotFillTheScreen) {
  PageOnScreen page(pageWith("0"));
  page(
      "(document.body.requestFullscreen || document.body.webkitRequestFullscreen || "
      "(() => {})).call(document.body), 1");
  runFor(700);
  EXPECT_EQ(page("String(document.fullscreenElement || document.webkitFullscreenElement || null)"),
            "null");
  auto* const window = GTK_WINDOW(gtk_widget_get_root(GTK_WIDGET(page.view())));
  EXPECT_FALSE(gtk_window_is_fullscreen(window));
}

TEST(PageRequests, ALinkThatAsksForAWindowOpensInside) {
  const TemporaryFolder folder;
  writeAll(folder / "next.html", "<p id=\"next\">next</p>");
  PageOnScreen page("<!DOCTYPE html><body><a target=\"_blank\" href=\"file://" +
                    (folder / "next.html").string() + "\">on</a></body>");
  page("document.querySelector('a').click()");
  EXPECT_TRUE(page.becomes("document.getElementById('next') !== null"));
  EXPECT_EQ(windowCount(), 1U);
}

TEST(PageRequests, WindowsAreNotOpened) {
  PageOnScreen page(pageWith("window.byItself = String(window.open('about:blank'))"));
  EXPECT_EQ(page("window.byItself"), "null");
  for (const char* address : {"about:blank", "file:///"})
    EXPECT_EQ(page("String(window.open('" + std::string(address) + "'))"), "null") << address;
  runFor(300);
  EXPECT_EQ(windowCount(), 1U);
  EXPECT_EQ(page("document.getElementById('p').textContent"), "text");
}

TEST(PageRequests, FilesAreNotSaved) {
  LocalServer server([](const std::string&) {
    return httpAnswer("200 OK",
                      "Content-Type: application/octet-stream\r\n"
                      "Content-Disposition: attachment; filename=\"saved.bin\"\r\n",
                      "bytes");
  });
  const std::string url = server.url("/saved.bin");
  PageOnScreen page("<!DOCTYPE html><body><p id=\"p\">text</p><a id=\"link\" href=\"" + url +
                    "\">a</a><a id=\"saving\" download=\"saved.bin\" "
                    "href=\"data:application/octet-stream,bytes\">b</a></body>");
  for (const char* const id : {"link", "saving"}) {
    const std::size_t before = server.requests().size();
    page(std::string("document.getElementById('") + id + "').click()");
    const bool isAsked = id == std::string("link");
    EXPECT_TRUE(runUntil([&] { return !isAsked || server.requests().size() > before; }));
    runFor(500);
    EXPECT_EQ(page("document.getElementById('p').textContent"), "text") << id;
  }
  for (const auto& entry : std::filesystem::recursive_directory_iterator(g_get_home_dir()))
    EXPECT_NE(entry.path().filename(), "saved.bin") << entry.path();
}

}  // namespace
}  // namespace lumisk::test
