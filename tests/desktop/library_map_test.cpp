#include "desktop/web_extension/library_map.h"

#include <gtest/gtest.h>

#include "desktop/web_extension/page_address.h"
#include "desktop/web_extension/store_message.h"

namespace lumisk::desktop {
namespace {

constexpr const char* kMermaid = "npm/mermaid@10.9.1/dist/mermaid.min.js";
constexpr const char* kMarked = "npm/marked@12.0.1/lib/marked.umd.min.js";

LibraryMap map() { return LibraryMap({"cdn.example", "file:///store", {kMermaid, kMarked}}); }

TEST(LibraryMap, AnswersTheExactUrlOfAnInstalledFile) {
  EXPECT_EQ(map().installedFile("https://cdn.example/npm/marked@12.0.1/lib/marked.umd.min.js"),
            "file:///store/npm/marked@12.0.1/lib/marked.umd.min.js");
}

TEST(LibraryMap, LeavesEveryOtherUrlAlone) {
  const char* const others[] = {
      "",
      "https://cdn.example/",
      "https://cdn.example/npm/marked@12.0.2/lib/marked.umd.min.js",
      "https://cdn.example/npm/marked@12.0.1/lib/marked.umd.min.js?x=1",
      "https://cdn.example/npm/marked@12.0.1/lib/marked.umd.min.js#x",
      "https://cdn.example/npm/marked@12.0.1/lib/../lib/marked.umd.min.js",
      "http://cdn.example/npm/marked@12.0.1/lib/marked.umd.min.js",
      "https://cdn.example:443/npm/marked@12.0.1/lib/marked.umd.min.js",
      "https://cdn.example.org/npm/marked@12.0.1/lib/marked.umd.min.js",
      "https://other.example/npm/marked@12.0.1/lib/marked.umd.min.js",
      "https://user@cdn.example/npm/marked@12.0.1/lib/marked.umd.min.js",
      "file:///etc/passwd",
  };
  for (const char* const url : others) EXPECT_EQ(map().installedFile(url), std::nullopt) << url;
}

TEST(LibraryMap, SparesTheDiagramLibraryToPagesWithoutDiagramsOnly) {
  const std::string url = std::string("https://cdn.example/") + kMermaid;
  const std::string file = "file:///caches/preview.html";
  const std::string without = pageAddress(file, {4, Diagrams::None});
  EXPECT_TRUE(map().isSpared(url, without));
  EXPECT_FALSE(map().isSpared(url, pageAddress(file, {4, Diagrams::Possible})));
  EXPECT_FALSE(map().isSpared(std::string("https://cdn.example/") + kMarked, without));
  EXPECT_FALSE(map().isSpared("https://other.example/mermaid.min.js", without));
  // A page of somebody else's cannot ask for it by its address.
  EXPECT_FALSE(map().isSpared(url, "https://example.org/?load=1&diagrams=none"));
}

TEST(LibraryMap, AnEmptyStoreAnswersNothing) {
  EXPECT_EQ(LibraryMap({}).installedFile("https:///"), std::nullopt);
  EXPECT_EQ(LibraryMap(storeFromVariant(nullptr)).installedFile("https://cdn.example/x"),
            std::nullopt);
}

TEST(StoreMessage, CarriesTheStoreToTheWebProcess) {
  const LibraryStore store{"cdn.example", "file:///store", {kMermaid, kMarked}};
  GVariant* message = g_variant_ref_sink(toVariant(store));
  const LibraryStore read = storeFromVariant(message);
  g_variant_unref(message);
  EXPECT_EQ(read.cdnHost, store.cdnHost);
  EXPECT_EQ(read.storeUri, store.storeUri);
  EXPECT_EQ(read.paths, store.paths);
}

TEST(StoreMessage, AMessageOfAnotherFormIsNoStore) {
  GVariant* message = g_variant_ref_sink(g_variant_new_string("store"));
  EXPECT_TRUE(storeFromVariant(message).paths.empty());
  g_variant_unref(message);
}

TEST(PageAddress, DiffersForEachLoad) {
  EXPECT_EQ(pageAddress("file:///p.html", {7, Diagrams::Possible}), "file:///p.html?load=7");
  EXPECT_EQ(pageAddress("file:///p.html", {8, Diagrams::None}),
            "file:///p.html?load=8&diagrams=none");
  EXPECT_EQ(pageAddress("file:///p.html", {9, Diagrams::Possible, Showing::BeginningFirst}),
            "file:///p.html?load=9&show=beginning-first");
  EXPECT_TRUE(isPageAddress("file:///p.html?load=7"));
  EXPECT_TRUE(isPageAddress("file:///p.html?load=8&diagrams=none#part"));
  EXPECT_FALSE(isPageAddress("file:///p.html"));
  EXPECT_FALSE(isPageAddress("https://example.org/p.html?load=7"));
  EXPECT_FALSE(isWithoutDiagrams("file:///p.html?load=7"));
  EXPECT_TRUE(isWithoutDiagrams("file:///p.html?load=8&diagrams=none"));
}

}  // namespace
}  // namespace lumisk::desktop
