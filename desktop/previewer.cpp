#include "desktop/previewer.h"

#include <adwaita.h>

#include <memory>

#include "desktop/gtk_platform.h"
#include "desktop/panel.h"
#include "platform/argument_url.h"

namespace lumisk::desktop {
namespace {

/// How long the program stays ready, with its warm web view, once its panel is closed.
constexpr unsigned kIdleTime = 30'000;  // milliseconds

/// The running program: one panel, made when the first file comes.
class Previewer {
 public:
  explicit Previewer(const EngineFiles& files)
      : files_(files),
        application_(GRef<AdwApplication>::adopt(
            adw_application_new(kApplicationId, G_APPLICATION_HANDLES_OPEN))) {
    g_application_set_inactivity_timeout(G_APPLICATION(application_.get()), kIdleTime);
    g_signal_connect(application_.get(), "open", G_CALLBACK(&Previewer::opened), this);
    g_signal_connect(application_.get(), "activate", G_CALLBACK(&Previewer::activated), this);
  }

  int run(const std::vector<std::string>& words) {
    std::vector<char*> arguments;
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    const int status = g_application_run(G_APPLICATION(application_.get()),
                                         static_cast<int>(arguments.size()), arguments.data());
    panel_.reset();
    return status;
  }

 private:
  /// Nothing to show: a start without a file makes the program ready for the next.
  static void activated(GApplication*, gpointer) {}

  static void opened(GApplication*, GFile** files, int count, const char*, gpointer self) {
    std::vector<FileURL> urls;
    for (int i = 0; i < count; ++i) {
      char* uri = g_file_get_uri(files[i]);
      if (const auto url = FileURL::fromString(uri)) urls.push_back(*url);
      g_free(uri);
    }
    if (!urls.empty()) static_cast<Previewer*>(self)->open(std::move(urls));
  }

  void open(std::vector<FileURL> urls) {
    ensurePanel();
    urls_ = std::move(urls);
    index_ = 0;
    panel_->onSelectionStep = nullptr;
    if (urls_.size() > 1)
      panel_->onSelectionStep = [this](SelectionStep step) { showNeighbour(step); };
    gtk_window_set_application(panel_->window(), GTK_APPLICATION(application_.get()));
    panel_->show(urls_[index_]);
  }

  void ensurePanel() {
    if (panel_) return;
    platform_ = std::make_unique<GtkPlatform>();
    engine_ = std::make_unique<WebEngine>(files_);
    liveViews_ = std::make_unique<LiveViews>(*engine_);
    panel_ = std::make_unique<Panel>(platform_->platform(), *liveViews_);
    // Without a window the application counts as idle.
    panel_->onClosed = [this] { gtk_window_set_application(panel_->window(), nullptr); };
    panel_->onQuit = [this] { g_application_quit(G_APPLICATION(application_.get())); };
  }

  void showNeighbour(SelectionStep step) {
    const bool isBack = step == SelectionStep::Up || step == SelectionStep::Left;
    if (isBack ? index_ == 0 : index_ + 1 == urls_.size()) return;
    index_ = isBack ? index_ - 1 : index_ + 1;
    panel_->show(urls_[index_]);
  }

  const EngineFiles& files_;
  GRef<AdwApplication> application_;
  std::unique_ptr<GtkPlatform> platform_;
  std::unique_ptr<WebEngine> engine_;
  std::unique_ptr<LiveViews> liveViews_;
  std::unique_ptr<Panel> panel_;
  std::vector<FileURL> urls_;
  std::size_t index_ = 0;
};

}  // namespace

int runPreviewer(const std::vector<std::string>& paths, const EngineFiles& files) {
  std::vector<std::string> words = {"lumisk-previewer"};
  for (const std::string& path : paths) {
    if (const auto url = fileURLOfArgument(path)) words.push_back(url->absoluteString());
  }
  return Previewer(files).run(words);
}

}  // namespace lumisk::desktop
