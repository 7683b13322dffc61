#include "desktop/panel.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "desktop/accessible_name.h"
#include "desktop/default_application.h"
#include "desktop/document_control.h"
#include "desktop/service/owned.h"
#include "desktop/service/previewer_names.h"
#include "desktop/status_page.h"
#include "desktop/style.h"
#include "desktop/texts.h"

namespace lumisk::desktop {
namespace {

constexpr double kSmallestZoom = 0.3;
constexpr double kLargestZoom = 5;
/// How long the window waits for the engine to ask what it has to before it takes up the page:
/// twice, and it would wait for each answer until the window has drawn itself, which takes longer
/// than all of that.
constexpr unsigned kLongestWait = 40;  // milliseconds
/// A window that draws nothing for so long, as one that nobody sees, is not waited for.
constexpr unsigned kLongestDraw = 300;  // milliseconds
constexpr int kLongestOpenLabel = 26;   // characters

/// Only a long label is cut: where room is short, the title gives way first, which can be cut
/// and still be known.
void showOpenLabel(GtkLabel* label, const std::string& text) {
  const bool isLong = g_utf8_strlen(text.c_str(), -1) > kLongestOpenLabel;
  gtk_label_set_text(label, text.c_str());
  gtk_label_set_ellipsize(label, isLong ? PANGO_ELLIPSIZE_END : PANGO_ELLIPSIZE_NONE);
  gtk_label_set_width_chars(label, isLong ? kLongestOpenLabel : -1);
  gtk_label_set_max_width_chars(label, isLong ? kLongestOpenLabel : -1);
}

/// Nobody can answer a question about a document that has gone, how to print it for one.
void cancelDialogs(GtkWindow* window) {
  GListModel* const windows = gtk_window_get_toplevels();
  for (guint i = g_list_model_get_n_items(windows); i-- > 0;) {
    const auto each = GRef<GtkWindow>::adopt(GTK_WINDOW(g_list_model_get_item(windows, i)));
    if (GTK_IS_DIALOG(each.get()) && gtk_window_get_transient_for(each.get()) == window)
      gtk_dialog_response(GTK_DIALOG(each.get()), GTK_RESPONSE_CANCEL);
  }
}

}  // namespace

Panel::Panel(const Platform& platform, LiveViews& liveViews, BackgroundQueue& preparing)
    : platform_(platform), preparing_(preparing), webViews_(liveViews) {
  webViews_.onTakenUp = [this] {
    if (coming_.isPending()) coming_.after(0, [this] { appear(); });
  };
  webViews_.onDrawn = [this] {
    waitingWheel_->go();
    findBar_->documentCame();
  };
  webViews_.onHistoryChanged = [this] { updateCommands(); };
  // The dying view is still calling; it goes once it has returned.
  webViews_.onTerminated = [this] { afterCrash_.after(0, [this] { showCrash(); }); };
  webViews_.onFinished = [this] {
    findBar_->documentLoaded();
    if (onPageFinished) onPageFinished();
  };
  buildWindow();
}

Panel::~Panel() {
  dropContent();
  findBar_.reset();
  g_signal_handlers_disconnect_by_data(window_, this);
  gtk_window_destroy(window_);
}

void Panel::buildWindow() {
  window_ = GTK_WINDOW(adw_window_new());
  gtk_window_set_icon_name(window_, kApplicationId);
  installStyle(gtk_widget_get_display(GTK_WIDGET(window_)));
  findBar_ = std::make_unique<FindBar>([this] { return findTarget(); });
  GtkWidget* box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
  gtk_box_append(GTK_BOX(box), buildHeader());
  gtk_box_append(GTK_BOX(box), findBar_->widget());
  gtk_box_append(GTK_BOX(box), buildContent());
  adw_window_set_content(ADW_WINDOW(window_), box);
  renewKeys();
  g_signal_connect(window_, "close-request", G_CALLBACK(&Panel::closeRequested), this);
}

GtkWidget* Panel::buildHeader() {
  GtkWidget* header = adw_header_bar_new();
  title_ = adw_window_title_new("", "");
  adw_header_bar_set_title_widget(ADW_HEADER_BAR(header), title_);
  backButton_ = gtk_button_new_from_icon_name("go-previous-symbolic");
  setTooltipAndName(backButton_, tr("panel.back"));
  gtk_widget_set_visible(backButton_, FALSE);
  openButton_ = gtk_button_new();
  gtk_button_set_child(GTK_BUTTON(openButton_), gtk_label_new(nullptr));
  gtk_widget_set_visible(openButton_, FALSE);
  adw_header_bar_pack_start(ADW_HEADER_BAR(header), backButton_);
  menu_ = std::make_unique<PanelMenu>(GTK_WIDGET(window_),
                                      [this](Command command) { perform(command); });
  adw_header_bar_pack_end(ADW_HEADER_BAR(header), menu_->button());
  adw_header_bar_pack_end(ADW_HEADER_BAR(header), openButton_);
  const auto onClick = [this](GtkWidget* button, void (*handler)(Panel*)) {
    g_signal_connect_swapped(button, "clicked", G_CALLBACK(handler), this);
  };
  onClick(backButton_, [](Panel* panel) { panel->perform(Command::GoBack); });
  onClick(openButton_, [](Panel* panel) { panel->perform(Command::OpenWithDefault); });
  return header;
}

GtkWidget* Panel::buildContent() {
  contentBin_ = adw_bin_new();
  gtk_widget_set_vexpand(contentBin_, TRUE);
  gtk_widget_set_hexpand(contentBin_, TRUE);
  GtkEventController* wheel = gtk_event_controller_scroll_new(GTK_EVENT_CONTROLLER_SCROLL_VERTICAL);
  gtk_event_controller_set_propagation_phase(wheel, GTK_PHASE_CAPTURE);
  g_signal_connect(wheel, "scroll", G_CALLBACK(&Panel::wheelTurned), this);
  gtk_widget_add_controller(contentBin_, wheel);
  GtkWidget* place = gtk_overlay_new();
  gtk_overlay_set_child(GTK_OVERLAY(place), contentBin_);
  waitingWheel_ = std::make_unique<WaitingWheel>(GTK_OVERLAY(place));
  toasts_ = adw_toast_overlay_new();
  adw_toast_overlay_set_child(ADW_TOAST_OVERLAY(toasts_), place);
  return toasts_;
}

void Panel::show(const FileURL& url) {
  dropContent();
  url_ = url;
  zoom_ = 1;
  facts_ = readItemFacts(url, platform_);
  webViews_.expect(facts_.size);
  if (facts_.isLarge) return makeReady();
  ask();
}

/// Has the item's preview made, by the thread that draws, and shows it.
void Panel::ask() { take(std::make_unique<Presentation>(*url_, context_)); }

/// Keys are answered meanwhile, and another item may be asked for.
void Panel::makeReady() {
  isMakingReady_ = true;
  waitingWheel_->comeSoon();
  setContent(nullptr);
  if (facts_.isFolder) return listOnceDrawn();
  prepareBeside();
}

void Panel::prepareBeside() {
  webViews_.warmUp();
  const auto onReady = [this](PreparedPreview prepared) {
    preparation_.reset();
    const auto* error = std::get_if<ErrorRecord>(&prepared.preview);
    if (error != nullptr && error->code == EISDIR && error->domain == kPosixErrorDomain)
      return ask();  // a folder has taken the file's place
    take(std::make_unique<Presentation>(std::move(prepared), context_));
    if (zoom_ != 1) setZoomLevel(zoom_);
  };
  preparation_ = std::make_unique<Preparation>(*url_, platform_, preparing_, onReady);
  comeSoon();
}

/// A folder is listed by the thread that draws. So the window turns to it first, and whoever walks
/// on at once waits for no listing.
void Panel::listOnceDrawn() {
  appear();
  listing_.after(kLongestDraw, [this] { ask(); });
  const auto drawn = +[](GdkFrameClock*, gpointer self) {
    auto* panel = static_cast<Panel*>(self);
    panel->listing_.after(0, [panel] { panel->ask(); });
  };
  drawn_ = std::make_unique<SignalHandler>(gtk_widget_get_frame_clock(GTK_WIDGET(window_)),
                                           "after-paint", G_CALLBACK(drawn), this);
}

void Panel::take(std::unique_ptr<Presentation> presentation) {
  presentation_ = std::move(presentation);
  if (const auto error = presentation_->error()) {
    presentation_.reset();
    showStatus(*error);
  } else {
    setContent(presentation_->widget());
    presentation_->onChanged = [this] { contentChanged(); };
  }
  endPreparation();
  updateWheel();
  if (!findTarget().hasText()) closeFindBar();
  if (!webViews_.isTakingUp()) return appear();
  comeSoon();
}

void Panel::comeSoon() {
  if (isOnScreen()) return appear();
  if (!coming_.isPending()) coming_.after(kLongestWait, [this] { appear(); });
}

void Panel::showUnavailable(const std::string& title, const std::string& sentence) {
  dropContent();
  url_.reset();
  zoom_ = 1;
  facts_ = {};
  facts_.iconName = "dialog-error-symbolic";
  facts_.name = title;
  setContent(statusPageNew({facts_.iconName, title, sentence, {}}, nullptr));
  appear();
}

/// A window that is there stays where it is among the others: who walks on in the file manager
/// keeps the keyboard.
void Panel::appear() {
  coming_.cancel();
  updateHeader();
  fitWindow();
  if (isOnScreen()) return;
  renewKeys();
  present();
}

void Panel::present() {
  if (!coming_.isPending()) gtk_window_present(window_);
}

void Panel::close() {
  if (!isVisible()) return;
  coming_.cancel();
  shortcuts_.close();
  gtk_widget_set_visible(GTK_WIDGET(window_), FALSE);
  gtk_window_unfullscreen(window_);  // it was for this item
  dropContent();
  if (onClosed) onClosed();
}

/// What comes late does not take the keys from what the person has gone to meanwhile, the menu
/// perhaps.
void Panel::setContent(GtkWidget* content) {
  GtkWidget* const focus = gtk_root_get_focus(GTK_ROOT(window_));
  const bool isElsewhere = focus != nullptr && focus != contentBin_ &&
                           gtk_widget_is_ancestor(focus, contentBin_) == FALSE;
  adw_bin_set_child(ADW_BIN(contentBin_), content);
  if (!isElsewhere) focusDocument();
}

/// Where nothing is that could take the keys, as in an empty folder, the content as a whole does:
/// the toolkit would give them to a button of the header, which Space would press.
void Panel::focusDocument() const {
  const ShownDocument shown = shownDocument();
  GtkWidget* document = GTK_WIDGET(shown.page);
  if (document == nullptr) document = GTK_WIDGET(shown.text);
  gtk_widget_set_focusable(contentBin_, FALSE);
  GtkWidget* const other = shown.scrolled != nullptr ? GTK_WIDGET(shown.scrolled) : contentBin_;
  const bool isTaken = document != nullptr ? gtk_widget_grab_focus(document)
                                           : gtk_widget_child_focus(other, GTK_DIR_TAB_FORWARD);
  if (isTaken) return;
  gtk_widget_set_focusable(contentBin_, TRUE);
  gtk_widget_grab_focus(contentBin_);
}

void Panel::closeFindBar() const {
  if (!findBar_->isOpen()) return;
  findBar_->close();
  focusDocument();
}

/// A layer that is not shown any more, as after a click on another mode, has let go of the focus.
void Panel::contentChanged() {
  findBar_->documentChanged();
  updateCommands();
  updateWheel();
  if (gtk_root_get_focus(GTK_ROOT(window_)) == nullptr) focusDocument();
}

void Panel::dropContent() {
  afterCrash_.cancel();
  cancelDialogs(window_);
  findBar_->close();
  // When what has the focus goes, the toolkit looks for another holder at the next frame. In a
  // hidden window that frame is the one of the next preview, and its page would lose the keys
  // again.
  gtk_window_set_focus(window_, nullptr);
  adw_bin_set_child(ADW_BIN(contentBin_), nullptr);
  presentation_.reset();
  endPreparation();
  waitingWheel_->go();
}

void Panel::endPreparation() {
  isMakingReady_ = false;
  preparation_.reset();
  drawn_.reset();
  listing_.cancel();
}

/// A large page is handed to the engine seconds before there is anything of it to see. Some views
/// say so themselves, until its load has finished.
void Panel::updateWheel() {
  if (facts_.isLarge && isPageComing() && !holdsWheel(content()))
    waitingWheel_->comeSoon();
  else
    waitingWheel_->go();
}

/// The window takes the content's size when it comes on screen, unless the person has chosen one.
void Panel::fitWindow() {
  int width = 0;
  int height = 0;
  gtk_window_get_default_size(window_, &width, &height);
  if (givenSize_ && *givenSize_ != Size{width, height}) isSizedByPerson_ = true;
  if (isSizedByPerson_ || isOnScreen()) return;
  const bool isItem = presentation_ || isMakingReady_;
  const ContentShape shape = isItem ? shapeOf(*url_, facts_.isFolder) : ContentShape::Message;
  givenSize_ = initialSize(shape, workAreaFor(GTK_WIDGET(window_)));
  gtk_window_set_default_size(window_, givenSize_->width, givenSize_->height);
}

void Panel::updateHeader() {
  const GRef<GAppInfo> application = defaultApplication(facts_.contentType);
  gtk_widget_set_visible(openButton_, static_cast<bool>(application));
  if (application) {
    const std::string label = trWith("panel.open-with", g_app_info_get_name(application.get()));
    showOpenLabel(GTK_LABEL(gtk_button_get_child(GTK_BUTTON(openButton_))), label);
    setTooltipAndName(openButton_, label.c_str());
  }
  updateCommands();
  adw_window_title_set_title(ADW_WINDOW_TITLE(title_), facts_.name.c_str());
  gtk_window_set_title(window_, facts_.name.c_str());
}

/// Beside a source text there is nothing to go back in; in a folder there is nothing to find.
void Panel::updateCommands() {
  const ShownDocument shown = shownDocument();
  gtk_widget_set_visible(backButton_, shown.page != nullptr && webViews_.canGoBack());
  const bool hasText = findTarget().hasText();
  for (const Command command :
       {Command::Find, Command::ZoomIn, Command::ZoomOut, Command::ZoomReset})
    menu_->setEnabled(command, hasText);
  menu_->setEnabled(Command::Print, webViews_.latestView() != nullptr);
  menu_->setEnabled(Command::Reload, url_.has_value());
}

ShownDocument Panel::shownDocument() const {
  return content() == nullptr ? ShownDocument() : findShownDocument(content());
}

/// Whether a page is shown of which nothing can be seen yet; none that comes behind a source text.
bool Panel::isPageComing() const {
  return shownDocument().page != nullptr && webViews_.isToBeDrawn();
}

/// A page of which nothing can be seen yet is not looked through: to be, it would have to be there
/// as a whole, and its beginning would wait for its end.
FindTarget Panel::findTarget() const {
  const bool isFileComing = isMakingReady_ && !facts_.isFolder;
  if (isPageComing() || isFileComing) return {{}, true};
  return {shownDocument(), false};
}

void Panel::showStatus(const ErrorRecord& error) {
  setContent(statusPageNew(
      {facts_.iconName, facts_.name, failureSentence(error, facts_), facts_.details}, nullptr));
}

void Panel::showCrash() {
  dropContent();
  GtkWidget* button = gtk_button_new_with_label(tr("command.reload"));
  gtk_widget_add_css_class(button, "pill");
  gtk_widget_add_css_class(button, "suggested-action");
  g_signal_connect_swapped(
      button, "clicked", G_CALLBACK(+[](Panel* panel) { panel->perform(Command::Reload); }), this);
  setContent(statusPageNew({"dialog-warning-symbolic", tr("crash.title"), tr("crash.sentence"), {}},
                           button));
  updateHeader();
}

void Panel::setZoomLevel(double zoom) {
  zoom_ = std::clamp(zoom, kSmallestZoom, kLargestZoom);
  if (content() != nullptr) setZoom(content(), zoom_);
}

void Panel::openWithDefault() {
  if (!url_) return;
  const GRef<GAppInfo> application = defaultApplication(facts_.contentType);
  if (!application) return;
  if (openWith(application.get(), *url_, gtk_widget_get_display(GTK_WIDGET(window_))))
    return close();
  const std::string sentence = trWith("panel.open-failed", g_app_info_get_name(application.get()));
  AdwToast* toast = adw_toast_new("");
  // Plain text: a name may have a character that is markup.
  adw_toast_set_title(toast, OwnedText(g_markup_escape_text(sentence.c_str(), -1)).get());
  adw_toast_overlay_add_toast(ADW_TOAST_OVERLAY(toasts_), toast);
}

gboolean Panel::closeRequested(GtkWindow*, gpointer self) {
  static_cast<Panel*>(self)->close();
  return TRUE;
}

}  // namespace lumisk::desktop
