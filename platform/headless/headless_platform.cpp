#include "platform/headless/headless_platform.h"

#include <cstdio>

#include "platform/headless/date_formatter.h"

namespace lumisk {

void ProcessStandardOutput::writeLine(std::string_view line) {
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fputc('\n', stdout);
  std::fflush(stdout);
}

HeadlessPlatform::HeadlessPlatform(const HeadlessOptions& options)
    : backgroundQueue_(mainQueue_),
      appearance_(options.appearance),
      strings_(options.localeName, options.catalogueFolder),
      collation_(options.localeName),
      platform_{mainQueue_,
                backgroundQueue_,
                appearance_,
                strings_,
                [name = options.localeName] {
                  return std::make_shared<const HeadlessDateFormatter>(name);
                },
                collation_,
                icons_,
                hiddenNames_,
                caches_,
                standardOutput_} {}

}  // namespace lumisk
