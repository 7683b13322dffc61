// The whole of it, as a person has it: the file manager of the desktop, keys, windows, and the
// previewer that the bus starts. Waits as long as it takes, measures nothing.

#include <gmock/gmock.h>

#include "file_manager_fixture.h"
#include "support/process.h"

namespace lumisk::test {
namespace {

using testing::HasSubstr;
using testing::Not;

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
  pressKeys("space");
  EXPECT_TRUE(closes());
  ASSERT_TRUE(hasKeyboard(files()));
  pressKeys("Right");
  EXPECT_TRUE(eventually([&] { return hasSelectionAndFocus("d folder"); }))
      << "Files goes on from there";
}

TEST_F(FileManagerTest, AWalkGoesOnPastWhatHasNoPreview) {
  writeAll(folder_ / "ab.png", std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\xff", 17));
  ASSERT_NO_FATAL_FAILURE(startFiles());
  ASSERT_NO_FATAL_FAILURE(click("a.md"));
  pressKeys("space");
  ASSERT_TRUE(shows("a.md"));
  ASSERT_TRUE(hasKeyboard(preview()));
  for (const char* const name : {"ab.png", "b.json"}) {
    pressKeys("Right");
    EXPECT_TRUE(shows(name));
  }
  pressKeys("Left");
  EXPECT_TRUE(shows("ab.png"));
  EXPECT_TRUE(selects("ab.png"));
  pressKeys("space");
  EXPECT_TRUE(closes());
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
  HeldName ending("org.lumisk.Previewer");
  std::thread caller([&] { EXPECT_EQ(show(uri("a.md"), "", true).standardOutput, "()\n"); });
  EXPECT_TRUE(eventually([] { return previewerProcess() != 0; })) << "the bus starts the next one";
  // Long enough for one that does not wait to find the name taken and to end.
  std::this_thread::sleep_for(std::chrono::seconds(1));
  EXPECT_NE(previewerProcess(), 0);
  ending.release();
  caller.join();
  EXPECT_TRUE(shows("a.md"));
}

}  // namespace
}  // namespace lumisk::test
