#include "tests/support/server_faults.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>
#include <vector>

#include "platform/environment/failure.h"
#include "platform/environment/value.h"
#include "tests/support/servers.h"

namespace dossierkit::tests {
namespace {

// What the kernel tells of a process behind its name, as in "S 1234 ..": its state and its parent. Empty once
// it is gone.
std::string StatusOf(const std::string& process) {
  std::string status;
  std::getline(std::ifstream("/proc/" + process + "/stat"), status);
  const std::size_t name = status.rfind(") ");
  return name == std::string::npos ? "" : status.substr(name + 2);
}

// Also where nobody has taken note of it yet.
bool HasEnded(const std::string& process) {
  const std::string status = StatusOf(process);
  return status.empty() || status.starts_with('Z');
}

// The process of a server and those that it has started.
std::vector<std::string> ProcessesOf(const std::string& server) {
  std::vector<std::string> all = {server};
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    const std::string process = entry.path().filename().string();
    const std::string status = StatusOf(process);
    if (status.size() > 2 && status.substr(2).starts_with(server + " ")) all.push_back(process);
  }
  return all;
}

}  // namespace

std::string Told(const std::function<void()>& act) {
  try {
    act();
  } catch (const environment::Failure& failure) {
    return failure.description();
  }
  return {};
}

bool WaitUntil(const std::function<bool()>& is_so) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(5);
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

bool WaitUntilAtRest(const std::string& connection_string) {
  if (!WaitUntil([&] { return Answers(connection_string); })) return false;
  odbc::OdbcConnection server(connection_string, kPatience);
  const std::string others = server.EngineName() == "PostgreSQL"
                                 ? "select count(*) from pg_stat_activity where datname = current_database() "
                                   "and pid <> pg_backend_pid()"
                                 : "select count(*) from information_schema.processlist where db = "
                                   "database() and id <> connection_id()";
  return WaitUntil([&] { return environment::TextOf(server.RunNative(others).ValueAt(0, 0)) == "0"; });
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
    odbc::OdbcConnection server(connection_string, kPatience);
    return ProcessOf(server);
  }();
  // A session of PostgreSQL may outlive its server for a moment, and answer one more statement.
  const auto processes = ProcessesOf(std::to_string(process));
  if (kill(process, signal) != 0) throw std::runtime_error("no server to be killed");
  if (!WaitUntil([&] { return std::all_of(processes.begin(), processes.end(), HasEnded); }))
    throw std::runtime_error("the server does not end");
}

}  // namespace dossierkit::tests
