// Swallowing: a network between two sockets of this machine that loses everything without a word.
#pragma once

#include <linux/filter.h>
#include <sys/socket.h>

#include <stdexcept>

namespace dossierkit::tests {

// What is sent to the socket is dropped before the system has seen it: nothing arrives, nothing is refused,
// and nobody is told that it arrived.
inline void SwallowAll(int socket) {
  sock_filter drop = BPF_STMT(BPF_RET | BPF_K, 0);
  const sock_fprog filter{1, &drop};
  if (setsockopt(socket, SOL_SOCKET, SO_ATTACH_FILTER, &filter, sizeof(filter)) != 0)
    throw std::runtime_error("no filter on a socket");
}

inline void SwallowNothing(int socket) {
  const int unused = 0;
  setsockopt(socket, SOL_SOCKET, SO_DETACH_FILTER, &unused, sizeof(unused));
}

}  // namespace dossierkit::tests
