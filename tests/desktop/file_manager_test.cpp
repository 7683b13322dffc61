// The whole of it, as a person has it: the file manager of the desktop, keys, windows, and the
// previewer that the bus starts. Waits as long as it takes, measures nothing.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "support/files.h"
#include "support/process.h"

namespace lumisk {
namespace {

namespace fs = std::filesystem;
using test::ProcessResult;
using test::runProcess;
using test::TemporaryFolder;
using test::writeAll;
using testing::HasSubstr;

constexpr const char* kName = "org.gnome.NautilusPreviewer";
constexpr const char* kPath = "/org/gnome/NautilusPreviewer";
constexpr const char* kInterface = "org.gnome.NautilusPreviewer2";

std::string outputOf(std::vector<std::string> words) {
  words.insert(words.begin(), "/usr/bin/env");
  std::string text = runProcess(words).standardOutput;
  while (text.ends_with('\n')) text.pop_back();
  return text;
}

/// Whether it becomes true within half a minute, which no test waits for on purpose.
bool eventually(const std::function<bool()>& isTrue) {
  using std::chrono::steady_clock;
  const auto end = steady_clock::now() + std::chrono::seconds(30);
  while (steady_clock::now() < end) {
    if (isTrue()) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return false;
}

/// The visible windows of this class ("res_class" or "res_name"), by their ids.
std::vector<std::string> windowsOf(const std::string& programClass) {
  std::vector<std::string> ids;
  std::string id;
  for (const char c :
       outputOf({"xdotool", "search", "--onlyvisible", "--class", programClass}) + "\n") {
    if (c != '\n') {
      id += c;
    } else if (!id.empty()) {
      ids.push_back(std::exchange(id, {}));
    }
  }
  // Helper windows of the toolkit have no title.
  std::erase_if(ids, [](const std::string& window) {
    return outputOf({"xdotool", "getwindowname", window}).empty();
  });
  return ids;
}

std::string previewWindow() {
  const auto ids = windowsOf("lumisk");
  return ids.empty() ? "" : ids.front();
}

/// The name of what the preview shows; empty when there is no preview.
std::string previewedName() {
  const std::string window = previewWindow();
  return window.empty() ? "" : outputOf({"xdotool", "getwindowname", window});
}

bool shows(const std::string& name) {
  return eventually([&] { return previewedName() == name; });
}

bool isFocused(const std::string& window) {
  return eventually([&] { return outputOf({"xdotool", "getwindowfocus"}) == window; });
}

void press(const std::string& key) { outputOf({"xdotool", "key", "--clearmodifiers", key}); }

ProcessResult call(const std::string& method, const std::vector<std::string>& arguments,
                   const std::string& name = kName, const std::string& path = kPath,
                   const std::string& interface = kInterface) {
  std::vector<std::string> words = {"/usr/bin/env",
                                    "gdbus",
                                    "call",
                                    "--session",
                                    "--dest",
                                    name,
                                    "--object-path",
                                    path,
                                    "--method",
                                    interface + "." + method,
                                    "--"};
  words.insert(words.end(), arguments.begin(), arguments.end());
  return runProcess(words);
}

ProcessResult show(const std::string& uri, const std::string& handle, bool closes) {
  return call("ShowFile", {uri, handle, closes ? "true" : "false"});
}

bool isVisible() {
  return call("Get", {kInterface, "Visible"}, kName, kPath, "org.freedesktop.DBus.Properties")
             .standardOutput == "(<true>,)\n";
}

pid_t serviceProcess() {
  const std::string answer = call("GetConnectionUnixProcessID", {kName}, "org.freedesktop.DBus",
                                  "/org/freedesktop/DBus", "org.freedesktop.DBus")
                                 .standardOutput;
  const std::size_t number = answer.find(' ');
  return number == std::string::npos ? 0 : std::stoi(answer.substr(number));
}

class FileManagerTest : public testing::Test {
 protected:
  void SetUp() override {
    writeAll(folder_ / "a.md", "# First\n");
    writeAll(folder_ / "b.json", "{\"second\": 2}");
    writeAll(folder_ / "c.py", "third = 3\n");
    fs::create_directory(folder_ / "d folder");
  }
  void TearDown() override {
    call("Close", {});
    EXPECT_TRUE(eventually([] { return previewWindow().empty(); }));
    quitFiles();
  }

  std::string uri(const std::string& name) const { return "file://" + (folder_ / name).string(); }

  void startFiles() {
    const std::string selected = uri("a.md");
    std::vector<std::string> words = {"nautilus", "--new-window", "--select", selected};
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    ASSERT_EQ(posix_spawnp(&files_, "nautilus", nullptr, nullptr, argv.data(), environ), 0);
    ASSERT_TRUE(eventually([&] { return !windowsOf("nautilus").empty(); }));
    filesWindow_ = windowsOf("nautilus").front();
    outputOf({"xdotool", "windowactivate", "--sync", filesWindow_});
    ASSERT_TRUE(isFocused(filesWindow_));
  }
  /// Presses Space; once more, after long, when Files was still reading the folder and took no
  /// note.
  void pressSpaceUntilShown(const std::string& name) {
    press("space");
    if (!shows(name)) press("space");
    ASSERT_TRUE(shows(name));
  }
  bool hasFilesEnded() {
    return files_ == 0 || (waitpid(files_, nullptr, WNOHANG) == files_ && (files_ = 0) == 0);
  }
  void quitFiles() {
    if (files_ == 0) return;
    kill(files_, SIGTERM);
    EXPECT_TRUE(eventually([&] { return hasFilesEnded(); }));
  }

  TemporaryFolder folder_;
  pid_t files_ = 0;
  std::string filesWindow_;
};

TEST_F(FileManagerTest, SpaceShowsArrowsWalkSpaceCloses) {
  startFiles();
  pressSpaceUntilShown("a.md");
  const std::string window = previewWindow();
  EXPECT_THAT(outputOf({"xprop", "-id", window, "WM_TRANSIENT_FOR"}), HasSubstr("window id # 0x"));
  const std::string parent = outputOf({"xprop", "-id", window, "WM_TRANSIENT_FOR"});
  EXPECT_EQ(std::stoul(parent.substr(parent.rfind("0x")), nullptr, 16), std::stoul(filesWindow_));
  EXPECT_TRUE(isVisible());

  ASSERT_TRUE(isFocused(window));
  press("Right");
  EXPECT_TRUE(shows("b.json"));
  press("Right");
  EXPECT_TRUE(shows("c.py"));
  press("Left");
  EXPECT_TRUE(shows("b.json"));
  press("Down");
  press("Up");
  EXPECT_TRUE(eventually([] { return isVisible(); }));

  press("space");
  EXPECT_TRUE(eventually([] { return previewWindow().empty(); }));
  EXPECT_FALSE(isVisible());
  ASSERT_TRUE(isFocused(filesWindow_));
  press("space");
  EXPECT_TRUE(eventually([] { return !previewWindow().empty(); }));
}

TEST_F(FileManagerTest, WhenFilesGoesThePreviewGoes) {
  startFiles();
  pressSpaceUntilShown("a.md");
  outputOf({"xdotool", "windowactivate", "--sync", filesWindow_});
  ASSERT_TRUE(isFocused(filesWindow_));
  press("ctrl+w");
  EXPECT_TRUE(eventually([] { return previewWindow().empty(); }));
}

TEST_F(FileManagerTest, AServiceThatWasKilledIsBackWithTheNextSpace) {
  startFiles();
  pressSpaceUntilShown("a.md");
  const pid_t killed = serviceProcess();
  ASSERT_GT(killed, 0);
  kill(killed, SIGKILL);
  ASSERT_TRUE(eventually([] { return previewWindow().empty(); }));
  ASSERT_TRUE(isFocused(filesWindow_));
  pressSpaceUntilShown("a.md");
  EXPECT_NE(serviceProcess(), killed);
}

TEST_F(FileManagerTest, EveryShapeOfCall) {
  EXPECT_EQ(show(uri("a.md"), "x11:0", true).standardOutput, "()\n");
  EXPECT_TRUE(shows("a.md"));
  EXPECT_EQ(call("ShowFile", {uri("b.json"), "", "false", "'token'"}).standardOutput, "()\n");
  EXPECT_TRUE(shows("b.json"));
  EXPECT_EQ(call("ShowFile", {uri("c.py"), "5", "false"}, kName, kPath, kName).standardOutput,
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

TEST_F(FileManagerTest, BadCallsGetACalmPageAndTheNextIsServed) {
  for (const char* handle :
       {"x11:zz", "x11:ffffffffffff", "wayland:nothing", "nonsense", "x11:7"}) {
    EXPECT_EQ(show(uri("a.md"), handle, false).standardOutput, "()\n");
    EXPECT_TRUE(shows("a.md")) << handle;
    EXPECT_EQ(show(uri("missing.md"), handle, false).standardOutput, "()\n");
    EXPECT_TRUE(shows("missing.md")) << handle;
  }
  for (const char* address : {"no address", "file:///%zz", "file://elsewhere/x", "nowhere:///x"}) {
    EXPECT_EQ(show(address, "", false).standardOutput, "()\n");
    EXPECT_TRUE(shows(address)) << address;
  }
  EXPECT_EQ(show(uri("b.json"), "", false).standardOutput, "()\n");
  EXPECT_TRUE(shows("b.json"));
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
  EXPECT_TRUE(eventually([] { return previewWindow().empty(); }));
}

TEST_F(FileManagerTest, TheCommandReachesTheSameWindowAndReturns) {
  EXPECT_EQ(runProcess({LUMISK_COMMAND, (folder_ / "a.md").string()}).exitStatus, 0);
  EXPECT_TRUE(shows("a.md"));
  const pid_t service = serviceProcess();
  EXPECT_EQ(runProcess({LUMISK_COMMAND, (folder_ / "b.json").string(), (folder_ / "c.py").string()})
                .exitStatus,
            0);
  EXPECT_TRUE(shows("b.json"));
  ASSERT_TRUE(isFocused(previewWindow()));
  press("Right");
  EXPECT_TRUE(shows("c.py"));
  EXPECT_EQ(serviceProcess(), service);
}

}  // namespace
}  // namespace lumisk
