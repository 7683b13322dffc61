#pragma once

#include "bench/desktop/documents.h"
#include "bench/desktop/screen.h"

// What desktop_bench measures. Each prints a Markdown table, figures beside goals.

namespace lumisk::bench {

void measureWarm(const VisibleScreen& screen, const Documents& documents);
void measureCold(const VisibleScreen& screen, const Documents& documents);
void measureLarge(const VisibleScreen& screen, const Documents& documents);
void measureMemory(const VisibleScreen& screen, const Documents& documents);
void measureEndurance(const VisibleScreen& screen, const Documents& documents);

}  // namespace lumisk::bench
