#pragma once

#include <adwaita.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "desktop/gtk_platform.h"
#include "desktop/hosted_widget.h"
#include "desktop/web_engine.h"

namespace lumisk::test {

/// Runs the main loop until `isDone`; false after half a minute, which no test waits for on
/// purpose.
bool runUntil(const std::function<bool()>& isDone);
/// Lets everything that is due happen, and waits a little for what another process owes.
void runFor(unsigned milliseconds);

/// How often the window of `widget` is drawn or laid out meanwhile.
gint64 framesWithin(GtkWidget* widget, unsigned milliseconds);

/// What `script`, an expression, is in the page, as text; "error: …" when it throws.
std::string evaluate(WebKitWebView* page, const std::string& script);

/// Presses keys as a person would, in the notation of xdotool ("ctrl+f").
void press(const std::string& keys);

/// The program's parts around a panel, made once for all tests of a program.
struct Program {
  desktop::GtkPlatform platform;
  desktop::WebEngine engine;
  desktop::LiveViews liveViews{engine};

  explicit Program(const desktop::EngineFiles& files)
      : platform(files.localeFolder), engine(files) {}
  static Program& shared();
};

/// One web page in a window, with what its scripts wrote to the console and posted.
class PageOnScreen {
 public:
  struct Toggle {
    std::int64_t index;
    bool isChecked;
    bool operator==(const Toggle&) const = default;
  };

  /// Loads the page and waits for its end.
  explicit PageOnScreen(const std::string& html, Program& program = Program::shared())
      : PageOnScreen(html, FileURL::fromPath("/tmp/"), program) {}
  /// The page of an item in `folder`.
  PageOnScreen(const std::string& html, const FileURL& folder,
               Program& program = Program::shared());
  ~PageOnScreen();

  std::string operator()(const std::string& script) { return evaluate(view(), script); }
  WebKitWebView* view() const { return webViews_.latestView(); }
  desktop::DesktopWebViews& webViews() { return webViews_; }
  const std::vector<Toggle>& toggles() const { return toggles_; }
  /// Waits until the expression is true.
  bool becomes(const std::string& script);

 private:
  desktop::DesktopWebViews webViews_;
  desktop::RenderContext context_;
  WebKitUserScript* recorder_ = nullptr;
  std::vector<Toggle> toggles_;
  bool isLoaded_ = false;
  std::unique_ptr<desktop::Element> element_;
  GtkWindow* window_;
};

/// A GIF of one red pixel.
extern const std::string kDot;

/// A folder of client libraries that is the installed one without some files.
void copyStoreWithout(const std::filesystem::path& destination,
                      const std::vector<std::string>& missing);

}  // namespace lumisk::test
