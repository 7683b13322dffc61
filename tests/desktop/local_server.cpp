#include "local_server.h"

#include <array>

namespace lumisk::test {

LocalServer::LocalServer(Answer answer)
    : answer_(std::move(answer)),
      service_(desktop::GRef<GSocketService>::adopt(g_socket_service_new())) {
  port_ = g_socket_listener_add_any_inet_port(G_SOCKET_LISTENER(service_.get()), nullptr, nullptr);
  g_signal_connect(service_.get(), "incoming", G_CALLBACK(&LocalServer::incoming), this);
  g_socket_service_start(service_.get());
}

LocalServer::~LocalServer() {
  g_signal_handlers_disconnect_by_data(service_.get(), this);
  g_socket_service_stop(service_.get());
  g_socket_listener_close(G_SOCKET_LISTENER(service_.get()));
}

gboolean LocalServer::incoming(GSocketService*, GSocketConnection* connection, GObject*,
                               gpointer self) {
  const std::string answer = static_cast<LocalServer*>(self)->answerTo(connection);
  GOutputStream* const out = g_io_stream_get_output_stream(G_IO_STREAM(connection));
  g_output_stream_write_all(out, answer.data(), answer.size(), nullptr, nullptr, nullptr);
  g_io_stream_close(G_IO_STREAM(connection), nullptr, nullptr);
  return TRUE;
}

std::string LocalServer::answerTo(GSocketConnection* connection) {
  GInputStream* const in = g_io_stream_get_input_stream(G_IO_STREAM(connection));
  // A client that opens a connection to have one gets no answer.
  g_socket_set_timeout(g_socket_connection_get_socket(connection), 2);
  std::string request;
  std::array<char, 4096> block{};
  while (request.find("\r\n\r\n") == std::string::npos) {
    const gssize size = g_input_stream_read(in, block.data(), block.size(), nullptr, nullptr);
    if (size <= 0) return {};
    request.append(block.data(), static_cast<std::size_t>(size));
  }
  requests_.push_back(request);
  return answer_(request);
}

std::string httpAnswer(const std::string& status, const std::string& headers,
                       const std::string& body) {
  return "HTTP/1.1 " + status + "\r\n" + headers +
         "Content-Length: " + std::to_string(body.size()) + "\r\nConnection: close\r\n\r\n" + body;
}

}  // namespace lumisk::test
