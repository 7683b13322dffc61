#include "desktop/graphics.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "support/files.h"

namespace lumisk::test {
namespace {

class Graphics : public testing::Test {
 protected:
  Graphics() { unsetenv("LIBGL_ALWAYS_SOFTWARE"); }
  bool hasCard() const { return desktop::hasGraphicsCard(devices_.path().string()); }
  void addDevice(const char* name) {
    std::filesystem::create_directories((devices_ / name).parent_path());
    writeAll(devices_ / name, "");
  }
  TemporaryFolder devices_;
};

TEST_F(Graphics, WithoutDevicesThereIsNoCard) {
  EXPECT_FALSE(hasCard());
  addDevice("null");
  EXPECT_FALSE(hasCard());
}

TEST_F(Graphics, AScreenAloneIsNoCard) {
  addDevice("dri/card0");
  addDevice("dri/by-path");
  EXPECT_FALSE(hasCard());
}

TEST_F(Graphics, ARenderNodeOrADriversOwnDeviceIsACard) {
  for (const char* const device : {"dri/renderD128", "dri/renderD129", "nvidiactl", "dxg"}) {
    addDevice(device);
    EXPECT_TRUE(hasCard()) << device;
    std::filesystem::remove(devices_ / device);
  }
}

TEST_F(Graphics, WhoeverDrawsInSoftwareIsBelieved) {
  addDevice("dri/renderD128");
  setenv("LIBGL_ALWAYS_SOFTWARE", "1", 1);
  EXPECT_FALSE(hasCard());
  setenv("LIBGL_ALWAYS_SOFTWARE", "0", 1);
  EXPECT_TRUE(hasCard());
  unsetenv("LIBGL_ALWAYS_SOFTWARE");
}

}  // namespace
}  // namespace lumisk::test
