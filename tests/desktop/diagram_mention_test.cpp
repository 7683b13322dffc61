#include "desktop/diagram_mention.h"

#include <gtest/gtest.h>

#include "core/markdown_page.h"

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

}  // namespace
}  // namespace lumisk::desktop
