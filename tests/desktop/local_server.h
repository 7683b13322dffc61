#pragma once

#include <gio/gio.h>

#include <functional>
#include <string>
#include <vector>

#include "desktop/gref.h"

namespace lumisk::test {

/// A web server on this machine, served by the main loop.
class LocalServer {
 public:
  /// What a request's text is answered with: all of it, from "HTTP/1.1 200 OK" on.
  using Answer = std::function<std::string(const std::string& request)>;

  explicit LocalServer(Answer answer);
  LocalServer(const LocalServer&) = delete;
  LocalServer& operator=(const LocalServer&) = delete;
  ~LocalServer();

  std::string url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(port_) + path;
  }
  /// The text of each request that has come.
  const std::vector<std::string>& requests() const { return requests_; }

 private:
  static gboolean incoming(GSocketService*, GSocketConnection* connection, GObject*, gpointer self);
  std::string answerTo(GSocketConnection* connection);

  Answer answer_;
  desktop::GRef<GSocketService> service_;
  std::vector<std::string> requests_;
  unsigned port_ = 0;
};

/// An answer with this status line, these header lines (each ended by CR LF) and body.
std::string httpAnswer(const std::string& status, const std::string& headers,
                       const std::string& body);

}  // namespace lumisk::test
