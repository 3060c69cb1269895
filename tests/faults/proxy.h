// Proxy: a network of its own between a host and a server, which can be cut.
#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace dossierkit::tests {

class Proxy {
 public:
  // Passes on to the server of a connection string; from now on, on a free port of the loopback.
  explicit Proxy(const std::string& connection_string);
  ~Proxy();
  Proxy(const Proxy&) = delete;
  Proxy& operator=(const Proxy&) = delete;

  // The same connection string by way of here.
  const std::string& String() const { return string_; }

  // Ends all connections, and each new one at once.
  void Cut();
  // From now on nothing arrives here and nothing comes back, no sign that it arrived either, as where a
  // switch is dead.
  void Swallow();
  // Acts as soon as so many bytes more have come from the server, before they are passed on.
  void ActBehind(long bytes, std::function<void()> act);
  void CutBehind(long bytes) {
    ActBehind(bytes, [this] { Cut(); });
  }
  bool IsCut() const { return is_cut_; }
  void Mend();

 private:
  void Accept();
  void Pass(int client);
  void PassBetween(int client, int server);

  std::string string_;
  int port_ = 0;
  int listener_ = -1;
  std::atomic<bool> is_ending_ = false;
  std::atomic<bool> is_cut_ = false;
  std::atomic<bool> is_swallowing_ = false;
  std::function<void()> act_;
  std::atomic<long> left_ = -1;  // bytes before it; none: -1
  std::mutex mutex_;             // of the clients
  std::set<int> clients_;
  std::vector<std::thread> passing_;
  std::thread accepting_;
};

}  // namespace dossierkit::tests
