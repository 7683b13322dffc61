#include "desktop/host_scripts.h"

#include <utility>

#include "desktop/service/owned.h"

namespace lumisk::desktop {
namespace {

/// A boolean would be refused: the engine takes numbers, texts, arrays and dictionaries.
OwnedVariant argument(const char* name, bool isTrue) {
  GVariantDict arguments;
  g_variant_dict_init(&arguments, nullptr);
  g_variant_dict_insert(&arguments, name, "i", isTrue ? 1 : 0);
  return OwnedVariant(g_variant_ref_sink(g_variant_dict_end(&arguments)));
}

}  // namespace

void runAtEachPage(WebKitUserContentManager* manager, const char* script) {
  WebKitUserScript* const added = webkit_user_script_new_for_world(
      script, WEBKIT_USER_CONTENT_INJECT_TOP_FRAME, WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START,
      kHostWorld, nullptr, nullptr);
  webkit_user_content_manager_add_script(manager, added);
  webkit_user_script_unref(added);
}

void runInPage(WebKitWebView* page, const std::string& script) {
  webkit_web_view_evaluate_javascript(page, script.c_str(), -1, kHostWorld, nullptr, nullptr,
                                      nullptr, nullptr);
}

void PageQuestion::ask(WebKitWebView* page, const char* script, const char* name, bool isTrue,
                       std::function<void()> answered) {
  forget();
  asking_ = GRef<GCancellable>::adopt(g_cancellable_new());
  answered_ = std::move(answered);
  // The engine reads the arguments and keeps none of them.
  webkit_web_view_call_async_javascript_function(page, script, -1, argument(name, isTrue).get(),
                                                 kHostWorld, nullptr, asking_.get(),
                                                 &PageQuestion::ended, this);
}

void PageQuestion::forget() {
  if (asking_) g_cancellable_cancel(asking_.get());
  asking_ = {};
  answered_ = nullptr;
}

void PageQuestion::ended(GObject* page, GAsyncResult* result, gpointer self) {
  GError* error = nullptr;
  JSCValue* value =
      webkit_web_view_call_async_javascript_function_finish(WEBKIT_WEB_VIEW(page), result, &error);
  const bool isForgotten = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED) == TRUE;
  g_clear_error(&error);
  if (value != nullptr) g_object_unref(value);
  if (isForgotten) return;  // and whoever asked may be gone
  auto* question = static_cast<PageQuestion*>(self);
  question->asking_ = {};
  // Called last: the handler may ask the next question, or destroy this object.
  if (const auto answered = std::exchange(question->answered_, nullptr)) answered();
}

}  // namespace lumisk::desktop
