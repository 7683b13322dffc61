#pragma once

#include "web/html_preview_view.h"
#include "web/web_view.h"

namespace lumisk {

/// A web view's delegate: turns the end of a load and the messages of page scripts into calls of
/// the callbacks of the view that it was made for.
class Coordinator final : public NavigationDelegate, public ScriptMessageHandler {
 public:
  /// Keeps a copy of `parent`: the callbacks of later versions of the view are not seen.
  explicit Coordinator(HTMLPreviewView parent) : parent_(std::move(parent)) {}

  const HTMLPreviewView& parent() const { return parent_; }

  /// Calls `onLoad`, after the first navigation and after every other.
  void didFinishNavigation() override;
  /// Calls `onCheckboxToggle` for `{type: "checkbox", index: <integer>, checked: <boolean>}`, with
  /// whatever else the dictionary holds. Anything else is ignored without a trace: a page's
  /// scripts may post what they like.
  void didReceiveScriptMessage(const ScriptMessageBody& body) override;

 private:
  HTMLPreviewView parent_;
};

}  // namespace lumisk
