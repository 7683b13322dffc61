#pragma once

#include <gio/gio.h>
#include <sys/types.h>

#include <optional>
#include <string>

namespace lumisk::bench {

/// The installed program, started and called as a file manager does it.
class Previewer {
 public:
  Previewer();
  Previewer(const Previewer&) = delete;
  Previewer& operator=(const Previewer&) = delete;
  ~Previewer();

  /// Starts the service and waits until it answers to its name. Nothing is shown.
  void start();
  /// Starts the program with a file to open, as a person does from a terminal, and goes on.
  void startWith(const std::string& path);
  /// Ends the program and waits until its name and its processes are gone.
  void stop();

  void show(const std::string& path);
  void close();
  /// Whether a panel is there; nothing when the service does not answer.
  std::optional<bool> visible() const;
  /// 0 when the service is not there.
  pid_t process() const;

  /// How often an arrow key was answered with a step of the selection.
  int selectionEvents() const { return selectionEvents_; }

 private:
  void call(const char* method, GVariant* arguments) const;
  void run(const char* option, const std::string& argument);

  GDBusConnection* bus_;
  guint selectionSubscription_;
  int selectionEvents_ = 0;
};

/// Lets what the bus has sent arrive.
void receiveWhatHasCome();
void wait(double seconds);

}  // namespace lumisk::bench
