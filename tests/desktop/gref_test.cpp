#include "desktop/gref.h"

#include <gtest/gtest.h>

#include <memory>

namespace lumisk::test {
namespace {

using desktop::Deferred;

void iterateFor(int turns) {
  for (int i = 0; i < turns; ++i) g_main_context_iteration(nullptr, FALSE);
}

TEST(Deferred, AStepRunsUntilItSaysThatItHasDone) {
  Deferred deferred;
  int steps = 0;
  deferred.whileIdle([&steps] { return ++steps < 3; });
  iterateFor(10);
  EXPECT_EQ(steps, 3);
  EXPECT_FALSE(deferred.isPending());
}

TEST(Deferred, AStepMayDestroyIt) {
  auto deferred = std::make_unique<Deferred>();
  // Lives in the step, so that the step itself must outlive its end.
  const auto steps = std::make_shared<int>(0);
  deferred->whileIdle([&deferred, steps] {
    deferred.reset();
    ++*steps;
    return true;
  });
  iterateFor(5);
  EXPECT_EQ(*steps, 1);
}

TEST(Deferred, AStepMaySetAnother) {
  Deferred deferred;
  int first = 0;
  int second = 0;
  deferred.whileIdle([&] {
    ++first;
    deferred.whileIdle([&second] { return ++second < 2; });
    return true;
  });
  iterateFor(10);
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 2);
  EXPECT_FALSE(deferred.isPending());
}

TEST(Deferred, AStepMayCancelIt) {
  Deferred deferred;
  int steps = 0;
  deferred.whileIdle([&] {
    ++steps;
    deferred.cancel();
    return true;
  });
  iterateFor(5);
  EXPECT_EQ(steps, 1);
  EXPECT_FALSE(deferred.isPending());
}

}  // namespace
}  // namespace lumisk::test
