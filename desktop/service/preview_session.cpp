#include "desktop/service/preview_session.h"

#include <utility>

namespace lumisk::desktop {

namespace {

/// In which the news that the window has gone reaches a file manager, even a busy one; too short
/// for anybody to choose another item and to want it shown.
constexpr std::int64_t kNewsInMilliseconds = 300;
constexpr std::int64_t kMicrosecondsInMillisecond = 1000;

// "file:///a%20b" and "file:/a b" are one file; other schemes have no common form.
bool nameTheSame(const std::string& one, const std::string& other) {
  if (one == other) return true;
  const auto oneURL = FileURL::fromString(one);
  const auto otherURL = FileURL::fromString(other);
  return oneURL && otherURL && oneURL->path() == otherURL->path();
}

bool isForward(SelectionDirection direction) {
  return direction == SelectionDirection::Right || direction == SelectionDirection::Down;
}

}  // namespace

PreviewSession::PreviewSession(PreviewHost& host, ItemResolver& resolver, Clock clock)
    : host_(host), resolver_(resolver), clock_(std::move(clock)) {
  host_.setOnClosedByPerson([this] { personClosed(); });
}

PreviewSession::~PreviewSession() { host_.setOnClosedByPerson({}); }

PreviewSession::Clock PreviewSession::monotonicClock() {
  return [] { return g_get_monotonic_time() / kMicrosecondsInMillisecond; };
}

void PreviewSession::showFile(const ShowCall& call) {
  if (isAlready(call.uri)) {
    if (call.closeIfAlreadyShown) toggleOff(call);
    return;
  }
  if (isOutdated(call)) return;
  walk_.clear();
  want(call);
  // Whoever wants it closed by the same call pressed the key for it; otherwise the selection moved.
  waiting_->comesForward = call.closeIfAlreadyShown;
}

void PreviewSession::open(std::vector<std::string> uris, const std::string& activationToken) {
  if (uris.empty()) return;
  walk_ = std::move(uris);
  place_ = 0;
  want({.uri = walk_.front(),
        .activationToken = activationToken,
        .arrows = walk_.size() > 1 ? Arrows::Select : Arrows::Scroll,
        .comesForward = true});
}

void PreviewSession::close() {
  forget();
  if (host_.isVisible()) host_.close();
}

// Space in the file manager's own window. Whoever calls without a window is a script, which knows
// what it does.
void PreviewSession::toggleOff(const ShowCall& call) {
  const bool wasVisible = host_.isVisible();
  close();
  if (wasVisible && !call.parentHandle.empty()) closedByPersonAt_ = clock_();
}

// What was still being looked up must not bring the window back.
void PreviewSession::personClosed() {
  forget();
  closedByPersonAt_ = clock_();
}

void PreviewSession::forget() {
  later_.cancel();
  resolver_.cancel();
  waiting_.reset();
  walk_.clear();
}

bool PreviewSession::moveSelection(SelectionDirection direction) {
  if (walk_.size() < 2) return false;
  const bool isAtEnd = isForward(direction) ? place_ + 1 == walk_.size() : place_ == 0;
  if (isAtEnd) return true;
  place_ = isForward(direction) ? place_ + 1 : place_ - 1;
  want({.uri = walk_[place_], .parentHandle = host_.parentHandle()});
  return true;
}

bool PreviewSession::isAlready(const std::string& uri) const {
  if (waiting_) return nameTheSame(waiting_->uri, uri);
  return host_.isVisible() && nameTheSame(host_.currentUri(), uri);
}

// The file manager whose window it was, told by an arrow key to select another item, says so to a
// preview that the person has closed meanwhile: it speaks of the selection to a visible one only.
bool PreviewSession::isOutdated(const ShowCall& call) const {
  if (call.closeIfAlreadyShown || isBusy() || !closedByPersonAt_) return false;
  return call.parentHandle == lastParent_ && clock_() - *closedByPersonAt_ < kNewsInMilliseconds;
}

void PreviewSession::want(const ShowCall& call) {
  resolver_.cancel();
  waiting_ = call;
  later_.after(0, [this] { carryOut(); });
}

void PreviewSession::carryOut() {
  resolver_.resolve(waiting_->uri, [this](ItemOrReason item) {
    const ShowCall call = *std::exchange(waiting_, std::nullopt);
    lastParent_ = call.parentHandle;
    host_.show({.uri = call.uri,
                .item = std::move(item),
                .parentHandle = call.parentHandle,
                .activationToken = call.activationToken,
                .arrows = call.arrows,
                .comesForward = call.comesForward});
    if (onShown) onShown();
  });
}

}  // namespace lumisk::desktop
