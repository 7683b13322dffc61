// The whole of it, as a person has it: the file manager of the desktop, keys, windows, and the
// previewer that the bus starts. Waits as long as it takes, measures nothing.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "accessible_items.h"
#include "previewer_calls.h"
#include "support/files.h"
#include "support/process.h"
#include "x_desktop.h"

namespace lumisk {
namespace {

namespace fs = std::filesystem;
using test::AccessibleItem;
using test::AccessibleItems;
using test::activateWindow;
using test::call;
using test::clickAt;
using test::eventually;
using test::isVisible;
using test::kPreviewerName;
using test::kPreviewerPath;
using test::moveWindow;
using test::pressKeys;
using test::ProcessResult;
using test::runProcess;
using test::ScreenPlace;
using test::serviceProcess;
using test::show;
using test::TemporaryFolder;
using test::WindowId;
using test::writeAll;
using test::XDesktop;
using testing::HasSubstr;
using testing::Not;

/// How Files calls itself, its window and its part of the accessibility bus.
constexpr int kWidestShadow = 60;  // around a window, and part of it for the display
constexpr const char* kFiles = "org.gnome.Nautilus";

/// The process of the previewer on this desktop, whatever it answers to; 0 for none.
pid_t previewerProcess() {
  for (const fs::directory_entry& entry : fs::directory_iterator("/proc")) {
    const std::string name = entry.path().filename();
    if (name.find_first_not_of("0123456789") != std::string::npos) continue;
    std::error_code error;
    if (fs::read_symlink(entry.path() / "exe", error).filename() != "lumisk-previewer") continue;
    std::ifstream environment(entry.path() / "environ");
    const std::string text(std::istreambuf_iterator<char>(environment), {});
    if (text.find("HOME=" + std::string(std::getenv("HOME"))) != std::string::npos)
      return std::stoi(name);
  }
  return 0;
}

/// As after a long time with nothing shown, only at once.
void endService() {
  if (const pid_t service = serviceProcess(); service > 0) kill(service, SIGKILL);
  // The bus may not have heard of it yet.
  ASSERT_TRUE(eventually([] { return previewerProcess() == 0 && serviceProcess() == 0; }));
}

/// Calls with arguments that are too long for a command line, each an expression of Python.
void showByScript(const std::string& uri, const std::string& token) {
  const std::string script =
      "import dbus\n"
      "preview = dbus.Interface(dbus.SessionBus().get_object('org.gnome.NautilusPreviewer',\n"
      "    '/org/gnome/NautilusPreviewer'), 'org.gnome.NautilusPreviewer2')\n"
      "preview.ShowFile(" +
      uri + ", '', True, " + token + ", signature='ssbs')\n";
  const ProcessResult result = runProcess({"/usr/bin/python3", "-c", script});
  EXPECT_EQ(result.exitStatus, 0) << result.standardError;
}

/// The previewer that the bus starts, read out by assistive technology, until this object goes.
class ServiceReadOut {
 public:
  ServiceReadOut() { startWith("atspi"); }
  ServiceReadOut(const ServiceReadOut&) = delete;
  ServiceReadOut& operator=(const ServiceReadOut&) = delete;
  ~ServiceReadOut() { startWith(std::getenv("GTK_A11Y")); }

 private:
  static void startWith(const char* accessibility) {
    EXPECT_EQ(
        call("UpdateActivationEnvironment", {"{'GTK_A11Y': '" + std::string(accessibility) + "'}"},
             "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus")
            .standardOutput,
        "()\n");
    endService();
  }
};

class FileManagerTest : public testing::Test {
 protected:
  void SetUp() override {
    writeAll(folder_ / "a.md", "# First\n");
    writeAll(folder_ / "b.json", "{\"second\":2}");
    writeAll(folder_ / "c.py", "third = 3\n");
    fs::create_directory(folder_ / "d folder");
    for (const char* name : {"e.csv", "f.csv", "g.csv", "h.csv"})
      writeAll(folder_ / name, "cell," + std::string(name) + "\n");
  }
  void TearDown() override {
    call("Close", {});
    EXPECT_TRUE(closes());
    quitFiles();
  }

  std::string uri(const std::string& name) const { return "file://" + (folder_ / name).string(); }

  WindowId preview() const { return desktop_.windowOf("lumisk-previewer"); }
  WindowId files() const { return desktop_.windowOf(kFiles); }
  bool shows(const std::string& name) const {
    return eventually([&] { return preview() != 0 && desktop_.titleOf(preview()) == name; });
  }
  bool closes() const {
    return eventually([&] { return preview() == 0; });
  }
  bool hasKeyboard(WindowId window) const {
    return eventually([&] { return desktop_.hasKeyboard(window); });
  }
  /// Whether the document that is shown holds this text: all is selected and copied in the preview.
  /// Asked again after longer and longer, for a page that has still to come comes the later the
  /// more keys it has to deal with.
  bool showsText(const std::string& text) const {
    using std::chrono::milliseconds;
    for (milliseconds pause(100); pause < milliseconds(30'000); pause *= 2) {
      if (!hasKeyboard(preview())) return false;
      pressKeys("ctrl+a");
      pressKeys("ctrl+c");
      if (desktop_.copiedText().find(text) != std::string::npos) return true;
      std::this_thread::sleep_for(pause);
    }
    return false;
  }

  void startFiles() {
    std::vector<std::string> words = {"/usr/bin/env", "GTK_A11Y=atspi",
                                      // Its turning wheel, drawn without a graphics card, leaves it
                                      // no time to read the folder on a busy machine.
                                      "GSK_RENDERER=cairo", "nautilus", "--new-window", uri("")};
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    ASSERT_EQ(posix_spawn(&files_, argv[0], nullptr, nullptr, argv.data(), environ), 0);
    ASSERT_TRUE(eventually([&] { return item("h.csv").has_value(); })) << "Files reads its folder";
  }
  std::optional<AccessibleItem> item(const std::string& name) const {
    return items_.itemNamed(kFiles, name);
  }
  bool selects(const std::string& name) const {
    return eventually([&] {
      const auto shown = item(name);
      return shown && shown->isSelected && shown->hasFocus;
    });
  }
  void click(const std::string& name) const {
    const auto shown = item(name);
    const auto inside = items_.windowOf(kFiles);
    ASSERT_TRUE(shown && inside);
    const ScreenPlace window = desktop_.placeOf(files());
    // The window on the display has its shadow around it.
    const int border = (window.width - inside->width) / 2;
    clickAt(window.x + border + shown->place.x + shown->place.width / 2,
            window.y + border + shown->place.y + shown->place.height / 2);
    ASSERT_TRUE(selects(name));
    ASSERT_TRUE(hasKeyboard(files()));
  }
  /// So that the preview covers no item.
  void putSideBySide() const {
    moveWindow(files(), 0, 0);
    const ScreenPlace left = desktop_.placeOf(files());
    moveWindow(preview(), left.x + left.width, 0);
    ASSERT_TRUE(eventually(
        [&] { return desktop_.placeOf(preview()).x >= left.x + left.width - kWidestShadow; }));
  }
  /// The item under this one, however many fit into a row.
  std::string below(const std::string& name) const {
    const ScreenPlace place = item(name)->place;
    for (const char* other : {"b.json", "c.py", "d folder", "e.csv", "f.csv", "g.csv", "h.csv"}) {
      const auto shown = item(other);
      if (shown && shown->place.x == place.x && shown->place.y > place.y) return other;
    }
    return "";
  }
  bool hasFilesEnded() {
    return files_ == 0 || (waitpid(files_, nullptr, WNOHANG) == files_ && (files_ = 0) == 0);
  }
  void quitFiles() {
    if (files_ == 0) return;
    kill(files_, SIGKILL);  // asked to end it lingers, and it holds nothing of worth
    EXPECT_TRUE(eventually([&] { return hasFilesEnded(); }));
  }

  TemporaryFolder folder_;
  XDesktop desktop_;
  AccessibleItems items_;
  pid_t files_ = 0;
};

TEST_F(FileManagerTest, SpaceShowsArrowsWalkSpaceCloses) {
  ASSERT_NO_FATAL_FAILURE(startFiles());
  ASSERT_NO_FATAL_FAILURE(click("a.md"));
  pressKeys("space");
  ASSERT_TRUE(shows("a.md"));
  EXPECT_EQ(desktop_.parentOf(preview()), files());
  EXPECT_TRUE(isVisible());
  EXPECT_TRUE(showsText("First")) << desktop_.copiedText();
  EXPECT_THAT(desktop_.copiedText(), Not(HasSubstr("#"))) << "a document, not its source";

  const WindowId window = preview();
  pressKeys("Right");
  EXPECT_TRUE(shows("b.json"));
  EXPECT_TRUE(selects("b.json"));
  EXPECT_TRUE(showsText("\"second\" : 2")) << desktop_.copiedText();
  pressKeys("Right");
  EXPECT_TRUE(shows("c.py"));
  EXPECT_TRUE(showsText("third = 3")) << desktop_.copiedText();
  pressKeys("Left");
  EXPECT_TRUE(shows("b.json"));
  pressKeys("Left");
  EXPECT_TRUE(shows("a.md"));

  const std::string lower = below("a.md");
  ASSERT_THAT(lower, HasSubstr(".csv"));
  pressKeys("Down");
  EXPECT_TRUE(shows(lower));
  EXPECT_TRUE(selects(lower));
  EXPECT_TRUE(showsText(lower)) << desktop_.copiedText();
  pressKeys("Up");
  EXPECT_TRUE(shows("a.md"));
  EXPECT_EQ(preview(), window) << "one window for all";

  pressKeys("space");
  EXPECT_TRUE(closes());
  EXPECT_FALSE(isVisible());
  ASSERT_TRUE(hasKeyboard(files()));
  pressKeys("space");
  EXPECT_TRUE(shows("a.md"));
  EXPECT_TRUE(showsText("First"));
  pressKeys("Right");
  EXPECT_TRUE(shows("b.json")) << "opened again it has the arrow keys again";
}

TEST_F(FileManagerTest, KeysPressedInOneBreathAllCount) {
  ASSERT_NO_FATAL_FAILURE(startFiles());
  ASSERT_NO_FATAL_FAILURE(click("a.md"));
  pressKeys("space");
  ASSERT_TRUE(shows("a.md"));
  ASSERT_TRUE(hasKeyboard(preview()));
  // Nobody waits for a page before walking on. Each key that is lost leads to another item.
  for (const char* key : {"Right", "Right", "Right"}) pressKeys(key);
  EXPECT_TRUE(shows("d folder"));
  EXPECT_TRUE(selects("d folder"));
  for (const char* key : {"Right", "Left", "Left"}) pressKeys(key);
  EXPECT_TRUE(shows("c.py"));
  EXPECT_TRUE(showsText("third"));
  EXPECT_TRUE(selects("c.py"));
}

TEST_F(FileManagerTest, EscapeAfterAnArrowIsTheEndOfIt) {
  ASSERT_NO_FATAL_FAILURE(startFiles());
  ASSERT_NO_FATAL_FAILURE(click("a.md"));
  pressKeys("space");
  ASSERT_TRUE(shows("a.md"));
  ASSERT_TRUE(hasKeyboard(preview()));
  for (const char* key : {"Right", "Escape"}) pressKeys(key);
  EXPECT_TRUE(closes());
  EXPECT_TRUE(selects("b.json")) << "Files has heard of the arrow, and told of it";
  EXPECT_FALSE(isVisible());
  EXPECT_TRUE(closes());
}

TEST_F(FileManagerTest, WhoWalksInFilesKeepsTheKeyboardThere) {
  ASSERT_NO_FATAL_FAILURE(startFiles());
  ASSERT_NO_FATAL_FAILURE(click("a.md"));
  pressKeys("space");
  ASSERT_TRUE(shows("a.md"));
  ASSERT_TRUE(hasKeyboard(preview()));
  ASSERT_NO_FATAL_FAILURE(putSideBySide());
  ASSERT_NO_FATAL_FAILURE(click("b.json"));
  EXPECT_TRUE(shows("b.json"));
  pressKeys("Right");
  EXPECT_TRUE(shows("c.py"));
  EXPECT_TRUE(selects("c.py"));
  EXPECT_TRUE(hasKeyboard(files()));
  // In the preview the key would close the preview alone.
  pressKeys("ctrl+w");
  EXPECT_TRUE(closes());
  EXPECT_TRUE(eventually([&] { return files() == 0; }));
}

TEST_F(FileManagerTest, ControlWInFilesClosesIt) {
  ASSERT_NO_FATAL_FAILURE(startFiles());
  ASSERT_NO_FATAL_FAILURE(click("a.md"));
  pressKeys("space");
  ASSERT_TRUE(shows("a.md"));
  activateWindow(files());
  ASSERT_TRUE(hasKeyboard(files()));
  pressKeys("ctrl+w");
  EXPECT_TRUE(closes());
  EXPECT_TRUE(eventually([&] { return files() == 0; }));
}

TEST_F(FileManagerTest, AServiceThatWasKilledIsBackWithTheNextSpace) {
  ASSERT_NO_FATAL_FAILURE(startFiles());
  ASSERT_NO_FATAL_FAILURE(click("a.md"));
  pressKeys("space");
  ASSERT_TRUE(shows("a.md"));
  const pid_t killed = serviceProcess();
  ASSERT_GT(killed, 0);
  kill(killed, SIGKILL);
  ASSERT_TRUE(closes());
  // A call that reaches the bus before the news of the death does goes to the dead.
  ASSERT_TRUE(eventually([&] { return serviceProcess() != killed; }));
  ASSERT_TRUE(hasKeyboard(files()));
  pressKeys("space");
  ASSERT_TRUE(shows("a.md"));
  EXPECT_TRUE(showsText("First"));
  EXPECT_NE(serviceProcess(), killed);
}

TEST_F(FileManagerTest, ACallWhileTheServiceBeforeIsEndingIsServed) {
  endService();
  test::HeldName ending("org.lumisk.Previewer");
  std::thread caller([&] { EXPECT_EQ(show(uri("a.md"), "", true).standardOutput, "()\n"); });
  EXPECT_TRUE(eventually([] { return previewerProcess() != 0; })) << "the bus starts the next one";
  // Long enough for one that does not wait to find the name taken and to end.
  std::this_thread::sleep_for(std::chrono::seconds(1));
  EXPECT_NE(previewerProcess(), 0);
  ending.release();
  caller.join();
  EXPECT_TRUE(shows("a.md"));
}

TEST_F(FileManagerTest, EveryShapeOfCall) {
  EXPECT_EQ(show(uri("a.md"), "x11:0", true).standardOutput, "()\n");
  EXPECT_TRUE(shows("a.md"));
  EXPECT_EQ(call("ShowFile", {uri("b.json"), "", "false", "'token'"}).standardOutput, "()\n");
  EXPECT_TRUE(shows("b.json"));
  EXPECT_EQ(
      call("ShowFile", {uri("c.py"), "5", "false"}, kPreviewerName, kPreviewerPath, kPreviewerName)
          .standardOutput,
      "()\n");
  EXPECT_TRUE(shows("c.py"));
  EXPECT_EQ(call("ShowFile", {uri("a.md"), "-1", "false"}, "org.nemo.Preview", "/org/nemo/Preview",
                 "org.nemo.Preview")
                .standardOutput,
            "()\n");
  EXPECT_TRUE(shows("a.md"));
  EXPECT_EQ(show(uri("d%20folder"), "", false).standardOutput, "()\n");
  EXPECT_TRUE(shows("d folder"));
}

TEST_F(FileManagerTest, ATokenReachesTheWindow) {
  EXPECT_EQ(call("ShowFile", {uri("a.md"), "", "true", "'files-1-host-token'"}).standardOutput,
            "()\n");
  ASSERT_TRUE(shows("a.md"));
  EXPECT_EQ(desktop_.startupIdOf(preview()), "files-1-host-token");
  const pid_t service = serviceProcess();
  showByScript("'" + uri("b.json") + "'", "'t' * 20000000");  // more than the display takes
  EXPECT_TRUE(shows("b.json"));
  EXPECT_EQ(serviceProcess(), service);
}

TEST_F(FileManagerTest, TheTokenOfACommandReachesTheWindow) {
  for (const char* variable : {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"}) {
    endService();
    const std::string token = std::string("menu-1-host-") + variable;
    ASSERT_EQ(runProcess({"/usr/bin/env", "-u", "DESKTOP_STARTUP_ID", variable + ("=" + token),
                          LUMISK_COMMAND, (folder_ / "a.md").string()})
                  .exitStatus,
              0);
    ASSERT_TRUE(shows("a.md"));
    EXPECT_EQ(desktop_.startupIdOf(preview()), token);
  }
}

TEST_F(FileManagerTest, BadCallsAreToldWhyInOneSentence) {
  const ServiceReadOut readOut;
  struct Row {
    std::string address;
    const char* sentence;
  };
  const Row rows[] = {
      {uri("missing.md"), "This item is no longer there."},
      {"no address", "This address does not name a file."},
      {"file:///%zz", "This address does not name a file."},
      {"file://elsewhere/x", "This address does not name a file."},
      {"nowhere:///x", "This item is not stored on this computer."},
      {"mtp://[usb:001,004]/a.md", "This item is not stored on this computer."},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(show(row.address, "", false).standardOutput, "()\n");
    EXPECT_TRUE(eventually([&] { return items_.showsText("lumisk-previewer", row.sentence); }))
        << row.address;
  }
}

TEST_F(FileManagerTest, BadCallsGetACalmPageAndTheNextIsServed) {
  for (const char* handle :
       {"x11:zz", "x11:ffffffffffff", "wayland:nothing", "nonsense", "x11:7"}) {
    EXPECT_EQ(show(uri("a.md"), handle, false).standardOutput, "()\n");
    EXPECT_TRUE(shows("a.md")) << handle;
    EXPECT_EQ(show(uri("missing.md"), handle, false).standardOutput, "()\n");
    EXPECT_TRUE(shows("missing.md")) << handle;
  }
  for (const char* address : {"no address", "file:///%zz", "file://elsewhere/x", "nowhere:///x",
                              "trash:///a.md", "mtp://[usb:001,004]/a.md", "smb://server/a.md"}) {
    EXPECT_EQ(show(address, "", false).standardOutput, "()\n");
    EXPECT_TRUE(shows(address)) << address;
  }
  EXPECT_EQ(show(uri("b.json"), "", false).standardOutput, "()\n");
  EXPECT_TRUE(shows("b.json"));
}

TEST_F(FileManagerTest, AnAddressOfAnyLengthGetsATitleOfAFewWords) {
  show(uri("a.md"), "", false);
  ASSERT_TRUE(shows("a.md"));
  const pid_t service = serviceProcess();
  showByScript("'one\\ntwo' + 'x' * 2000000", "''");
  ASSERT_TRUE(eventually([&] { return desktop_.titleOf(preview()).starts_with("one"); }));
  const std::string title = desktop_.titleOf(preview());
  EXPECT_LT(title.size(), 1100u);
  EXPECT_EQ(title.find('\n'), std::string::npos);
  EXPECT_EQ(serviceProcess(), service);
}

TEST_F(FileManagerTest, TwoHundredCallsEndWithTheLast) {
  // One process that calls as fast as it can.
  const std::string script =
      "import dbus\n"
      "preview = dbus.Interface(dbus.SessionBus().get_object('org.gnome.NautilusPreviewer',\n"
      "    '/org/gnome/NautilusPreviewer'), 'org.gnome.NautilusPreviewer2')\n"
      "for i in range(200):\n"
      "    name = ('a.md', 'b.json', 'c.py')[i % 3]\n"
      "    preview.ShowFile('" +
      uri("") + "' + name, 'x11:0', False, signature='ssb')\n";
  const ProcessResult result = runProcess({"/usr/bin/python3", "-c", script});
  EXPECT_EQ(result.exitStatus, 0) << result.standardError;
  EXPECT_TRUE(shows("b.json"));
  EXPECT_EQ(show(uri("b.json"), "", true).standardOutput, "()\n");
  EXPECT_TRUE(closes());
}

TEST_F(FileManagerTest, TheCommandReachesTheSameWindowAndReturns) {
  EXPECT_EQ(runProcess({LUMISK_COMMAND, (folder_ / "a.md").string()}).exitStatus, 0);
  EXPECT_TRUE(shows("a.md"));
  const pid_t service = serviceProcess();
  EXPECT_EQ(runProcess({LUMISK_COMMAND, (folder_ / "b.json").string(), (folder_ / "c.py").string()})
                .exitStatus,
            0);
  EXPECT_TRUE(shows("b.json"));
  ASSERT_TRUE(hasKeyboard(preview()));
  pressKeys("Right");
  EXPECT_TRUE(shows("c.py"));
  EXPECT_EQ(serviceProcess(), service);
}

TEST_F(FileManagerTest, WithoutABusTheWindowBelongsToTheCommand) {
  ProcessResult result;
  std::thread command([&] {
    result =
        runProcess({"/usr/bin/env", "DBUS_SESSION_BUS_ADDRESS=unix:path=/nowhere", LUMISK_COMMAND,
                    (folder_ / "a.md").string(), (folder_ / "b.json").string()});
  });
  EXPECT_TRUE(shows("a.md"));
  EXPECT_TRUE(hasKeyboard(preview()));
  EXPECT_FALSE(isVisible()) << "the service knows nothing of it";
  pressKeys("Right");
  EXPECT_TRUE(shows("b.json"));
  pressKeys("Escape");
  EXPECT_TRUE(closes());
  command.join();
  EXPECT_EQ(result.exitStatus, 0) << result.standardError;
}

TEST_F(FileManagerTest, TheServiceEndsWhenNothingWasShownForLong) {
  show(uri("a.md"), "", true);
  ASSERT_TRUE(shows("a.md"));
  const pid_t service = serviceProcess();
  call("Close", {});
  const auto isOver = [&] { return kill(service, 0) != 0; };
  EXPECT_TRUE(eventually(isOver, std::chrono::minutes(3)));
  show(uri("a.md"), "", true);
  EXPECT_TRUE(shows("a.md"));
}

}  // namespace
}  // namespace lumisk
