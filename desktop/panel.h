#pragma once

#include <adwaita.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "desktop/commands.h"
#include "desktop/find_bar.h"
#include "desktop/item_facts.h"
#include "desktop/panel_menu.h"
#include "desktop/panel_size.h"
#include "desktop/presentation.h"
#include "desktop/shortcuts_window.h"
#include "desktop/waiting_wheel.h"

namespace lumisk::desktop {

/// Where the person wants to go among the items that can be shown.
enum class SelectionStep { Up, Down, Left, Right };

/// The preview panel: one window with a title, a button for the item's default application, and
/// the hosted view edge to edge. It is made once and used for one item after another.
///
///     header bar      back, title, open with, menu
///     find bar        while it is open
///     content         a presentation's root surface, or a calm page that says why there is none
class Panel {
 public:
  /// All are borrowed. Large files are made ready by `preparing`.
  Panel(const Platform& platform, LiveViews& liveViews,
        BackgroundQueue& preparing = preparationQueue());
  Panel(const Panel&) = delete;
  Panel& operator=(const Panel&) = delete;
  ~Panel();

  /// Shows the item, in the place of what was shown before. The window appears if it is not there;
  /// else it comes no further forward.
  void show(const FileURL& url);
  /// Shows a calm page instead of an item: there is none, for the reason that `sentence` gives.
  void showUnavailable(const std::string& title, const std::string& sentence);
  /// Brings the window forward and gives it the keyboard, as one that is about to come does anyway.
  void present();
  /// Lets go of what is shown and takes the window off the screen.
  void close();
  void perform(Command command);

  GtkWindow* window() const { return window_; }
  /// Whether the window is on the screen, or about to come.
  bool isVisible() const { return isOnScreen() || coming_.isPending(); }
  /// Null when nothing is shown, the last request failed, or its item is still being made ready.
  Presentation* presentation() const { return presentation_.get(); }
  /// Whether what is shown is a large item that is not ready yet.
  bool isMakingReady() const { return isMakingReady_; }
  /// Null while nothing is shown, or a large item is being made ready.
  GtkWidget* content() const { return adw_bin_get_child(ADW_BIN(contentBin_)); }
  FindBar& findBar() const { return *findBar_; }
  DesktopWebViews& webViews() { return webViews_; }
  double zoom() const { return zoom_; }

  std::function<void()> onClosed;
  std::function<void()> onQuit;
  /// An arrow key; without this the arrows scroll.
  std::function<void(SelectionStep)> onSelectionStep;
  /// A page's load has finished.
  std::function<void()> onPageFinished;

 private:
  void buildWindow();
  GtkWidget* buildHeader();
  GtkWidget* buildContent();
  void renewKeys();
  bool isOnScreen() const { return gtk_widget_get_visible(GTK_WIDGET(window_)) == TRUE; }
  void makeReady();
  void prepareBeside();
  void listOnceDrawn();
  void ask();
  void take(std::unique_ptr<Presentation> presentation);
  /// Has the window come when the engine is ready for it, or shortly after.
  void comeSoon();
  void appear();
  void fitWindow();
  void showStatus(const ErrorRecord& error);
  void showCrash();
  void setContent(GtkWidget* content);
  void dropContent();
  void endPreparation();
  ShownDocument shownDocument() const;
  bool isPageComing() const;
  FindTarget findTarget() const;
  void updateWheel();
  void updateHeader();
  void updateCommands();
  /// Hands the keys to what is shown, past the picker of its modes.
  void focusDocument() const;
  void closeFindBar() const;
  void contentChanged();
  void setZoomLevel(double zoom);
  void openWithDefault();
  PageFocus pageFocus() const;
  bool isTyping() const;
  bool isPressing(const KeyReading& reading) const;
  bool takesKey(const std::vector<KeyReading>& readings);
  bool moveSelection(const KeyReading& reading);

  static gboolean keyPressed(GtkEventControllerKey* keys, guint, guint, GdkModifierType,
                             gpointer self);
  static gboolean wheelTurned(GtkEventControllerScroll* wheel, double, double dy, gpointer self);
  static gboolean closeRequested(GtkWindow*, gpointer self);

  const Platform& platform_;
  BackgroundQueue& preparing_;
  DesktopWebViews webViews_;
  RenderContext context_{platform_, webViews_};
  GtkWindow* window_ = nullptr;
  GtkEventController* keys_ = nullptr;
  GtkWidget* title_ = nullptr;
  GtkWidget* backButton_ = nullptr;
  GtkWidget* openButton_ = nullptr;
  GtkWidget* contentBin_ = nullptr;
  GtkWidget* toasts_ = nullptr;
  std::unique_ptr<PanelMenu> menu_;
  std::unique_ptr<FindBar> findBar_;
  std::unique_ptr<Presentation> presentation_;
  /// While a large item is made ready, and until its page can be seen.
  std::unique_ptr<WaitingWheel> waitingWheel_;
  bool isMakingReady_ = false;
  std::unique_ptr<Preparation> preparation_;
  std::unique_ptr<SignalHandler> drawn_;
  Deferred listing_;
  std::optional<FileURL> url_;
  ItemFacts facts_;
  double zoom_ = 1;
  /// The size that the window was last given by the program; another one is the person's.
  std::optional<Size> givenSize_;
  bool isSizedByPerson_ = false;
  Deferred coming_;
  Deferred afterCrash_;
  ShortcutsWindow shortcuts_;
};

}  // namespace lumisk::desktop
