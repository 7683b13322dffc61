#include "desktop/web_engine.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "desktop/client_libraries.h"
#include "desktop/first_frame.h"
#include "desktop/graphics.h"
#include "desktop/page_focus.h"
#include "desktop/page_menu.h"
#include "desktop/page_scripts.h"
#include "desktop/web_extension/store_message.h"

namespace lumisk::desktop {
namespace {

GRef<WebKitWebContext> makeContext(const EngineFiles& files) {
  auto context = GRef<WebKitWebContext>::adopt(webkit_web_context_new());
  if (!g_file_test(files.extensionFolder.c_str(), G_FILE_TEST_IS_DIR)) return context;
  // The web process sees nothing but /usr of the disk; elsewhere the module would be left out
  // without a word.
  webkit_web_context_add_path_to_sandbox(context.get(), files.extensionFolder.c_str(), TRUE);
  webkit_web_context_set_web_process_extensions_directory(context.get(),
                                                          files.extensionFolder.c_str());
  webkit_web_context_set_web_process_extensions_initialization_user_data(
      context.get(), toVariant(readLibraryStore(files.storeFolder)));
  return context;
}

/// Takes functions out of the engine that have no setting of their own. One that it does not know
/// is not there to be taken out.
void takeOut(WebKitSettings* settings, std::initializer_list<std::string_view> features) {
  WebKitFeatureList* const all = webkit_settings_get_all_features();
  for (gsize i = 0; i < webkit_feature_list_get_length(all); ++i) {
    WebKitFeature* const feature = webkit_feature_list_get(all, i);
    const std::string_view name = webkit_feature_get_identifier(feature);
    if (std::find(features.begin(), features.end(), name) != features.end())
      webkit_settings_set_feature_enabled(settings, feature, FALSE);
  }
  webkit_feature_list_unref(all);
}

GRef<WebKitSettings> makeSettings(bool hasCard) {
  auto settings = GRef<WebKitSettings>::adopt(webkit_settings_new());
  webkit_settings_set_enable_javascript(settings.get(), TRUE);
  webkit_settings_set_javascript_can_open_windows_automatically(settings.get(), FALSE);
  // What a page leaves behind would reach the next document in the same view.
  webkit_settings_set_enable_html5_local_storage(settings.get(), FALSE);
  webkit_settings_set_enable_html5_database(settings.get(), FALSE);
  webkit_settings_set_enable_page_cache(settings.get(), FALSE);
  // The whole screen is the panel's to give: Escape would close it and not what asked for it.
  webkit_settings_set_enable_fullscreen(settings.get(), FALSE);
  takeOut(settings.get(), {"CacheAPI", "Cookie", "CookieStoreAPI"});
  if (!hasCard)
    webkit_settings_set_hardware_acceleration_policy(settings.get(),
                                                     WEBKIT_HARDWARE_ACCELERATION_POLICY_NEVER);
  return settings;
}

/// No: no page that is being looked at needs the camera, the place or the notifications.
gboolean denyPermission(WebKitWebView*, WebKitPermissionRequest* request, gpointer) {
  webkit_permission_request_deny(request);
  return TRUE;
}

/// A question of a page would cover the preview and hold up its load. It gets the answer that lets
/// the person go on, to leave the page above all.
gboolean answerDialog(WebKitWebView*, WebKitScriptDialog* dialog, gpointer) {
  const WebKitScriptDialogType type = webkit_script_dialog_get_dialog_type(dialog);
  if (type == WEBKIT_SCRIPT_DIALOG_CONFIRM || type == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM)
    webkit_script_dialog_confirm_set_confirmed(dialog, TRUE);
  return TRUE;
}

/// A person prints by the panel's own command; a page's script does not.
gboolean refusePrint(WebKitWebView*, WebKitPrintOperation*, gpointer) { return TRUE; }

/// Nobody is asked for a password by something that is being looked at: the site says what it says
/// without one.
gboolean refuseLogin(WebKitWebView*, WebKitAuthenticationRequest* request, gpointer) {
  webkit_authentication_request_authenticate(request, nullptr);
  return TRUE;
}

/// Nor for a file, which the page could read and send away, or for a colour.
gboolean refuseFile(WebKitWebView*, WebKitFileChooserRequest* request, gpointer) {
  webkit_file_chooser_request_cancel(request);
  return TRUE;
}
gboolean refuseColour(WebKitWebView*, WebKitColorChooserRequest* request, gpointer) {
  webkit_color_chooser_request_cancel(request);
  return TRUE;
}

/// Refuses what would leave the view: new windows and files to download.
gboolean decidePolicy(WebKitWebView* view, WebKitPolicyDecision* decision,
                      WebKitPolicyDecisionType type, gpointer) {
  if (type == WEBKIT_POLICY_DECISION_TYPE_NEW_WINDOW_ACTION) {
    // A link that asks for a window of its own opens in this one.
    WebKitNavigationAction* action = webkit_navigation_policy_decision_get_navigation_action(
        WEBKIT_NAVIGATION_POLICY_DECISION(decision));
    if (webkit_navigation_action_get_navigation_type(action) == WEBKIT_NAVIGATION_TYPE_LINK_CLICKED)
      webkit_web_view_load_request(view, webkit_navigation_action_get_request(action));
    webkit_policy_decision_ignore(decision);
    return TRUE;
  }
  if (type != WEBKIT_POLICY_DECISION_TYPE_RESPONSE) return FALSE;
  if (webkit_response_policy_decision_is_mime_type_supported(
          WEBKIT_RESPONSE_POLICY_DECISION(decision)))
    return FALSE;
  webkit_policy_decision_ignore(decision);
  return TRUE;
}

void refuseDownload(WebKitNetworkSession*, WebKitDownload* download, gpointer) {
  webkit_download_cancel(download);
}

void setCookiePolicy(WebKitNetworkSession* session, WebKitCookieAcceptPolicy policy) {
  webkit_cookie_manager_set_accept_policy(webkit_network_session_get_cookie_manager(session),
                                          policy);
}

GRef<WebKitNetworkSession> makeSession() {
  auto session = GRef<WebKitNetworkSession>::adopt(webkit_network_session_new_ephemeral());
  g_signal_connect(session.get(), "download-started", G_CALLBACK(refuseDownload), nullptr);
  // Those of a document's images would be sent along by the next document with an image from there.
  setCookiePolicy(session.get(), WEBKIT_COOKIE_POLICY_ACCEPT_NEVER);
  return session;
}

}  // namespace

WebEngine::WebEngine(const EngineFiles& files)
    : isDrawnByCard_(hasGraphicsCard()),
      context_(makeContext(files)),
      session_(makeSession()),
      settings_(makeSettings(isDrawnByCard_)) {
  GdkDisplay* display = gdk_display_get_default();
  if (display != nullptr && !isDrawnByCard_) drawInSoftware(display);
}

void WebEngine::forgetSites() { session_ = makeSession(); }

void WebEngine::acceptCookies(WebKitWebView* view) {
  setCookiePolicy(webkit_web_view_get_network_session(view),
                  WEBKIT_COOKIE_POLICY_ACCEPT_NO_THIRD_PARTY);
}

GRef<WebKitWebView> WebEngine::makeView() const {
  const auto policies = GRef<WebKitWebsitePolicies>::adopt(
      webkit_website_policies_new_with_policies("autoplay", WEBKIT_AUTOPLAY_DENY, nullptr));
  auto view = GRef<WebKitWebView>::retain(WEBKIT_WEB_VIEW(g_object_new(
      WEBKIT_TYPE_WEB_VIEW, "web-context", context_.get(), "network-session", session_.get(),
      "settings", settings_.get(), "website-policies", policies.get(), nullptr)));
  WebKitUserContentManager* const manager = webkit_web_view_get_user_content_manager(view.get());
  PageFocusWatch::install(manager);
  FirstFrame::install(manager, isDrawnByCard_);
  installPageScripts(manager);
  const GdkRGBA transparent{0, 0, 0, 0};
  webkit_web_view_set_background_color(view.get(), &transparent);
  g_signal_connect(view.get(), "permission-request", G_CALLBACK(denyPermission), nullptr);
  g_signal_connect(view.get(), "script-dialog", G_CALLBACK(answerDialog), nullptr);
  g_signal_connect(view.get(), "print", G_CALLBACK(refusePrint), nullptr);
  g_signal_connect(view.get(), "authenticate", G_CALLBACK(refuseLogin), nullptr);
  g_signal_connect(view.get(), "run-file-chooser", G_CALLBACK(refuseFile), nullptr);
  g_signal_connect(view.get(), "run-color-chooser", G_CALLBACK(refuseColour), nullptr);
  g_signal_connect(view.get(), "decide-policy", G_CALLBACK(decidePolicy), nullptr);
  trimPageMenu(view.get());
  return view;
}

}  // namespace lumisk::desktop
