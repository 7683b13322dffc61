#include "screen.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "desktop/style.h"

namespace lumisk::test {

namespace {

constexpr auto kLongestWait = std::chrono::seconds(30);

struct Answer {
  std::string text;
  bool hasCome = false;
};

void answered(GObject* page, GAsyncResult* result, gpointer data) {
  auto* answer = static_cast<Answer*>(data);
  GError* error = nullptr;
  JSCValue* value =
      webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(page), result, &error);
  if (value != nullptr) {
    char* text = jsc_value_to_string(value);
    answer->text = text;
    g_free(text);
    g_object_unref(value);
  } else {
    answer->text = std::string("error: ") + error->message;
    g_error_free(error);
  }
  answer->hasCome = true;
}

// In the page's world before its own scripts: what the page writes to the console is kept.
constexpr const char* kRecorder = R"js(
  window.consoleErrors = [];
  console.error = function() { window.consoleErrors.push(String(arguments[0])); };
)js";

}  // namespace

bool runUntil(const std::function<bool()>& isDone) {
  const auto end = std::chrono::steady_clock::now() + kLongestWait;
  desktop::Deferred tick;
  std::function<void()> again = [&] { tick.after(10, again); };
  again();
  while (!isDone() && std::chrono::steady_clock::now() < end)
    g_main_context_iteration(nullptr, TRUE);
  return isDone();
}

void runFor(unsigned milliseconds) {
  bool isOver = false;
  desktop::Deferred timer;
  timer.after(milliseconds, [&] { isOver = true; });
  while (!isOver) g_main_context_iteration(nullptr, TRUE);
}

gint64 framesWithin(GtkWidget* widget, unsigned milliseconds) {
  GdkFrameClock* const clock = gtk_widget_get_frame_clock(widget);
  const gint64 before = gdk_frame_clock_get_frame_counter(clock);
  runFor(milliseconds);
  return gdk_frame_clock_get_frame_counter(clock) - before;
}

std::string evaluate(WebKitWebView* page, const std::string& script) {
  Answer answer;
  webkit_web_view_evaluate_javascript(page, script.c_str(), -1, nullptr, nullptr, nullptr, answered,
                                      &answer);
  if (!runUntil([&] { return answer.hasCome; })) return "error: no answer";
  return answer.text;
}

void press(const std::string& keys) {
  const std::string command = "xdotool key --clearmodifiers " + keys;
  GPid process = 0;
  const char* words[] = {"/bin/sh", "-c", command.c_str(), nullptr};
  ASSERT_TRUE(g_spawn_async(nullptr, const_cast<char**>(words), nullptr, G_SPAWN_DO_NOT_REAP_CHILD,
                            nullptr, nullptr, &process, nullptr));
  bool hasEnded = false;
  g_child_watch_add(
      process, [](GPid, int, gpointer ended) { *static_cast<bool*>(ended) = true; }, &hasEnded);
  EXPECT_TRUE(runUntil([&] { return hasEnded; }));
  runFor(50);
}

Program& Program::shared() {
  // For the whole run: web processes end with the program.
  static Program program({LUMISK_EXTENSION_FOLDER, LUMISK_STORE_FOLDER, LUMISK_CATALOGUES});
  return program;
}

const std::string kDot(
    "GIF89a\x01\x00\x01\x00\x80\x00\x00\xff\x00\x00\x00\x00\x00,\x00\x00\x00\x00"
    "\x01\x00\x01\x00\x00\x02\x02\x44\x01\x00;",
    35);

PageOnScreen::PageOnScreen(const std::string& html, const FileURL& folder, Program& program)
    : webViews_(program.liveViews),
      context_{program.platform.platform(), webViews_},
      window_(GTK_WINDOW(gtk_window_new())) {
  desktop::installStyle(gtk_widget_get_display(GTK_WIDGET(window_)));
  ui::WebPage page;
  page.htmlContent = html;
  page.baseURL = folder;
  page.onLoad = [this] { isLoaded_ = true; };
  page.onCheckboxToggle = [this](std::int64_t index, bool isChecked) {
    toggles_.push_back({index, isChecked});
  };
  element_ = std::make_unique<desktop::Element>(ui::View(page), desktop::Axis::None, context_);
  WebKitUserContentManager* manager = webkit_web_view_get_user_content_manager(view());
  recorder_ = webkit_user_script_new(kRecorder, WEBKIT_USER_CONTENT_INJECT_TOP_FRAME,
                                     WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, nullptr, nullptr);
  webkit_user_content_manager_add_script(manager, recorder_);
  gtk_window_set_default_size(window_, 900, 800);
  gtk_window_set_child(window_, element_->widget());
  gtk_window_present(window_);
  EXPECT_TRUE(runUntil([this] { return isLoaded_; })) << "the page did not finish loading";
}

PageOnScreen::~PageOnScreen() {
  webkit_user_content_manager_remove_script(webkit_web_view_get_user_content_manager(view()),
                                            recorder_);
  webkit_user_script_unref(recorder_);
  gtk_window_set_child(window_, nullptr);
  element_.reset();
  gtk_window_destroy(window_);
}

bool PageOnScreen::becomes(const std::string& script) {
  return runUntil([&] { return (*this)(script) == "true"; });
}

void copyStoreWithout(const std::filesystem::path& destination,
                      const std::vector<std::string>& missing) {
  std::filesystem::copy(LUMISK_STORE_FOLDER, destination, std::filesystem::copy_options::recursive);
  for (const std::string& file : missing) std::filesystem::remove(destination / file);
}

}  // namespace lumisk::test

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  adw_init();
  return RUN_ALL_TESTS();
}
