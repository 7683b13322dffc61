#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "desktop/service/preview_host.h"

namespace lumisk::desktop::test {

/// A window that appears and goes at once, and records what was asked of it.
class FakePreviewHost final : public PreviewHost {
 public:
  void show(const PreviewRequest& request) override {
    shown.push_back(request);
    const bool wasVisible = std::exchange(isVisible_, true);
    if (!wasVisible && visibilityChanged_) visibilityChanged_();
  }
  void close() override {
    ++closeCount;
    const bool wasVisible = std::exchange(isVisible_, false);
    if (wasVisible && visibilityChanged_) visibilityChanged_();
  }
  /// The person presses a key that closes the window.
  void closeByPerson() {
    isVisible_ = false;
    if (closedByPerson_) closedByPerson_();
    if (visibilityChanged_) visibilityChanged_();
  }
  void warmUp() override { ++warmUpCount; }
  bool isVisible() const override { return isVisible_; }
  std::string currentUri() const override { return isVisible_ ? shown.back().uri : ""; }
  std::string parentHandle() const override { return isVisible_ ? shown.back().parentHandle : ""; }
  void setOnVisibilityChanged(std::function<void()> handler) override {
    visibilityChanged_ = std::move(handler);
  }
  void setOnClosedByPerson(std::function<void()> handler) override {
    closedByPerson_ = std::move(handler);
  }
  void setOnSelectionEvent(std::function<void(SelectionDirection)> handler) override {
    press = std::move(handler);
  }

  std::vector<std::string> shownUris() const {
    std::vector<std::string> uris;
    for (const PreviewRequest& request : shown) uris.push_back(request.uri);
    return uris;
  }

  std::vector<PreviewRequest> shown;
  int closeCount = 0;
  int warmUpCount = 0;
  /// The person presses an arrow key.
  std::function<void(SelectionDirection)> press;

 private:
  bool isVisible_ = false;
  std::function<void()> visibilityChanged_;
  std::function<void()> closedByPerson_;
};

}  // namespace lumisk::desktop::test
