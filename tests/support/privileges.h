#pragma once

#include <unistd.h>

#include <cstdlib>

namespace lumisk::test {

/// The rest of the test runs as a person whom permissions concern. A test that is run by root
/// becomes nobody for a while; for everybody else nothing changes.
class WithoutPrivileges {
 public:
  WithoutPrivileges() {
    if (geteuid() == 0) isLowered_ = seteuid(65534) == 0;
  }
  WithoutPrivileges(const WithoutPrivileges&) = delete;
  WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;
  ~WithoutPrivileges() {
    if (isLowered_ && seteuid(0) != 0) std::abort();
  }

 private:
  bool isLowered_ = false;
};

}  // namespace lumisk::test
