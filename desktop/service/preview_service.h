#pragma once

#include <gio/gio.h>

#include <functional>
#include <string>
#include <vector>

#include "desktop/gref.h"
#include "desktop/service/bus_names.h"
#include "desktop/service/exported_previewer.h"
#include "desktop/service/item_resolver.h"
#include "desktop/service/preview_host.h"
#include "desktop/service/preview_session.h"

namespace lumisk::desktop {

struct ServiceTimes {
  /// How long the service stays without anything shown. A preview prepared in vain counts as
  /// nothing shown.
  unsigned idleMilliseconds = 30'000;
  /// How long nothing must have happened before the next preview is prepared: starting and showing
  /// come first.
  unsigned beforeWarmUpMilliseconds = 400;
  /// How long a call that the bus had already routed here may take to arrive.
  unsigned farewellMilliseconds = 100;
};

/// The previewer as a service of the session bus, in front of one window.
class PreviewService {
 public:
  /// All but `times` are borrowed.
  PreviewService(GDBusConnection* connection, PreviewHost& host, ItemResolver& resolver,
                 const ServiceTimes& times = {});
  PreviewService(const PreviewService&) = delete;
  PreviewService& operator=(const PreviewService&) = delete;
  ~PreviewService();

  /// Answers to exactly these names, or, when it has given them up to end, once a call keeps it. To
  /// be called once everything is in place: calls that started the program wait on the bus until
  /// then.
  void answerTo(std::vector<std::string> names);

  /// Shows items for somebody who is no file manager; see `PreviewSession::open`.
  void open(std::vector<std::string> uris, const std::string& activationToken);

  /// Nothing has been shown for long and the names are given up: the program should end.
  std::function<void()> onIdle;

 private:
  void stateChanged();
  void selectionWanted(SelectionDirection direction);
  void somethingHappened();
  void goodbye();

  PreviewHost& host_;
  ServiceTimes times_;
  PreviewSession session_;
  ExportedPreviewer exported_;
  BusNames held_;
  std::vector<std::string> names_;
  bool isLeaving_ = false;
  Deferred warmUp_;
  Deferred idle_;
};

}  // namespace lumisk::desktop
