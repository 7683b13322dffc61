#pragma once

#include <gio/gio.h>
#include <sys/types.h>

#include <filesystem>
#include <string>

namespace lumisk::bench {

/// One program that answers to the previewer's name, on a bus of its own that knows how to start it
/// and nothing else. So two of them can run on one screen, each called as Files does it.
class RacedPreviewer {
 public:
  /// `command` is what the service file says.
  RacedPreviewer(const std::string& label, const std::string& command);
  RacedPreviewer(const RacedPreviewer&) = delete;
  RacedPreviewer& operator=(const RacedPreviewer&) = delete;
  ~RacedPreviewer();

  const std::string& label() const { return label_; }

  /// Has the bus start the program, and waits until it has its name. Nothing is shown.
  void start() const;
  /// Sends the call; the bus starts the program first if it does not run.
  void show(const std::string& path) const;
  void close() const;
  /// Ends the program and waits until its processes are gone.
  void stop() const;
  /// 0 when it does not run.
  pid_t process() const;

 private:
  /// Starts the bus and returns its address.
  std::string startBus();
  GVariant* askBus(const char* method, GVariant* arguments) const;
  void call(const char* method, GVariant* arguments) const;

  std::string label_;
  std::filesystem::path services_;
  GPid bus_ = 0;
  GDBusConnection* connection_ = nullptr;
};

}  // namespace lumisk::bench
