#include "desktop/snapshot.h"

#include <adwaita.h>

#include <cstdio>

#include "desktop/gtk_platform.h"
#include "desktop/item_facts.h"
#include "desktop/page_drawing.h"
#include "desktop/picture.h"
#include "desktop/picture_file.h"
#include "desktop/presentation.h"
#include "desktop/style.h"
#include "folder/folder_preview_view.h"
#include "platform/argument_url.h"
#include "platform/terminal_text.h"

namespace lumisk::desktop {
namespace {

constexpr Size kScreen{1600, 1200};
constexpr unsigned kLongestWait = 60'000;      // milliseconds
constexpr unsigned kFolderCheckInterval = 50;  // milliseconds
constexpr unsigned kFolderSizeWait = 10'000;   // milliseconds
constexpr unsigned kTimeToDraw = 250;          // milliseconds
constexpr unsigned kMostDrawings = 20;

constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;

void complain(const std::string& sentence) { std::fputs(complaintLine(sentence).c_str(), stderr); }

/// Shows the item in a window without a frame, waits and draws.
class Snapshot {
 public:
  Snapshot(const SnapshotRequest& request, const EngineFiles& files)
      : request_(request),
        platform_(files.localeFolder),
        engine_(files),
        liveViews_(engine_),
        webViews_(liveViews_) {}

  int run() {
    const auto url = fileURLOfArgument(request_.path);
    if (!url) return fail("no file has the name " + request_.path);
    if (const auto reason = whyNotWritable(url->path(), request_.output)) return fail(*reason);
    present(*url);
    if (presentation_->error()) {
      const ItemFacts facts = readItemFacts(*url, platform_.platform());
      return fail(facts.name + ": " + failureSentence(*presentation_->error(), facts));
    }
    if (!request_.mode.empty() && !presentation_->selectMode(request_.mode))
      return fail("this preview has no mode called " + request_.mode, kExitUsage);
    waitForContent();
    timeout_.after(kLongestWait, [this] { giveUp("the page did not finish loading"); });
    g_main_loop_run(loop_);
    g_main_loop_unref(loop_);
    gtk_window_destroy(window_);
    return exitStatus_;
  }

 private:
  static int fail(const std::string& sentence, int exitStatus = kExitFailure) {
    complain(sentence);
    return exitStatus;
  }

  void giveUp(const std::string& sentence) {
    exitStatus_ = fail(sentence);
    g_main_loop_quit(loop_);
  }

  void present(const FileURL& url) {
    window_ = GTK_WINDOW(gtk_window_new());
    gtk_window_set_decorated(window_, FALSE);
    installStyle(gtk_widget_get_display(GTK_WIDGET(window_)));
    webViews_.onFinished = [this] { settlePage(); };
    webViews_.onTerminated = [this] { giveUp("the process that draws the page has ended"); };
    presentation_ = std::make_unique<Presentation>(url, context_);
    const bool isFolder = presentation_->view() != nullptr &&
                          presentation_->view()->as<FolderPreviewView>() != nullptr;
    const Size size = request_.size.value_or(initialSize(shapeOf(url, isFolder), kScreen));
    gtk_widget_set_size_request(presentation_->widget(), size.width, size.height);
    gtk_window_set_default_size(window_, size.width, size.height);
    gtk_window_set_child(window_, presentation_->widget());
    gtk_window_present(window_);
  }

  void waitForContent() {
    if (presentation_->view()->as<FolderPreviewView>() != nullptr)
      waitForFolder(kFolderSizeWait / kFolderCheckInterval);
  }

  /// The size of a large tree may take longer than anybody waits for a picture.
  void waitForFolder(unsigned checks) {
    const auto* folder = presentation_->view()->as<FolderPreviewView>();
    if (checks == 0 || folder->state().folderSizeStr) return drawSoon();
    wait_.after(kFolderCheckInterval, [this, checks] { waitForFolder(checks - 1); });
  }

  void settlePage() {
    WebKitWebView* page = webViews_.latestView();
    if (page == nullptr) return drawSoon();
    drawing_.wait(page, [this] { drawSoon(); });
  }

  /// Widgets that are about to be laid out anew cannot be drawn at that moment.
  void drawSoon(unsigned times = kMostDrawings) {
    wait_.after(kTimeToDraw, [this, times] {
      const GRef<GdkTexture> picture = pictureOf(presentation_->widget());
      if (!picture && times > 0) return drawSoon(times - 1);
      exitStatus_ = picture && writePicture(picture.get(), request_.output)
                        ? 0
                        : fail("cannot write " + request_.output);
      g_main_loop_quit(loop_);
    });
  }

  const SnapshotRequest& request_;
  GtkPlatform platform_;
  WebEngine engine_;
  LiveViews liveViews_;
  DesktopWebViews webViews_;
  RenderContext context_{platform_.platform(), webViews_};
  GtkWindow* window_ = nullptr;
  std::unique_ptr<Presentation> presentation_;
  GMainLoop* loop_ = g_main_loop_new(nullptr, FALSE);
  PageDrawing drawing_;
  Deferred wait_;
  Deferred timeout_;
  int exitStatus_ = kExitFailure;
};

}  // namespace

int takeSnapshot(const SnapshotRequest& request, const EngineFiles& files) {
  adw_init();
  adw_style_manager_set_color_scheme(
      adw_style_manager_get_default(),
      request.isDark ? ADW_COLOR_SCHEME_FORCE_DARK : ADW_COLOR_SCHEME_FORCE_LIGHT);
  return Snapshot(request, files).run();
}

}  // namespace lumisk::desktop
