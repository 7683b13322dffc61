#pragma once

#include <gio/gio.h>

#include <string>
#include <vector>

#include "desktop/gref.h"

namespace lumisk::desktop {

/// Well-known names on one connection, held from `claim` to `release` or the end of this object.
/// A name that another program holds is waited for: it comes when that program goes.
class BusNames {
 public:
  explicit BusNames(GDBusConnection* connection)
      : connection_(GRef<GDBusConnection>::retain(connection)) {}
  BusNames(const BusNames&) = delete;
  BusNames& operator=(const BusNames&) = delete;
  ~BusNames() { release(); }

  /// Holds exactly these names from now on.
  void claim(const std::vector<std::string>& names);
  /// When this returns, the bus routes no further call here.
  void release();

 private:
  struct Claim {
    std::string name;
    guint id;
  };

  GRef<GDBusConnection> connection_;
  std::vector<Claim> claims_;
};

/// Waits until nobody has the name, `longestMilliseconds` at most; returns whether nobody has.
bool waitUntilFree(GDBusConnection* connection, const char* name, unsigned longestMilliseconds);

}  // namespace lumisk::desktop
