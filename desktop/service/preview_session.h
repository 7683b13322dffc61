#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "desktop/gref.h"
#include "desktop/service/item_resolver.h"
#include "desktop/service/preview_host.h"

namespace lumisk::desktop {

/// What a `ShowFile` call says; `arrows` is ours.
struct ShowCall {
  std::string uri = {};
  std::string parentHandle = {};
  bool closeIfAlreadyShown = false;
  std::string activationToken = {};
  Arrows arrows = Arrows::Select;
  bool comesForward = false;  // ours, too; see `PreviewRequest`
};

/// Decides what the preview window does for each call.
///
/// - The item that is shown, or about to be: closes when the caller says so (its person pressed
///   Space again), else nothing happens (its selection moved to where it was).
/// - Another item: the window is used again.
/// - The selection moved, says a call that comes just after the person closed the window, in it or
///   by Space in the file manager: the caller had not heard of that yet, and nothing happens.
///
/// A call for an item is only noted and carried out in a later turn of the main loop, so callers
/// are answered first and of many calls that wait in line the last one alone is loaded. A call that
/// closes is carried out at once.
class PreviewSession {
 public:
  /// Milliseconds of a clock that only goes forward.
  using Clock = std::function<std::int64_t()>;

  /// The first two are borrowed.
  PreviewSession(PreviewHost& host, ItemResolver& resolver, Clock clock = monotonicClock());
  PreviewSession(const PreviewSession&) = delete;
  PreviewSession& operator=(const PreviewSession&) = delete;
  ~PreviewSession();

  void showFile(const ShowCall& call);
  /// Shows the first of these, in a window of its own right; the arrow keys then walk through them.
  void open(std::vector<std::string> uris, const std::string& activationToken);
  void close();

  /// An arrow key: true when it moved within what `open` was given, so that nobody else need know.
  bool moveSelection(SelectionDirection direction);

  /// Whether something is shown or about to be.
  bool isBusy() const { return waiting_.has_value() || host_.isVisible(); }

  /// Called after the host was told to show something.
  std::function<void()> onShown;

 private:
  static Clock monotonicClock();
  void personClosed();
  void toggleOff(const ShowCall& call);
  void forget();
  bool isAlready(const std::string& uri) const;
  bool isOutdated(const ShowCall& call) const;
  void want(const ShowCall& call);
  void carryOut();

  PreviewHost& host_;
  ItemResolver& resolver_;
  Clock clock_;
  /// The call to be carried out, until the host has been told.
  std::optional<ShowCall> waiting_;
  Deferred later_;
  std::vector<std::string> walk_;
  std::size_t place_ = 0;
  /// Whose item the host was told to show last.
  std::string lastParent_;
  std::optional<std::int64_t> closedByPersonAt_;
};

}  // namespace lumisk::desktop
