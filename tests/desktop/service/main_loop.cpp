#include "main_loop.h"

#include "desktop/gref.h"

namespace lumisk::desktop::test {

bool runUntil(const std::function<bool()>& isDone) {
  constexpr unsigned kLongestWaitInMilliseconds = 60'000;
  Deferred limit;
  bool isOver = false;
  limit.after(kLongestWaitInMilliseconds, [&] { isOver = true; });
  while (!isOver) {
    if (isDone()) return true;
    g_main_context_iteration(nullptr, TRUE);
  }
  return false;
}

void runPending() {
  // A task that is due at once is seen when the clock has moved on.
  Deferred turn;
  bool isOver = false;
  turn.after(2, [&] { isOver = true; });
  while (!isOver || g_main_context_pending(nullptr)) g_main_context_iteration(nullptr, !isOver);
}

}  // namespace lumisk::desktop::test
