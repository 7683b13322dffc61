#pragma once

#include <memory>

#include "desktop/gref.h"
#include "desktop/node_elements.h"

namespace lumisk::desktop {

/// A wheel in the middle of what is shown, while a person has to wait for more. What is there soon
/// comes without one.
class WaitingWheel {
 public:
  /// Over `place`, which is borrowed.
  explicit WaitingWheel(GtkOverlay* place) : place_(place) {}
  WaitingWheel(const WaitingWheel&) = delete;
  WaitingWheel& operator=(const WaitingWheel&) = delete;
  ~WaitingWheel() { go(); }

  /// Has it come in a moment; one that is there already stays as it is.
  void comeSoon();
  void go();

 private:
  GtkOverlay* place_;
  std::unique_ptr<NodeElement> wheel_;
  Deferred coming_;
};

/// Whether something that is shown below `widget` says already that more is to come.
bool holdsWheel(GtkWidget* widget);

}  // namespace lumisk::desktop
