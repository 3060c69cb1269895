#include "tests/faults/proxy.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <stdexcept>
#include <utility>

#include "platform/environment/text.h"
#include "tests/support/swallowing.h"

namespace dossierkit::tests {
namespace {

sockaddr_in Address(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

// Waits a moment for something to read.
bool HasSomething(int socket) {
  pollfd one{socket, POLLIN, 0};
  return poll(&one, 1, 5) > 0;
}

bool SendAll(int socket, const char* bytes, std::size_t count) {
  while (count > 0) {
    const ssize_t sent = send(socket, bytes, count, MSG_NOSIGNAL);
    if (sent <= 0) return false;
    bytes += sent;
    count -= static_cast<std::size_t>(sent);
  }
  return true;
}

}  // namespace

Proxy::Proxy(const std::string& connection_string) {
  listener_ = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address = Address(0);
  socklen_t size = sizeof(address);
  if (bind(listener_, reinterpret_cast<sockaddr*>(&address), size) != 0 || listen(listener_, 16) != 0 ||
      getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size) != 0)
    throw std::runtime_error("no port for the proxy");
  for (const std::string& attribute : environment::Split(connection_string, ";")) {
    const bool is_port = attribute.starts_with("Port=");
    if (is_port) port_ = std::stoi(attribute.substr(5));
    string_ += (string_.empty() ? "" : ";") +
               (is_port ? "Port=" + std::to_string(ntohs(address.sin_port)) : attribute);
  }
  accepting_ = std::thread([this] { Accept(); });
}

Proxy::~Proxy() {
  is_ending_ = true;
  accepting_.join();
  for (std::thread& one : passing_) one.join();
  close(listener_);
}

void Proxy::Cut() { is_cut_ = true; }

void Proxy::Swallow() {
  const std::lock_guard lock(mutex_);
  is_swallowing_ = true;
  SwallowAll(listener_);
  for (const int client : clients_) SwallowAll(client);
}

void Proxy::ActBehind(long bytes, std::function<void()> act) {
  act_ = std::move(act);
  left_ = bytes;
}

void Proxy::Mend() {
  left_ = -1;
  is_cut_ = false;
  const std::lock_guard lock(mutex_);
  is_swallowing_ = false;
  SwallowNothing(listener_);
  for (const int client : clients_) SwallowNothing(client);
}

void Proxy::Accept() {
  while (!is_ending_) {
    if (!HasSomething(listener_)) continue;
    const int client = accept(listener_, nullptr, nullptr);
    passing_.emplace_back([this, client] { Pass(client); });
  }
}

void Proxy::Pass(int client) {
  {
    const std::lock_guard lock(mutex_);
    clients_.insert(client);
    if (is_swallowing_) SwallowAll(client);
  }
  const int server = socket(AF_INET, SOCK_STREAM, 0);
  const sockaddr_in address = Address(port_);
  if (!is_cut_ && connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0)
    PassBetween(client, server);
  close(server);
  const std::lock_guard lock(mutex_);
  clients_.erase(client);
  close(client);
}

void Proxy::PassBetween(int client, int server) {
  std::array<char, 4096> bytes;
  while (!is_ending_ && !is_cut_) {
    std::array<pollfd, 2> both{{{client, POLLIN, 0}, {server, POLLIN, 0}}};
    if (poll(both.data(), both.size(), 5) <= 0) continue;
    if (is_swallowing_) {
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
      continue;
    }
    for (const bool from_server : {false, true}) {
      if (both[from_server ? 1 : 0].revents == 0) continue;
      const ssize_t count = recv(from_server ? server : client, bytes.data(), bytes.size(), 0);
      if (count <= 0) return;
      if (from_server && left_ >= 0 && (left_ -= count) < 0) act_();
      if (is_cut_) return;
      // What was on its way is lost.
      if (is_swallowing_) break;
      if (!SendAll(from_server ? client : server, bytes.data(), static_cast<std::size_t>(count))) return;
    }
  }
}

}  // namespace dossierkit::tests
