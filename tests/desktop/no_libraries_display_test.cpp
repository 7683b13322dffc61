// Previews of a program that finds neither its web-process extension nor its client libraries.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "desktop/panel.h"
#include "local_server.h"
#include "markdown_document.h"
#include "panel_on_screen.h"
#include "preview_on_screen.h"

namespace lumisk::test {
namespace {

using testing::Each;
using testing::HasSubstr;

/// A way into the network that leads nowhere and keeps what was asked of it.
class DeadEnd {
 public:
  /// For all later pages of the program.
  explicit DeadEnd(Program& program) {
    const PageOnScreen page("<!DOCTYPE html><body>before</body>", program);
    WebKitNetworkProxySettings* const settings =
        webkit_network_proxy_settings_new(server_.url("/").c_str(), nullptr);
    webkit_network_session_set_proxy_settings(webkit_web_view_get_network_session(page.view()),
                                              WEBKIT_NETWORK_PROXY_MODE_CUSTOM, settings);
    webkit_network_proxy_settings_free(settings);
  }
  const std::vector<std::string>& requests() const { return server_.requests(); }

 private:
  LocalServer server_{
      [](const std::string&) { return httpAnswer("503 Service Unavailable", "", "no"); }};
};

class NoLibraries : public PreviewTest {
 protected:
  Program program_{{"/nonexistent", "/nonexistent", LUMISK_CATALOGUES}};
};

TEST_F(NoLibraries, EveryPreviewIsOverAndReadable) {
  desktop::Panel panel(program_.platform.platform(), program_.liveViews);
  int finished = 0;
  panel.onPageFinished = [&] { ++finished; };
  const struct {
    const char* item;
    const char* text;  ///< on the page, without any library's help
  } rows[] = {
      {"data.json", "\"a\" : null"}, {"log.jsonl", "{\"a\":1}"}, {"main.cpp", "return 0;"},
      {"people.csv", "Ada"},         {"guide.md", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.item);
    finished = 0;
    panel.show(FileURL::fromPath((folder_ / row.item).string()));
    ASSERT_TRUE(runUntil([&] { return finished > 0; }));
    EXPECT_THAT(evaluate(panel.webViews().latestView(), "document.body.innerText"),
                HasSubstr(row.text));
    const auto spinners = shownBelow(GTK_WIDGET(panel.window()),
                                     [](GtkWidget* w) { return GTK_IS_SPINNER(w) == TRUE; });
    EXPECT_TRUE(spinners.empty());
  }
  ASSERT_TRUE(panel.presentation()->selectMode("source")) << "where a document can be read";
  panel.close();
}

TEST_F(NoLibraries, ADocumentsOwnTextStaysInItsPage) {
  PageOnScreen page(pageOf(kMarkdown), program_);
  EXPECT_EQ(page("document.getElementById('content').innerHTML"), "");
  EXPECT_THAT(page("document.getElementById('markdown-raw').textContent"), HasSubstr("# A guide"));
}

// What is not installed comes from the network, as the page itself says.
TEST_F(NoLibraries, TheyAreAskedForInTheNetwork) {
  const DeadEnd proxy(program_);
  PageOnScreen page(pageOf("# T"), program_);
  EXPECT_TRUE(runUntil([&] { return !proxy.requests().empty(); }));
  const std::string host = page("new URL(document.querySelector('script[src]').src).host");
  EXPECT_THAT(proxy.requests(), Each(HasSubstr("CONNECT " + host + ":443")));
}

// The same dead end says nothing where they are.
TEST(Libraries, WhereTheyAreNothingIsAskedForInTheNetwork) {
  Program program({LUMISK_EXTENSION_FOLDER, LUMISK_STORE_FOLDER, LUMISK_CATALOGUES});
  const DeadEnd proxy(program);
  PageOnScreen page(pageOf(kMarkdown), program);
  EXPECT_TRUE(page.becomes("document.querySelector('.mermaid svg') !== null"));
  EXPECT_TRUE(page.becomes("document.fonts.status === 'loaded'"));
  EXPECT_THAT(proxy.requests(), testing::IsEmpty());
}

}  // namespace
}  // namespace lumisk::test
