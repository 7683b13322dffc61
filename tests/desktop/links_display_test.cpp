// Where a link of a document leads, and the way back.

#include <gmock/gmock.h>

#include "panel_test.h"

namespace lumisk::test {
namespace {

using testing::HasSubstr;

struct Target {
  const char* label;
  const char* address;
  const char* text;
};
std::ostream& operator<<(std::ostream& out, const Target& target) { return out << target.label; }

class LinkTest : public PanelTest, public testing::WithParamInterface<Target> {};

TEST_P(LinkTest, LeadsThere) {
  writeAll(folder_ / "other.md", "# Other *file*\n");
  writeAll(folder_ / "other.txt", "Other text\n");
  writeAll(folder_ / "other.csv", "other,cells\n");
  std::filesystem::create_directory(folder_ / "inner");
  writeAll(folder_ / "inner/inside.txt", "x");
  writeAll(folder_ / "doc.md", std::string("# Tides\n\n[on](") + GetParam().address + ")\n");
  open("doc.md");
  evaluate(page(), "document.querySelector('a').click(), 1");
  runFor(3000);
  std::printf("%s: loads %d back %d uri %s\n%s\n---\n", GetParam().label, finishedLoads_, panel_->webViews().canGoBack(), webkit_web_view_get_uri(page()), evaluate(page(), "document.body.innerText + ' TITLE ' + document.title + ' Y ' + scrollY + ' ' + document.contentType").c_str());
}

INSTANTIATE_TEST_SUITE_P(Targets, LinkTest,
                         testing::Values(Target{"Markdown", "other.md", ""},
                         Target{"text", "other.txt", ""},
                         Target{"csv", "other.csv", ""},
                         Target{"folder", "inner", ""},
                         Target{"folder2", "inner/", ""},
                         Target{"missing", "missing.html", ""},
                         Target{"mailto", "mailto:a@example.org", ""},
                         Target{"heading", "#tides", ""},
                         Target{"pdf", "a.pdf", ""},
                         Target{"png", "picture.png", ""},
                         Target{"odd", "odd:scheme", ""},
                         Target{"bin", "a.bin", ""}),
                         [](const auto& row) { return std::string(row.param.label); });

}  // namespace
}  // namespace lumisk::test
