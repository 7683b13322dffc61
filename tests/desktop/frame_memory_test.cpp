#include "desktop/frame_memory.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstring>
#include <memory>

namespace lumisk::desktop {
namespace {

constexpr std::size_t kFrame = std::size_t{12} << 20;  // bytes

/// How often the kernel had to provide memory while a frame was drawn.
long faultsOfAFrame() {
  const auto faults = [] {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_minflt;
  };
  const long before = faults();
  const std::unique_ptr<char[]> frame(new char[kFrame]);
  std::memset(frame.get(), 1, kFrame);
  // Read, so that the compiler does not leave out a frame that nobody looks at.
  EXPECT_EQ(frame[kFrame / 2], 1);
  return faults() - before;
}

/// Neither test can know which memory is left over from before.
class FrameMemory : public testing::Test {
 protected:
  void SetUp() override {
    keepFrameMemory();
    releaseFrameMemory();
    first_ = faultsOfAFrame();
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "a sanitizer brings an allocator of its own";
#endif
    EXPECT_GT(first_, 2);
  }
  long first_ = 0;
};

TEST_F(FrameMemory, IsKeptForTheNextFrame) {
  const long second = faultsOfAFrame();
  EXPECT_LT(second, first_);
  EXPECT_LE(second, 2);
}

TEST_F(FrameMemory, IsHandedBackWhenItRests) {
  releaseFrameMemory();
  EXPECT_GE(faultsOfAFrame(), first_ / 2);
}

}  // namespace
}  // namespace lumisk::desktop
