#include "tests/support/server_faults.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <fstream>
#include <stdexcept>
#include <thread>

#include "platform/environment/failure.h"
#include "platform/environment/value.h"

namespace dossierkit::tests {

std::string Told(const std::function<void()>& act) {
  try {
    act();
  } catch (const environment::Failure& failure) {
    return failure.description();
  }
  return {};
}

bool WaitUntil(const std::function<bool()>& is_so, int seconds) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
  while (!is_so()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  return true;
}

bool Answers(const std::string& connection_string) {
  try {
    odbc::OdbcConnection(connection_string).RunNative("select 1 from information_schema.tables where 1=0");
    return true;
  } catch (const environment::Failure&) {
    return false;
  }
}

int ProcessOf(odbc::OdbcConnection& server) {
  const bool is_postgresql = server.EngineName() == "PostgreSQL";
  const std::string told = environment::TextOf(
      server.RunNative(is_postgresql ? "select pg_read_file('postmaster.pid')" : "select @@pid_file")
          .ValueAt(0, 0));
  if (is_postgresql) return std::stoi(told);
  int process = 0;
  if (!(std::ifstream(told) >> process)) throw std::runtime_error("no process in " + told);
  return process;
}

void KillServer(const std::string& connection_string, int signal) {
  const int process = [&] {
    odbc::OdbcConnection server(connection_string);
    return ProcessOf(server);
  }();
  if (kill(process, signal) != 0) throw std::runtime_error("no server to be killed");
  if (!WaitUntil([&] { return kill(process, 0) != 0 && errno == ESRCH; }))
    throw std::runtime_error("the server does not end");
}

}  // namespace dossierkit::tests
