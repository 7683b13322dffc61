#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include "desktop/presentation.h"
#include "desktop/style.h"
#include "folder/folder_preview_view.h"
#include "screen.h"
#include "support/files.h"
#include "ui/outline.h"

namespace lumisk::test {

inline constexpr const char* kMarkdown = R"(# A guide

Some *text*, $x^2$ and a [link](other.md).

```python
print("code")
```

```mermaid
graph LR
  A --> B
```

> [!TIP]
> A call-out.

- [x] done
- [ ] to do
)";

/// A preview in a window of its own.
class Preview {
 public:
  explicit Preview(const std::filesystem::path& path, bool isDark = false)
      : webViews_(Program::shared().liveViews),
        context_{Program::shared().platform.platform(), webViews_} {
    adw_style_manager_set_color_scheme(
        adw_style_manager_get_default(),
        isDark ? ADW_COLOR_SCHEME_FORCE_DARK : ADW_COLOR_SCHEME_FORCE_LIGHT);
    window_ = GTK_WINDOW(gtk_window_new());
    desktop::installStyle(gtk_widget_get_display(GTK_WIDGET(window_)));
    webViews_.onFinished = [this] { ++finishedLoads_; };
    webViews_.onTerminated = [this] { ++terminations_; };
    presentation_ =
        std::make_unique<desktop::Presentation>(FileURL::fromPath(path.string()), context_);
    gtk_window_set_default_size(window_, 800, 700);
    gtk_window_set_child(window_, presentation_->widget());
    gtk_window_present(window_);
  }
  ~Preview() {
    gtk_window_set_child(window_, nullptr);
    presentation_.reset();
    gtk_window_destroy(window_);
  }

  bool finishes() {
    if (const auto* folder = view()->as<FolderPreviewView>())
      return runUntil([&] { return folder->state().folderSizeStr.has_value(); });
    return runUntil([&] { return finishedLoads_ > 0; });
  }
  int terminations() const { return terminations_; }
  int finishedLoads() const { return finishedLoads_; }
  desktop::Presentation& presentation() { return *presentation_; }
  const ui::HostedView* view() { return presentation_->view(); }
  std::string outlineOfWidgets() { return ui::outline(presentation_->content()->readBack()); }
  std::string outlineOfView() { return ui::outline(presentation_->view()->body()); }
  WebKitWebView* page() { return webViews_.latestView(); }
  bool canGoBack() const { return webViews_.canGoBack(); }
  desktop::ShownDocument shown() { return desktop::findShownDocument(presentation_->widget()); }

 private:
  desktop::DesktopWebViews webViews_;
  desktop::RenderContext context_;
  GtkWindow* window_;
  std::unique_ptr<desktop::Presentation> presentation_;
  int finishedLoads_ = 0;
  int terminations_ = 0;
};

class PreviewTest : public testing::Test {
 protected:
  PreviewTest() {
    writeAll(folder_ / "guide.md", kMarkdown);
    writeAll(folder_ / "data.json", "{\"b\":[1,2],\"a\":null}");
    writeAll(folder_ / "log.jsonl", "{\"a\":1}\n{\"a\":2}\n");
    writeAll(folder_ / "people.csv", "Name,Year\nAda,1815\n");
    writeAll(folder_ / "main.cpp", "int main() { return 0; }\n");
    std::filesystem::create_directories(folder_ / "folder/inner");
    writeAll(folder_ / "folder/note.txt", "x");
    writeAll(folder_ / "folder/.hidden", "x");
  }
  TemporaryFolder folder_;
};

}  // namespace lumisk::test
