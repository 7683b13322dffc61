#include "extension/dispatch.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/json_page.h"
#include "core/markdown_page.h"
#include "core/source_page.h"
#include "core/table_page.h"
#include "extension/preview_view_controller.h"
#include "folder/folder_preview_view.h"
#include "support/files.h"
#include "support/memory_limit.h"
#include "support/outlines.h"
#include "support/privileges.h"
#include "support/recording_platform.h"
#include "views/json_dual_preview_view.h"
#include "views/jsonl_dual_preview_view.h"
#include "views/markdown_dual_preview_view.h"
#include "web/html_preview_view.h"

namespace lumisk {
namespace {

namespace fs = std::filesystem;

using test::only;
using test::RecordingPlatform;
using test::TemporaryFolder;
using test::writeAll;

const std::string kNoText = "a\xFF\xFE b";

class Dispatch : public testing::Test {
 protected:
  FileURL urlOf(std::string_view name) { return FileURL::fromPath((folder_ / name).string()); }
  FileURL folderURL() { return FileURL::fromPath(folder_.path().string() + "/"); }

  // Answers a request; what the host is told is logged among what the platform was asked.
  void request(std::string_view name) {
    desktop_.log.clear();
    error_.reset();
    dispatchPreview(urlOf(name), controller_, desktop_.platform(), [this](const auto& error) {
      const std::string children = std::to_string(controller_.children().size());
      desktop_.log.push_back((error ? "failed with " : "done with ") + children);
      error_ = error;
    });
  }
  void request(std::string_view name, std::string_view contents) {
    writeAll(folder_ / name, contents);
    request(name);
  }

  ui::HostedView& shown() { return controller_.children().back()->view; }
  std::string shownPage() {
    shown().onAppear();
    return std::string(only<ui::WebPage>(shown().body()).htmlContent.view());
  }

  TemporaryFolder folder_;
  RecordingPlatform desktop_;
  PreviewViewController controller_{desktop_.platform()};
  std::optional<ErrorRecord> error_;
};

using Log = std::vector<std::string>;

TEST_F(Dispatch, MarkdownIsAPageAndItsSource) {
  const std::string text = "\xEF\xBB\xBF# Title\n";
  for (const char* name : {"a.md", "README.MD", "x.Markdown", "a.b.markdown"}) {
    request(name, text);
    const auto* view = shown().as<MarkdownDualPreviewView>();
    ASSERT_NE(view, nullptr) << name;
    EXPECT_EQ(view->markdownSource.view(), "# Title\n");
    EXPECT_EQ(view->htmlContent.view(),
              buildMarkdownPage("# Title\n", folderURL().absoluteString(), false));
    EXPECT_EQ(view->baseURL, folderURL());
    EXPECT_EQ(view->state->selectedMode, MarkdownDualPreviewView::PreviewMode::Rendered);
    EXPECT_FALSE(view->state->isRenderLoaded);
  }
}

TEST_F(Dispatch, JSONOpensFormatted) {
  for (const char* name : {"x.json", "x.JSON", ".x.json"}) {
    request(name, "{\"a\":1}");
    const auto* view = shown().as<JSONDualPreviewView>();
    ASSERT_NE(view, nullptr) << name;
    EXPECT_EQ(view->jsonSource.view(), "{\"a\":1}");
    EXPECT_EQ(view->baseURL, folderURL());
    EXPECT_FALSE(view->isDark);
    EXPECT_EQ(view->state->selectedMode, JSONDualPreviewView::PreviewMode::Formatted);
    EXPECT_TRUE(view->state->renderedHTML.empty());
    EXPECT_EQ(shownPage(), buildJSONHTML("{\"a\":1}", urlOf(name), false, true));
  }
}

TEST_F(Dispatch, WhatIsNoJSONStaysOfItsKind) {
  request("x.json", "not json");
  EXPECT_NE(shown().as<JSONDualPreviewView>(), nullptr);
}

TEST_F(Dispatch, JSONLinesOpenAsText) {
  request("x.JsonL", "{\"a\":1}\n");
  const auto* view = shown().as<JSONLDualPreviewView>();
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(view->jsonlSource.view(), "{\"a\":1}\n");
  EXPECT_EQ(view->baseURL, folderURL());
  EXPECT_EQ(view->state->selectedMode, JSONLDualPreviewView::PreviewMode::Text);
  EXPECT_TRUE(view->state->renderedHTML.empty());
  EXPECT_EQ(shownPage(), buildJSONLHTML("{\"a\":1}\n", urlOf("x.jsonl"), false, false));
}

struct PageCase {
  const char* name;
  std::string contents;
  std::function<std::string(const FileURL&, bool isDark)> page;
};

// The kinds that are one page and nothing else.
std::vector<PageCase> pageCases() {
  const auto table = [](std::string text, const char* separator) {
    return [=](const FileURL& url, bool isDark) {
      return buildTableHTML(text, url, separator, isDark);
    };
  };
  const auto source = [](std::string text, const char* extension) {
    return [=](const FileURL& url, bool isDark) {
      return buildSourceHTML(text, url, extension, isDark);
    };
  };
  return {
      {"data.csv", "a,b\t\n1,2", table("a,b\t\n1,2", ",")},
      {"data.TSV", "a\tb,\n1\t2", table("a\tb,\n1\t2", "\t")},
      {"empty.csv", "", table("", ",")},
      {"x.mdown", "# no Markdown", source("# no Markdown", "mdown")},
      {"Makefile", "all:", source("all:", "")},
      {".bashrc", "alias", source("alias", "")},
      {"ends.", "x", source("x", "")},
      {"MAIN.CC", "int x;", source("int x;", "cc")},
      {"x.JSON5", "{}", source("{}", "json5")},
      {"archive.json.gz", "text", source("text", "gz")},
      {"empty", "", source("", "")},
      {"nul.bin", std::string("a\0b", 3), source(std::string("a\0b", 3), "bin")},
  };
}

TEST_F(Dispatch, TablesAndEveryOtherFileAreOnePage) {
  for (const PageCase& row : pageCases()) {
    for (const bool isDark : {false, true}) {
      SCOPED_TRACE(row.name);
      desktop_.appearance = isDark ? AppearanceMatch::Dark : AppearanceMatch::Light;
      request(row.name, row.contents);
      const auto* view = shown().as<HTMLPreviewView>();
      ASSERT_NE(view, nullptr);
      EXPECT_TRUE(view->htmlContent.view() == row.page(urlOf(row.name), isDark));
      EXPECT_EQ(view->baseURL, folderURL());
      EXPECT_FALSE(view->onCheckboxToggle.isPresent());
      EXPECT_FALSE(view->onLoad.isPresent());
    }
  }
}

TEST_F(Dispatch, ThePagesOfTheOtherKindsAreDarkInTheDark) {
  desktop_.appearance = AppearanceMatch::Dark;
  request("a.md", "# x");
  EXPECT_EQ(shownPage(), buildMarkdownPage("# x", folderURL().absoluteString(), true));
  request("a.json", "[1]");
  EXPECT_EQ(shownPage(), buildJSONHTML("[1]", urlOf("a.json"), true, true));
  request("a.jsonl", "[1]");
  EXPECT_EQ(shownPage(), buildJSONLHTML("[1]", urlOf("a.jsonl"), true, false));
}

TEST_F(Dispatch, TheAppearanceIsAskedForAtEachRequest) {
  request("a.md", "# x");
  desktop_.appearance = AppearanceMatch::Dark;
  request("a.md");
  EXPECT_EQ(shownPage(), buildMarkdownPage("# x", folderURL().absoluteString(), true));
  desktop_.appearance = AppearanceMatch::None;
  request("a.md");
  EXPECT_EQ(shownPage(), buildMarkdownPage("# x", folderURL().absoluteString(), false));
}

TEST_F(Dispatch, AFileThatWasPreparedBeforeIsAnsweredTheSame) {
  for (const char* name : {"a.md", "a.csv", "a.tsv", "a.json", "a.jsonl", "a.txt", "a"}) {
    request(name, "{\"a\": 1}");
    const std::string page = shownPage();
    FilePreview prepared = prepareFile(
        urlOf(name), [] { return false; }, desktop_.platform().strings);
    ASSERT_TRUE(std::holds_alternative<ui::HostedView>(prepared)) << name;
    const std::size_t before = controller_.children().size();
    bool isDone = false;
    controller_.takePreparedFile(std::move(prepared), [&](const auto& error) {
      isDone = !error && controller_.children().size() == before + 1;
    });
    EXPECT_TRUE(isDone) << name;
    EXPECT_EQ(shownPage(), page) << name;
  }
}

TEST_F(Dispatch, AFileThatCouldNotBePreparedIsAnsweredTheSame) {
  request("a.md", kNoText);
  const auto expected = error_;
  Log log;
  log.swap(desktop_.log);
  bool isAsked = false;
  FilePreview prepared = prepareFile(
      urlOf("a.md"), [&] { return isAsked = true; }, desktop_.platform().strings);
  EXPECT_FALSE(isAsked) << "nothing is built";
  controller_.takePreparedFile(std::move(prepared), [&](const auto& error) {
    EXPECT_EQ(error, expected);
    desktop_.log.push_back("failed with 0");
  });
  EXPECT_EQ(desktop_.log, log);
}

TEST_F(Dispatch, AFileThatIsPreparedMayBeGivenUp) {
  writeAll(folder_ / "long.txt", std::string(1 << 20, 'x'));
  bool isAsked = false;
  const auto isWanted = [&] { return !(isAsked = true); };
  prepareFile(
      urlOf("long.txt"), [] { return false; }, desktop_.platform().strings, isWanted);
  EXPECT_TRUE(isAsked);
}

TEST_F(Dispatch, ThePageOfAFileIsTheOneThatItsBodyShows) {
  for (const char* name : {"a.md", "a.csv", "a.json", "a.jsonl", "a.txt"}) {
    request(name, "{\"a\": 1}");
    const std::string page = shownPage();
    EXPECT_FALSE(page.empty()) << name;
    EXPECT_EQ(pageOf(shown()).view(), page) << name;
  }
  fs::create_directory(folder_ / "folder");
  request("folder");
  EXPECT_TRUE(pageOf(shown()).empty());
}

TEST_F(Dispatch, AFileIsReadThenTheAppearanceThenEmbeddedThenAnswered) {
  std::size_t children = 0;
  for (const char* name : {"a.md", "a.csv", "a.tsv", "a.json", "a.jsonl", "a.txt", "a"}) {
    request(name, "text");
    EXPECT_EQ(desktop_.log, (Log{"appearance", "done with " + std::to_string(++children)})) << name;
    EXPECT_FALSE(error_);
  }
}

TEST_F(Dispatch, AFolderIsToldBeforeAnyNameAndNotRead) {
  std::size_t children = 0;
  for (const char* name : {"folder", "notes.md", "x.json"}) {
    fs::create_directory(folder_ / name);
    request(name);
    EXPECT_EQ(desktop_.log, Log{"done with " + std::to_string(++children)}) << name;
    const auto* view = shown().as<FolderPreviewView>();
    ASSERT_NE(view, nullptr) << name;
    EXPECT_EQ(view->state().folderURL, urlOf(name));
    EXPECT_EQ(desktop_.mainQueue().size(), 0U);
  }
}

TEST_F(Dispatch, ALinkToAFolderIsAFolderAndALinkToAFileAFile) {
  fs::create_directory(folder_ / "real");
  fs::create_directory_symlink(folder_ / "real", folder_ / "link.md");
  request("link.md");
  EXPECT_NE(shown().as<FolderPreviewView>(), nullptr);
  writeAll(folder_ / "text", "x");
  fs::create_symlink(folder_ / "text", folder_ / "text.json");
  request("text.json");
  EXPECT_NE(shown().as<JSONDualPreviewView>(), nullptr);
}

struct UndecodableCase {
  const char* name;
  int code;
  const char* message;
};

TEST_F(Dispatch, WhatIsNoTextIsRefusedWithTheErrorOfItsKind) {
  const UndecodableCase cases[] = {
      {"a.md", 1, "Failed to read Markdown file as UTF8 text."},
      {"a.MARKDOWN", 1, "Failed to read Markdown file as UTF8 text."},
      {"a.csv", 2, "Failed to read CSV file as UTF8 text."},
      {"a.tsv", 2, "Failed to read CSV file as UTF8 text."},
      {"a.jsonl", 3, "Failed to read JSONL file as UTF8 text."},
      {"a.json", 4, "Failed to read JSON file as UTF8 text."},
      {"a.txt", 1, "Failed to read file as text."},
      {"a", 1, "Failed to read file as text."},
  };
  for (const UndecodableCase& row : cases) {
    request(row.name, kNoText);
    const ErrorRecord expected{"Lumisk", row.code, row.message};
    EXPECT_EQ(error_, expected) << row.name;
    EXPECT_EQ(desktop_.log, (Log{"line Failed to load and parse file: " + expected.description(),
                                 "failed with 0"}))
        << row.name;
  }
}

struct UnreadableCase {
  const char* label;
  std::function<void(const fs::path&)> make;
  int code;
};

TEST_F(Dispatch, WhatCannotBeReadIsRefusedWithTheSystemsError) {
  const UnreadableCase cases[] = {
      {"missing.md", [](const fs::path&) {}, ENOENT},
      {"dangling.md", [](const fs::path& path) { fs::create_symlink("nowhere", path); }, ENOENT},
      {"loop.md", [](const fs::path& path) { fs::create_symlink("loop.md", path); }, ELOOP},
      {"pipe.md", [](const fs::path& path) { ::mkfifo(path.c_str(), 0600); }, ENOTSUP},
      {"below.md/x",
       [](const fs::path& path) { writeAll(path.parent_path(), "a file, not a folder"); }, ENOTDIR},
  };
  for (const UnreadableCase& row : cases) {
    SCOPED_TRACE(row.label);
    row.make(folder_ / row.label);
    request(row.label);
    ASSERT_TRUE(error_);
    EXPECT_EQ(error_->domain, "POSIX");
    EXPECT_EQ(error_->code, row.code);
    EXPECT_FALSE(error_->localizedDescription.empty());
    EXPECT_EQ(desktop_.log, (Log{"line Failed to load and parse file: " + error_->description(),
                                 "failed with 0"}));
  }
}

TEST_F(Dispatch, AFileThatMayNotBeReadIsRefused) {
  writeAll(folder_ / "secret.md", "x");
  ASSERT_EQ(::chmod(folder_.path().c_str(), 0755), 0);
  ASSERT_EQ(::chmod((folder_ / "secret.md").c_str(), 0), 0);
  {
    const test::WithoutPrivileges nobody;
    request("secret.md");
  }
  ASSERT_TRUE(error_);
  EXPECT_EQ(error_->code, EACCES);
}

TEST_F(Dispatch, WhatDoesNotFitInMemoryIsRefused) {
  if (!test::kMemoryMayRunOut) GTEST_SKIP() << "a sanitizer ends the program instead";
  constexpr std::size_t kMegabyte = std::size_t{1} << 20;
  struct Row {
    const char* name;
    std::size_t room;  // in megabytes; each file has 32
  };
  // With room for the file alone it is the page that does not fit.
  for (const Row& row :
       {Row{"file.md", 16}, Row{"page.md", 48}, Row{"page.csv", 48}, Row{"page.txt", 48}}) {
    SCOPED_TRACE(row.name);
    writeAll(folder_ / row.name, std::string(32 * kMegabyte, 'x'));
    {
      const test::MemoryLimit limit(row.room * kMegabyte);
      request(row.name);
    }
    ASSERT_TRUE(error_);
    EXPECT_EQ(error_->code, ENOMEM);
    EXPECT_TRUE(desktop_.log.back().starts_with("failed")) << desktop_.log.back();
    request(row.name);
    EXPECT_FALSE(error_) << "with room enough it is shown";
  }
}

TEST_F(Dispatch, ADocumentIsHeldOnceHoweverItIsShown) {
  const std::string text(std::size_t{1} << 20, 'x');
  request("a.md", text);
  const auto* view = shown().as<MarkdownDualPreviewView>();
  const ui::View body = shown().body();
  EXPECT_EQ(only<ui::Text>(body).text.data(), view->markdownSource.data());
  fs::remove(folder_ / "a.md");
  EXPECT_EQ(only<ui::Text>(shown().body()).text.view(), text) << "the view keeps what it shows";
}

TEST_F(Dispatch, NamesAreBytes) {
  for (const char* name :
       {"caf\xE9.md", "line\nfeed.md", "per%20cent #?.md", "\xF0\x9F\x98\x80.md"}) {
    request(name, "# x");
    EXPECT_FALSE(error_) << name;
    EXPECT_NE(shown().as<MarkdownDualPreviewView>(), nullptr) << name;
  }
}

}  // namespace
}  // namespace lumisk
