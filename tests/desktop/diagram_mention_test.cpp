#include "desktop/diagram_mention.h"

#include <gtest/gtest.h>

#include "core/json_page.h"
#include "core/markdown_page.h"
#include "core/source_page.h"

namespace lumisk::desktop {
namespace {

struct Row {
  const char* label;
  const char* source;
  Diagrams expected;
};

TEST(DiagramMention, IsDecidedByTheDocumentAlone) {
  const Row rows[] = {
      {"empty", "", Diagrams::None},
      {"text", "# Title\n\nSome *text* & more.", Diagrams::None},
      {"another language", "```python\nx\n```\n", Diagrams::None},
      {"half the word", "mermai mer maid", Diagrams::None},
      {"named entity", "a &amp; b", Diagrams::None},
      {"diagram", "```mermaid\ngraph TD\n```\n", Diagrams::Possible},
      {"upper case", "Mermaid", Diagrams::Possible},
      {"all capitals", "MERMAID", Diagrams::Possible},
      {"word in text", "I like mermaids", Diagrams::Possible},
      {"character reference", "```&#109;ermaid\ngraph TD\n```\n", Diagrams::Possible},
      {"closed holder", "</script><script>x</script>", Diagrams::Possible},
      {"closed holder in capitals", "</SCRIPT>", Diagrams::Possible},
      {"another page in it", "<iframe src=\"chart.html\"></iframe>", Diagrams::Possible},
      {"the same by another element", "<OBJECT data=\"chart.html\">", Diagrams::Possible},
      {"and by a third", "<embed src=\"chart.html\">", Diagrams::Possible},
  };
  for (const Row& row : rows) {
    for (const bool isDark : {false, true})
      EXPECT_EQ(diagramsIn(buildMarkdownPage(row.source, "file:///notes/", isDark)), row.expected)
          << row.label;
  }
}

TEST(DiagramMention, AFolderOfThatNameCounts) {
  EXPECT_EQ(diagramsIn(buildMarkdownPage("", "file:///mermaid/", false)), Diagrams::Possible);
}

TEST(DiagramMention, EachWayToWriteTheName) {
  const std::string word = "mermaid";
  for (unsigned capitals = 0; capitals < 1U << word.size(); ++capitals) {
    std::string written = word;
    for (std::size_t i = 0; i < word.size(); ++i)
      if ((capitals >> i & 1U) != 0) written[i] = static_cast<char>(written[i] - 'a' + 'A');
    for (const std::string& text : {written, "x" + written + "x", written.substr(1) + written})
      EXPECT_EQ(diagramsIn(buildMarkdownPage(text, "file:///notes/", false)), Diagrams::Possible)
          << text;
  }
}

// They do not load the library, whatever they tell of it.
TEST(DiagramMention, PagesWithoutTheLibraryHaveNoSay) {
  const FileURL url = FileURL::fromPath("/notes/mermaid.cpp");
  for (const std::string& page :
       {std::string(), buildJSONHTML("{\"mermaid\": \"&#\"}", url, false, true),
        buildSourceHTML("mermaid </script>", url, "cpp", false)})
    EXPECT_EQ(diagramsIn(page), std::nullopt);
}

}  // namespace
}  // namespace lumisk::desktop
