#include "adapters/odbc/sockets.h"

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>

#include "tests/support/swallowing.h"

namespace dossierkit::odbc {
namespace {

int Option(int socket, int level, int option) {
  int value = -1;
  socklen_t size = sizeof(value);
  EXPECT_EQ(getsockopt(socket, level, option, &value, &size), 0);
  return value;
}

void Set(int socket, int level, int option, int value) {
  ASSERT_EQ(setsockopt(socket, level, option, &value, sizeof(value)), 0);
}

// A connection through the loopback, both ends of it.
struct Connection {
  explicit Connection(bool asks = true) {
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof(address);
    auto* where = reinterpret_cast<sockaddr*>(&address);
    EXPECT_EQ(bind(listener, where, size), 0);
    EXPECT_EQ(listen(listener, 1), 0);
    EXPECT_EQ(getsockname(listener, where, &size), 0);
    here = socket(AF_INET, SOCK_STREAM, 0);
    Set(here, SOL_SOCKET, SO_KEEPALIVE, asks ? 1 : 0);
    EXPECT_EQ(connect(here, where, size), 0);
    there = accept(listener, nullptr, nullptr);
    close(listener);
  }
  ~Connection() {
    close(here);
    close(there);
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  // What a read that waits ends with.
  int FailureOfRead() const {
    char byte = 0;
    return recv(here, &byte, 1, 0) < 0 ? errno : 0;
  }

  int here = -1;
  int there = -1;
};

TEST(Sockets, ThoseThatCameSinceHaveTheLimit) {
  const Connection earlier;
  const Sockets before;
  const Connection later;
  before.EndInSilence(std::chrono::seconds(20));
  EXPECT_EQ(Option(later.here, IPPROTO_TCP, TCP_KEEPIDLE), 10);
  EXPECT_EQ(Option(later.here, IPPROTO_TCP, TCP_KEEPINTVL), 5);
  EXPECT_EQ(Option(later.here, IPPROTO_TCP, TCP_USER_TIMEOUT), 20000);
  EXPECT_EQ(Option(earlier.here, IPPROTO_TCP, TCP_USER_TIMEOUT), 0);
  EXPECT_GT(Option(earlier.here, IPPROTO_TCP, TCP_KEEPIDLE), 10);
}

TEST(Sockets, WhatHasALimitOfItsOwnOrAsksForNothingStaysAsItIs) {
  const Sockets before;
  const Connection limited;
  Set(limited.here, IPPROTO_TCP, TCP_USER_TIMEOUT, 70000);
  const Connection silent(false);
  const int file = socket(AF_UNIX, SOCK_STREAM, 0);
  Set(file, SOL_SOCKET, SO_KEEPALIVE, 1);
  before.EndInSilence(std::chrono::seconds(20));
  EXPECT_EQ(Option(limited.here, IPPROTO_TCP, TCP_USER_TIMEOUT), 70000);
  EXPECT_GT(Option(limited.here, IPPROTO_TCP, TCP_KEEPIDLE), 10);
  EXPECT_EQ(Option(silent.here, IPPROTO_TCP, TCP_USER_TIMEOUT), 0);
  close(file);
}

// Both that whose request was heard, and that whose request was not.
TEST(Sockets, AWaitEndsInASilentNetwork) {
  const Sockets before;
  const Connection waiting;
  const Connection sending;
  before.EndInSilence(std::chrono::seconds(1));
  tests::SwallowAll(waiting.there);
  tests::SwallowAll(sending.there);
  EXPECT_EQ(send(sending.here, "x", 1, 0), 1);
  EXPECT_EQ(waiting.FailureOfRead(), ETIMEDOUT);
  EXPECT_EQ(sending.FailureOfRead(), ETIMEDOUT);
}

}  // namespace
}  // namespace dossierkit::odbc
