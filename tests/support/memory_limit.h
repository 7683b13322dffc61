#pragma once

#include <sys/resource.h>
#include <unistd.h>

#include <cstddef>
#include <fstream>

namespace lumisk::test {

/// Under a sanitizer memory that runs out ends the program, whoever would catch it.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool kMemoryMayRunOut = false;
#else
inline constexpr bool kMemoryMayRunOut = true;
#endif

/// While it lives the process gets no more than so many bytes of memory beyond what it has.
class MemoryLimit {
 public:
  explicit MemoryLimit(std::size_t moreBytes) {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    getrlimit(RLIMIT_AS, &former_);
    const rlimit limit{pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) + moreBytes,
                       former_.rlim_max};
    setrlimit(RLIMIT_AS, &limit);
  }
  MemoryLimit(const MemoryLimit&) = delete;
  MemoryLimit& operator=(const MemoryLimit&) = delete;
  ~MemoryLimit() { setrlimit(RLIMIT_AS, &former_); }

 private:
  rlimit former_{};
};

}  // namespace lumisk::test
