#pragma once

#include <functional>

namespace lumisk::desktop::test {

/// Runs the main loop until `isDone`, a minute at most; returns whether it was done.
bool runUntil(const std::function<bool()>& isDone);

/// Runs the main loop until it has nothing more to do at this moment.
void runPending();

}  // namespace lumisk::desktop::test
