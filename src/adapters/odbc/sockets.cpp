#include "adapters/odbc/sockets.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <system_error>

namespace dossierkit::odbc {
namespace {

namespace fs = std::filesystem;

// Names that are given once, with their numbers; none where the system does not list them.
std::map<std::string, int> OpenSockets() {
  std::map<std::string, int> sockets;
  std::error_code error;
  for (fs::directory_iterator entry("/proc/self/fd", error); !error && entry != fs::directory_iterator();
       entry.increment(error)) {
    std::error_code closed_meanwhile;
    const std::string name = fs::read_symlink(entry->path(), closed_meanwhile).string();
    if (name.starts_with("socket:")) sockets.emplace(name, std::stoi(entry->path().filename().string()));
  }
  return sockets;
}

// 0 for what is no connection through a network.
int Get(int socket, int level, int option) {
  int value = 0;
  socklen_t size = sizeof(value);
  return getsockopt(socket, level, option, &value, &size) == 0 ? value : 0;
}

void Set(int socket, int option, std::chrono::seconds::rep value) {
  const int number = static_cast<int>(value);
  setsockopt(socket, IPPROTO_TCP, option, &number, sizeof(number));
}

}  // namespace

Sockets::Sockets() {
  for (const auto& [name, _] : OpenSockets()) known_.insert(name);
}

void Sockets::EndInSilence(std::chrono::seconds limit) const {
  for (const auto& [name, socket] : OpenSockets()) {
    if (known_.contains(name) || Get(socket, SOL_SOCKET, SO_KEEPALIVE) == 0 ||
        Get(socket, IPPROTO_TCP, TCP_USER_TIMEOUT) != 0)
      continue;
    // Asked first after half of it, and twice as often from then on.
    Set(socket, TCP_KEEPIDLE, std::max<std::chrono::seconds::rep>(1, limit.count() / 2));
    Set(socket, TCP_KEEPINTVL, std::max<std::chrono::seconds::rep>(1, limit.count() / 4));
    Set(socket, TCP_USER_TIMEOUT, std::chrono::milliseconds(limit).count());
  }
}

}  // namespace dossierkit::odbc
