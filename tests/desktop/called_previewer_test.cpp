// The previewer that the bus starts, called in every way that programs call it.

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "file_manager_fixture.h"
#include "process_tree.h"
#include "support/process.h"

namespace lumisk::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

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

/// One that nobody has collected yet is no longer running either.
bool hasEnded(const std::string& process) {
  std::ifstream memory("/proc/" + process + "/maps");
  return memory.get() == std::ifstream::traits_type::eof();
}

TEST_F(FileManagerTest, TheServiceEndsWhenNothingWasShownForLong) {
  show(uri("a.md"), "", true);
  ASSERT_TRUE(shows("a.md"));
  const pid_t service = serviceProcess();
  const std::vector<std::string> tree = processTree(std::to_string(service));
  EXPECT_GT(tree.size(), 1U) << "the engine's own are among them";
  call("Close", {});
  const auto isOver = [&] { return std::all_of(tree.begin(), tree.end(), hasEnded); };
  EXPECT_TRUE(eventually(isOver, std::chrono::minutes(3)));
  show(uri("a.md"), "", true);
  EXPECT_TRUE(shows("a.md"));
}

}  // namespace
}  // namespace lumisk::test
