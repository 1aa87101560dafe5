// Test helper: a small HTTP server on 127.0.0.1, on a port the system
// picks, that answers each path from a table. Never any other address:
// the tests need no network but the loopback.
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <map>
#include <string>
#include <thread>

class LoopbackServer {
 public:
  struct Page {
    int status = 200;
    std::string body;
    int pieces = 1;  // a slow page comes in this many pieces, a pause between them
  };

  explicit LoopbackServer(std::map<std::string, Page> pages) : pages_(std::move(pages)) {
    listener_ = listening_socket(port_);
    thread_ = std::thread([this] { serve(); });
  }
  ~LoopbackServer() {
    stop_ = true;
    thread_.join();
    ::close(listener_);
  }

  std::string url(const std::string& path) const { return "http://127.0.0.1:" + std::to_string(port_) + path; }

  // An address on 127.0.0.1 where nobody listens: a connection there is refused.
  static std::string refused_url() {
    int port = 0;
    ::close(listening_socket(port));
    return "http://127.0.0.1:" + std::to_string(port) + "/";
  }

 private:
  static int listening_socket(int& port) {
    const int s = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    ::bind(s, reinterpret_cast<sockaddr*>(&address), size);
    ::listen(s, 16);
    ::getsockname(s, reinterpret_cast<sockaddr*>(&address), &size);
    port = ntohs(address.sin_port);
    return s;
  }

  void serve() {
    while (!stop_) {
      pollfd waiting{listener_, POLLIN, 0};
      if (::poll(&waiting, 1, 50) <= 0) continue;
      const int client = ::accept(listener_, nullptr, nullptr);
      if (client < 0) continue;
      answer(client);
      ::close(client);
    }
  }

  void answer(int client) {
    std::string request;
    char buffer[1024];
    while (request.find("\r\n\r\n") == std::string::npos) {
      const ssize_t n = ::recv(client, buffer, sizeof buffer, 0);
      if (n <= 0) return;
      request.append(buffer, static_cast<size_t>(n));
    }
    const size_t start = request.find(' ') + 1;
    const auto found = pages_.find(request.substr(start, request.find(' ', start) - start));
    const Page page = found == pages_.end() ? Page{404, "non trovato"} : found->second;
    const std::string head = "HTTP/1.1 " + std::to_string(page.status) + " X\r\nContent-Length: " +
                             std::to_string(page.body.size()) + "\r\nConnection: close\r\n\r\n";
    send_all(client, head);
    const size_t piece = (page.body.size() + page.pieces - 1) / page.pieces;
    for (size_t at = 0; at < page.body.size(); at += piece) {
      if (at > 0) std::this_thread::sleep_for(std::chrono::milliseconds(150));
      send_all(client, page.body.substr(at, piece));
    }
  }

  static void send_all(int client, const std::string& bytes) {
    for (size_t sent = 0; sent < bytes.size();) {
      const ssize_t n = ::send(client, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
      if (n <= 0) return;
      sent += static_cast<size_t>(n);
    }
  }

  std::map<std::string, Page> pages_;
  int port_ = 0;
  int listener_ = -1;
  std::atomic<bool> stop_{false};
  std::thread thread_;
};
