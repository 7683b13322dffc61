#include "desktop/service/preview_service.h"

#include <utility>

namespace lumisk::desktop {

PreviewService::PreviewService(GDBusConnection* connection, PreviewHost& host,
                               ItemResolver& resolver, const ServiceTimes& times)
    : host_(host),
      times_(times),
      session_(host, resolver),
      exported_(connection, session_, host),
      held_(connection) {
  exported_.onCall = [this] { somethingHappened(); };
  session_.onShown = [this] { stateChanged(); };
  host_.setOnVisibilityChanged([this] { stateChanged(); });
  host_.setOnSelectionEvent([this](SelectionDirection direction) { selectionWanted(direction); });
  somethingHappened();
}

PreviewService::~PreviewService() {
  host_.setOnVisibilityChanged({});
  host_.setOnSelectionEvent({});
}

void PreviewService::answerTo(std::vector<std::string> names) {
  names_ = std::move(names);
  // A program that is about to end must not be called any more.
  if (!isLeaving_) held_.claim(names_);
}

void PreviewService::open(std::vector<std::string> uris, const std::string& activationToken) {
  session_.open(std::move(uris), activationToken);
  somethingHappened();
}

void PreviewService::stateChanged() {
  exported_.announceChanges();
  somethingHappened();
}

void PreviewService::selectionWanted(SelectionDirection direction) {
  if (!session_.moveSelection(direction)) exported_.sendSelectionEvent(direction);
}

void PreviewService::somethingHappened() {
  isLeaving_ = false;
  held_.claim(names_);
  warmUp_.cancel();
  idle_.cancel();
  if (session_.isBusy()) return;
  warmUp_.after(times_.beforeWarmUpMilliseconds, [this] { host_.warmUp(); });
  idle_.after(times_.idleMilliseconds, [this] { goodbye(); });
}

// Whoever calls from now on has the bus start a new service, which waits until this one is gone;
// calls that are under way still reach this one, and keep it.
void PreviewService::goodbye() {
  isLeaving_ = true;
  held_.release();
  idle_.after(times_.farewellMilliseconds, [this] {
    if (onIdle) onIdle();
  });
}

}  // namespace lumisk::desktop
