#include "desktop/panel_host.h"

#include <utility>

#include "desktop/activation.h"
#include "desktop/display_text.h"
#include "desktop/frame_memory.h"
#include "desktop/parent_window.h"
#include "desktop/service/window_handle.h"
#include "desktop/texts.h"

namespace lumisk::desktop {
namespace {

/// Who looks at one file after another opens the next within this time.
constexpr unsigned kRest = 3'000;  // milliseconds

SelectionDirection directionOf(SelectionStep step) {
  switch (step) {
    case SelectionStep::Up:
      return SelectionDirection::Up;
    case SelectionStep::Down:
      return SelectionDirection::Down;
    case SelectionStep::Left:
      return SelectionDirection::Left;
    case SelectionStep::Right:
      break;
  }
  return SelectionDirection::Right;
}

const char* sentenceOf(NoItemReason reason) {
  switch (reason) {
    case NoItemReason::BadAddress:
      return tr("request.bad-address");
    case NoItemReason::NotLocal:
      return tr("request.not-local");
    case NoItemReason::Unreachable:
      break;
  }
  return tr("request.unreachable");
}

}  // namespace

struct PanelHost::Parts {
  explicit Parts(const EngineFiles& files)
      : platform(files.localeFolder), engine(files), liveViews(engine) {}

  GtkPlatform platform;
  WebEngine engine;
  LiveViews liveViews;
  Panel panel{platform.platform(), liveViews};
};

PanelHost::PanelHost(const EngineFiles& files, GtkApplication* application)
    : files_(files), application_(application) {}

PanelHost::~PanelHost() = default;

Panel& PanelHost::panel() {
  if (parts_) return parts_->panel;
  parts_ = std::make_unique<Parts>(files_);
  Panel& panel = parts_->panel;
  panel.onClosed = [this] {
    resting_.after(kRest, releaseFrameMemory);
    if (!isToldToClose_ && closedByPerson_) closedByPerson_();
    if (visibilityChanged_) visibilityChanged_();
  };
  panel.onQuit = [this] {
    if (onQuit) onQuit();
  };
  gtk_window_set_application(panel.window(), application_);
  return panel;
}

void PanelHost::show(const PreviewRequest& request) {
  Panel& shown = panel();
  const bool wasVisible = isVisible();
  resting_.cancel();
  uri_ = request.uri;
  setParent(request.parentHandle);
  shown.onSelectionStep = nullptr;
  if (request.arrows == Arrows::Select) {
    shown.onSelectionStep = [this](SelectionStep step) {
      if (selectionEvent_) selectionEvent_(directionOf(step));
    };
  }
  if (!wasVisible || request.comesForward)
    setActivationToken(shown.window(), request.activationToken);
  if (const auto* url = std::get_if<FileURL>(&request.item)) {
    shown.show(*url);
  } else {
    shown.showUnavailable(displayTitle(request.uri),
                          sentenceOf(std::get<NoItemReason>(request.item)));
  }
  if (wasVisible && request.comesForward) shown.present();
  if (!wasVisible && visibilityChanged_) visibilityChanged_();
}

void PanelHost::setParent(const std::string& handle) {
  // Moving a visible window between parents makes it flicker on some compositors; a window that was
  // hidden has lost its parent on Wayland.
  const bool isSame = std::exchange(parentHandle_, handle) == handle;
  if (isSame && isVisible()) return;
  gtk_widget_realize(GTK_WIDGET(panel().window()));
  setParentWindow(panel().window(), parseWindowHandle(handle));
}

void PanelHost::close() {
  if (!parts_) return;
  isToldToClose_ = true;
  parts_->panel.close();
  isToldToClose_ = false;
}

void PanelHost::warmUp() {
  panel();
  parts_->liveViews.warmUp();
}

bool PanelHost::isVisible() const { return parts_ && parts_->panel.isVisible(); }

void PanelHost::setOnVisibilityChanged(std::function<void()> handler) {
  visibilityChanged_ = std::move(handler);
}

void PanelHost::setOnClosedByPerson(std::function<void()> handler) {
  closedByPerson_ = std::move(handler);
}

void PanelHost::setOnSelectionEvent(std::function<void(SelectionDirection)> handler) {
  selectionEvent_ = std::move(handler);
}

void PanelHost::present() {
  if (isVisible()) parts_->panel.present();
}

}  // namespace lumisk::desktop
