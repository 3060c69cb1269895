// Faults of servers: what makes one go away in the middle of a test, and waits until it is back.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "adapters/odbc/odbc_connection.h"
#include "platform/ado/connection.h"

namespace dossierkit::tests {

// What is told where a server goes away under a statement, and where none can be reached: how they begin.
inline constexpr char kLost[] = "与数据库服务器的连接已断开：";
inline constexpr char kUnreachable[] = "无法连接数据库服务器：";
inline constexpr char kBusy[] = "数据库正被占用，请稍后再试。";

// The description of the Failure that `act` throws, empty where it throws none.
std::string Told(const std::function<void()>& act);

// True once `is_so` gives true; false where it does not for as long as no machine needs.
bool WaitUntil(const std::function<bool()>& is_so);

// True once the server answers and no other session is on the database, as one that was cut off may be for a
// moment; false as above.
bool WaitUntilAtRest(const std::string& connection_string);

// A server answers statements that are not kept to one of its nodes.
bool Answers(const std::string& connection_string);

// The process of the server that a connection reaches; scripts/servers.sh starts it again once it has ended.
int ProcessOf(odbc::OdbcConnection& server);

// Sends the server of a connection string a signal, and waits until it has ended with all its processes.
void KillServer(const std::string& connection_string, int signal);

// Runs an action before each statement.
class ActingConnection : public ado::Connection {
 public:
  using Action = std::function<void(const std::string& statement)>;
  ActingConnection(std::shared_ptr<ado::Connection> inner, Action action)
      : inner_(std::move(inner)), action_(std::move(action)) {}

  bool IsOpen() const override { return inner_->IsOpen(); }
  ado::Snapshot Run(const std::string& statement) override {
    action_(statement);
    return inner_->Run(statement);
  }
  std::int32_t BeginTrans() override { return inner_->BeginTrans(); }
  void CommitTrans() override { inner_->CommitTrans(); }
  void RollbackTrans() override { inner_->RollbackTrans(); }

 private:
  std::shared_ptr<ado::Connection> inner_;
  Action action_;
};

}  // namespace dossierkit::tests
