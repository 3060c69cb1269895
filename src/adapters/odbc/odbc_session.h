// Session: a link to a server that is known, and its failures in the users' words.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adapters/odbc/engine.h"
#include "adapters/odbc/odbc_handle.h"
#include "platform/environment/failure.h"

namespace dossierkit::odbc {

class Session {
 public:
  // Connects to the first server of the string that can be used. Throws a Failure: for a server that cannot
  // be reached, refuses the user or is not known.
  Session(const std::string& connection_string, std::chrono::milliseconds busy_timeout);

  const Engine& engine() const { return *engine_; }
  const Link& link() const { return *link_; }

  // True from a failure on that tells that the server has gone.
  bool IsLost() const { return is_lost_; }
  // Connects anew, where the string names several servers to the next one that can be used.
  void Renew();

  // Statements belong to a transaction from now on, until it is ended.
  void BeginTransaction();
  void EndTransaction(bool commit);
  // True once the server has undone the whole transaction by itself.
  bool IsUndone() const { return is_undone_; }

  // What `call` gives; a failure of the driver in it is thrown as a Failure that carries the statement.
  template <typename Call>
  auto Told(const std::string& statement, Call call) {
    try {
      return call();
    } catch (const DriverFailure& failure) {
      throw FailureOf(failure.diagnosis, statement);
    }
  }

  // Runs one text of the server's own SQL.
  void Run(const std::string& text);
  // The first column of its first row, empty where there is none.
  std::string Ask(const std::string& question);

 private:
  // Tries all servers, `first` (of any size) before the others, again and again for as long.
  void Connect(std::size_t first, std::chrono::milliseconds patience);
  void ConnectToServer();
  void LinkTo(const std::string& string);
  environment::Failure FailureOf(const Diagnosis& diagnosis, const std::string& statement);

  std::vector<std::string> servers_;  // a connection string each
  std::size_t server_ = 0;
  std::chrono::milliseconds busy_timeout_;
  std::unique_ptr<Link> link_;
  const Engine* engine_ = nullptr;
  bool is_lost_ = false;
  bool in_transaction_ = false;
  bool is_undone_ = false;
};

}  // namespace dossierkit::odbc
