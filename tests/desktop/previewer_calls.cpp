#include "previewer_calls.h"

#include <chrono>
#include <thread>

namespace lumisk::test {

bool eventually(const std::function<bool()>& isTrue) {
  using std::chrono::steady_clock;
  const auto end = steady_clock::now() + std::chrono::seconds(30);
  while (steady_clock::now() < end) {
    if (isTrue()) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return false;
}

ProcessResult call(const std::string& method, const std::vector<std::string>& arguments,
                   const std::string& name, const std::string& path, const std::string& interface) {
  std::vector<std::string> words = {"/usr/bin/env",
                                    "gdbus",
                                    "call",
                                    "--session",
                                    "--dest",
                                    name,
                                    "--object-path",
                                    path,
                                    "--method",
                                    interface + "." + method,
                                    "--"};
  words.insert(words.end(), arguments.begin(), arguments.end());
  return runProcess(words);
}

ProcessResult show(const std::string& uri, const std::string& handle, bool closes) {
  return call("ShowFile", {uri, handle, closes ? "true" : "false"});
}

bool isVisible() {
  return call("Get", {kPreviewerInterface, "Visible"}, kPreviewerName, kPreviewerPath,
              "org.freedesktop.DBus.Properties")
             .standardOutput == "(<true>,)\n";
}

pid_t serviceProcess() {
  const std::string answer =
      call("GetConnectionUnixProcessID", {kPreviewerName}, "org.freedesktop.DBus",
           "/org/freedesktop/DBus", "org.freedesktop.DBus")
          .standardOutput;
  const std::size_t number = answer.find(' ');
  return number == std::string::npos ? 0 : std::stoi(answer.substr(number));
}

}  // namespace lumisk::test
