// Nothing of a document is stored but its page file, and nothing of a site at all.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

#include "local_server.h"
#include "preview_on_screen.h"

namespace lumisk::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

/// Puts something into every store that the engine has, as far as it lets one, and counts what it
/// finds there before.
constexpr const char* kStores = R"js(
(async () => {
  const found = {};
  const tries = {
    local() { const count = localStorage.length; localStorage.setItem('leak', 1); return count; },
    async database() {
      const before = (await indexedDB.databases()).length;
      await new Promise((done, failed) => {
        const opening = indexedDB.open('leak');
        opening.onsuccess = () => { opening.result.close(); done(); };
        opening.onerror = failed;
      });
      return before;
    },
    async caches() {
      const before = (await caches.keys()).length;
      await (await caches.open('leak')).put('https://example.org/', new Response('leak'));
      return before;
    },
    async folder() {
      const root = await navigator.storage.getDirectory();
      let before = 0;
      for await (const name of root.keys()) before += 1;
      await root.getFileHandle('leak', {create: true});
      return before;
    },
    cookie() { const before = document.cookie.length; document.cookie = 'leak=1'; return before; },
  };
  for (const [name, attempt] of Object.entries(tries)) {
    try { found[name] = await attempt(); } catch (e) { found[name] = 'refused'; }
  }
  window.found = found;
})();
)js";

/// All that lies where the program may keep something, with its size.
std::set<std::string> storedFiles() {
  std::set<std::string> files;
  for (const char* const folder :
       {g_get_user_cache_dir(), g_get_user_data_dir(), g_get_user_config_dir(), "/var/tmp"}) {
    for (const auto& entry :
         fs::recursive_directory_iterator(folder, fs::directory_options::skip_permission_denied)) {
      const std::string path = entry.path().string();
      // The graphics library's, of its own programs for the card.
      if (path.find("mesa_shader_cache") == std::string::npos && entry.is_regular_file())
        files.insert(path + " " + std::to_string(entry.file_size()));
    }
  }
  return files;
}

bool isPageFile(const std::string& stored) {
  return stored.find("/LumiskHTML/preview.html ") != std::string::npos;
}

class StoredData : public PreviewTest {
 protected:
  StoredData() {
    writeAll(folder_ / "stores.md", "# Stores\n\n</script><script>" + std::string(kStores));
  }
  /// What a document finds in the stores, before it puts something there.
  std::string foundBy(Preview& preview) {
    EXPECT_TRUE(preview.finishes());
    EXPECT_TRUE(
        runUntil([&] { return evaluate(preview.page(), "window.found !== undefined") == "true"; }));
    return evaluate(preview.page(),
                    "Object.values(window.found).every((one) => one === 0 || one === 'refused') "
                    "? 'nothing' : JSON.stringify(window.found)");
  }
};

TEST_F(StoredData, OfADocumentIsNotFoundByTheNext) {
  for (int round = 0; round < 3; ++round) {
    Preview preview(folder_ / "stores.md");
    EXPECT_EQ(foundBy(preview), "nothing") << round;
  }
}

// What comes from a site into a document comes with the site's cookies, which are the document's.
TEST_F(StoredData, OfTheSitesInADocumentIsNotSentForTheNext) {
  LocalServer server([](const std::string&) {
    return httpAnswer("200 OK",
                      "Content-Type: text/html\r\nCache-Control: no-store\r\n"
                      "Set-Cookie: leak=1; Max-Age=3600; Path=/\r\n",
                      "<p>site</p>");
  });
  const std::string url = server.url("/a");
  const struct {
    const char* label;
    std::string source;
  } rows[] = {
      {"an image", "![](" + url + ")"},
      {"a frame", "<iframe src=\"" + url + "\"></iframe>"},
      {"a style sheet", "<link rel=\"stylesheet\" href=\"" + url + "\">"},
  };
  std::size_t requests = 0;
  for (const auto& row : rows) {
    writeAll(folder_ / "leads.md", row.source);
    for (int round = 0; round < 2; ++round) {
      Preview preview(folder_ / "leads.md");
      ASSERT_TRUE(preview.finishes());
      ASSERT_TRUE(runUntil([&] { return server.requests().size() > requests; }));
      requests = server.requests().size();
      EXPECT_THAT(server.requests().back(), testing::Not(HasSubstr("Cookie:"))) << row.label;
    }
  }
}

TEST_F(StoredData, IsThePageFileAlone) {
  const std::set<std::string> before = storedFiles();
  LocalServer server([](const std::string&) {
    return httpAnswer("200 OK",
                      "Content-Type: text/html\r\nCache-Control: max-age=3600\r\n"
                      "Set-Cookie: leak=1; Max-Age=3600; Path=/\r\n",
                      "<p id=\"site\">site</p><script>" + std::string(kStores) + "</script>");
  });
  writeAll(folder_ / "leads.md", "[on](" + server.url("/") + ")");
  {
    Preview preview(folder_ / "stores.md");
    EXPECT_EQ(foundBy(preview), "nothing");
  }
  {
    Preview preview(folder_ / "leads.md");
    ASSERT_TRUE(preview.finishes());
    evaluate(preview.page(), "document.querySelector('a').click(), 1");
    ASSERT_TRUE(runUntil([&] {
      return evaluate(preview.page(),
                      "String(document.getElementById('site') !== null && "
                      "window.found !== undefined)") == "true";
    }));
    EXPECT_EQ(server.requests().size(), 1U);
  }
  ASSERT_TRUE(Preview(folder_ / "guide.md").finishes());
  runFor(500);
  std::set<std::string> more;
  for (const std::string& file : storedFiles())
    if (!before.contains(file) && !isPageFile(file)) more.insert(file);
  EXPECT_THAT(more, testing::IsEmpty());
}

}  // namespace
}  // namespace lumisk::test
