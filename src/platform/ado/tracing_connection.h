// TracingConnection: tells an observer of every statement that passes.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/ado/connection.h"

namespace dossierkit::ado {

// One statement that was run, or BeginTrans, CommitTrans, RollbackTrans.
struct Trace {
  std::string statement;
  std::size_t rows = 0;
  double milliseconds = 0;
  std::string error;  // the description of its failure, or empty
};

class TracingConnection : public Connection {
 public:
  using Observer = std::function<void(const Trace&)>;

  // Wraps `inner`; `observer` is called after each statement, also after one that failed.
  TracingConnection(std::shared_ptr<Connection> inner, Observer observer);

  bool IsOpen() const override;
  Snapshot Run(const std::string& statement) override;
  std::int32_t BeginTrans() override;
  void CommitTrans() override;
  void RollbackTrans() override;

 private:
  // Does `work`, which gives its number of rows, and tells of it as `statement`.
  void Observe(const std::string& statement, const std::function<std::size_t()>& work) const;

  std::shared_ptr<Connection> inner_;
  Observer observer_;
};

}  // namespace dossierkit::ado
