#include "desktop/previewer.h"

#include <adwaita.h>

#include <memory>

#include "desktop/panel_host.h"
#include "desktop/service/bus_names.h"
#include "desktop/service/gio_item_resolver.h"
#include "desktop/service/hand_over.h"
#include "desktop/service/owned.h"
#include "desktop/service/preview_service.h"
#include "desktop/service/previewer_names.h"
#include "desktop/service/registered_names.h"

namespace lumisk::desktop {
namespace {

/// The running program: one window and those who may ask for it.
class Previewer {
 public:
  Previewer(const EngineFiles& files, GApplicationFlags flags)
      : application_(GRef<AdwApplication>::adopt(adw_application_new(
            kApplicationId, static_cast<GApplicationFlags>(flags | G_APPLICATION_HANDLES_OPEN)))),
        host_(files, GTK_APPLICATION(application_.get())) {
    host_.onQuit = [this] { quit(); };
    connect("startup", G_CALLBACK(&Previewer::started));
    connect("open", G_CALLBACK(&Previewer::opened));
    connect("activate", G_CALLBACK(&Previewer::activated));
  }

  int run(const std::vector<std::string>& words) {
    std::vector<char*> arguments;
    arguments.reserve(words.size());
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    const int status =
        g_application_run(application(), static_cast<int>(arguments.size()), arguments.data());
    registered_.reset();  // tells the service
    service_.reset();
    session_.reset();
    return status;
  }

 private:
  GApplication* application() const { return G_APPLICATION(application_.get()); }
  void connect(const char* signal, GCallback handler) {
    g_signal_connect(application_.get(), signal, handler, this);
  }
  void quit() { g_application_quit(application()); }

  static void started(GApplication*, gpointer self) { static_cast<Previewer*>(self)->start(); }
  /// Nothing to show: what is shown comes forward.
  static void activated(GApplication*, gpointer self) {
    static_cast<Previewer*>(self)->host_.present();
  }
  static void opened(GApplication*, GFile** files, int count, const char*, gpointer self) {
    std::vector<std::string> uris;
    uris.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) uris.emplace_back(OwnedText(g_file_get_uri(files[i])).get());
    static_cast<Previewer*>(self)->open(std::move(uris));
  }

  void start() {
    // The service, or the one window, decides when the program ends.
    g_application_hold(application());
    if (GDBusConnection* bus = g_application_get_dbus_connection(application())) {
      serve(bus);
    } else {
      showAlone();
    }
  }

  void serve(GDBusConnection* bus) {
    service_ = std::make_unique<PreviewService>(bus, host_, resolver_);
    service_->onIdle = [this] { quit(); };
    registered_ = std::make_unique<RegisteredNames>(bus);
    registered_->onChanged = [this] { service_->answerTo(registered_->names()); };
    service_->answerTo(registered_->names());
  }

  void showAlone() {
    session_ = std::make_unique<PreviewSession>(host_, resolver_);
    host_.setOnSelectionEvent(
        [this](SelectionDirection direction) { session_->moveSelection(direction); });
    host_.setOnVisibilityChanged([this] {
      if (!host_.isVisible()) quit();
    });
  }

  void open(std::vector<std::string> uris) {
    // The toolkit has already taken note of the caller's activation token.
    if (service_) {
      service_->open(std::move(uris), "");
    } else {
      session_->open(std::move(uris), "");
    }
  }

  GRef<AdwApplication> application_;
  PanelHost host_;
  GioItemResolver resolver_;
  std::unique_ptr<PreviewService> service_;
  std::unique_ptr<RegisteredNames> registered_;
  /// Without a bus, in the service's place.
  std::unique_ptr<PreviewSession> session_;
};

/// A service that has just ended gives up the file managers' names before its own, so that the bus
/// may start this one while that one still shuts down; without its name this one could not be.
constexpr unsigned kLongestFarewellInMilliseconds = 5'000;

constexpr int kExitFailure = 1;

}  // namespace

int openInPreviewer(std::vector<std::string> uris, const EngineFiles& files) {
  switch (handOver(uris)) {
    case HandOver::Done:
      return 0;
    case HandOver::Failed:
      return 1;
    case HandOver::NoBus:
      break;
  }
  if (gtk_init_check() == FALSE) {
    g_printerr("lumisk: there is no display to open a window on; lumisk page writes the page\n");
    return 1;
  }
  uris.insert(uris.begin(), "lumisk-previewer");
  return Previewer(files, G_APPLICATION_NON_UNIQUE).run(uris);
}

int servePreviewer(const EngineFiles& files) {
  // Held until the program runs on it.
  const auto bus =
      GRef<GDBusConnection>::adopt(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  if (!bus) {
    g_printerr("lumisk: there is no session bus, on which a service is called\n");
    return kExitFailure;
  }
  waitUntilFree(bus.get(), kApplicationId, kLongestFarewellInMilliseconds);
  return Previewer(files, G_APPLICATION_IS_SERVICE).run({"lumisk-previewer"});
}

}  // namespace lumisk::desktop
