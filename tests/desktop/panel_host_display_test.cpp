// What the panel of a program that the bus has started costs: nothing before it is needed.

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <set>
#include <string>

#include "desktop/panel_host.h"
#include "process_tree.h"
#include "screen.h"
#include "support/files.h"

namespace lumisk::test {
namespace {

using desktop::PanelHost;
using Processes = std::set<std::string>;

class PanelHostOnScreen : public testing::Test {
 protected:
  PanelHostOnScreen() {
    writeAll(folder_ / "a.md", "# First\n");
    writeAll(folder_ / "b.json", "{\"second\":2}");
  }
  /// The web processes that were not there when the test began.
  Processes more() const {
    const Processes all = webProcesses();
    Processes more;
    std::set_difference(all.begin(), all.end(), before_.begin(), before_.end(),
                        std::inserter(more, more.end()));
    return more;
  }
  bool hasOne() const {
    return runUntil([&] { return more().size() == 1; });
  }
  static guint windows() { return g_list_model_get_n_items(gtk_window_get_toplevels()); }
  void show(PanelHost& host, const char* name) {
    const FileURL url = FileURL::fromPath((folder_ / name).string());
    host.show({.uri = url.absoluteString(), .item = url});
    EXPECT_TRUE(host.isVisible());
    runFor(1000);
  }

  TemporaryFolder folder_;
  const desktop::EngineFiles files_{LUMISK_EXTENSION_FOLDER, LUMISK_STORE_FOLDER, ""};
  // No view of the other tests is still to come after that: the one that is warm is there.
  const Processes before_ = [] {
    { const PageOnScreen page("<!DOCTYPE html><body>text</body>"); }
    return webProcesses();
  }();
};

TEST_F(PanelHostOnScreen, MakesNothingBeforeItIsNeeded) {
  const guint windowsBefore = windows();
  const PanelHost host(files_, nullptr);
  runFor(500);
  EXPECT_TRUE(more().empty());
  EXPECT_EQ(windows(), windowsBefore);
  EXPECT_FALSE(host.isVisible());
}

TEST_F(PanelHostOnScreen, HasOneWebProcessFromItsWarmingUpOn) {
  {
    PanelHost host(files_, nullptr);
    host.warmUp();
    ASSERT_TRUE(hasOne());
    const Processes warm = more();
    for (const char* const name : {"a.md", "b.json", "a.md"}) {
      show(host, name);
      EXPECT_EQ(more(), warm) << name;
    }
    host.close();
    runFor(1000);
    EXPECT_EQ(more(), warm);
  }
  EXPECT_TRUE(runUntil([&] { return more().empty(); })) << "it goes with the host";
}

TEST_F(PanelHostOnScreen, NeedsNoWarmingUp) {
  PanelHost host(files_, nullptr);
  show(host, "a.md");
  EXPECT_TRUE(hasOne());
  host.close();
}

}  // namespace
}  // namespace lumisk::test
