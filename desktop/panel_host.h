#pragma once

#include <memory>
#include <string>

#include "desktop/gtk_platform.h"
#include "desktop/live_view.h"
#include "desktop/panel.h"
#include "desktop/service/preview_host.h"
#include "desktop/web_engine.h"

namespace lumisk::desktop {

/// The panel as the services see it. It and all that it stands on are made when first needed: a
/// program that the bus started in advance costs little until then.
class PanelHost final : public PreviewHost {
 public:
  /// Both are borrowed. The panel's window belongs to `application`.
  PanelHost(const EngineFiles& files, GtkApplication* application);
  PanelHost(const PanelHost&) = delete;
  PanelHost& operator=(const PanelHost&) = delete;
  ~PanelHost() override;

  void show(const PreviewRequest& request) override;
  void close() override;
  void warmUp() override;

  bool isVisible() const override;
  std::string currentUri() const override { return isVisible() ? uri_ : ""; }
  std::string parentHandle() const override { return isVisible() ? parentHandle_ : ""; }

  void setOnVisibilityChanged(std::function<void()> handler) override;
  void setOnClosedByPerson(std::function<void()> handler) override;
  void setOnSelectionEvent(std::function<void(SelectionDirection)> handler) override;

  /// Brings the window forward, if it is there.
  void present();
  std::function<void()> onQuit;

 private:
  struct Parts;
  Panel& panel();
  void setParent(const std::string& handle);

  const EngineFiles& files_;
  GtkApplication* application_;
  std::unique_ptr<Parts> parts_;
  std::string uri_;
  std::string parentHandle_;
  Deferred resting_;
  bool isToldToClose_ = false;
  std::function<void()> visibilityChanged_;
  std::function<void()> closedByPerson_;
  std::function<void(SelectionDirection)> selectionEvent_;
};

}  // namespace lumisk::desktop
