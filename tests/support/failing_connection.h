// FailingConnection: fails instead of running a chosen statement, for tests of what then happens.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "platform/ado/connection.h"
#include "platform/environment/failure.h"

namespace dossierkit::tests {

class FailingConnection : public ado::Connection {
 public:
  using Predicate = std::function<bool(const std::string& statement)>;

  explicit FailingConnection(std::shared_ptr<ado::Connection> inner);

  // From now on statements are counted anew, from 1; with `counts`, only those for which it is true.
  // Instead of running number `statement_number` a Failure of this number and description is thrown,
  // once. Statements behind it run again. The calls of a transaction count as statements named
  // BeginTrans, CommitTrans, RollbackTrans.
  void FailAt(std::size_t statement_number, int failure_number = environment::kEngineFailure,
              std::string description = "磁盘或网络错误。", Predicate counts = {});

  // Statements counted since FailAt, the failed one included.
  std::size_t Count() const { return count_; }
  // True once the failure was thrown.
  bool HasFailed() const { return has_failed_; }

  bool IsOpen() const override;
  ado::Snapshot Run(const std::string& statement) override;
  std::int32_t BeginTrans() override;
  void CommitTrans() override;
  void RollbackTrans() override;

 private:
  void CountAndFail(const std::string& statement);

  std::shared_ptr<ado::Connection> inner_;
  std::size_t fail_at_ = 0;  // 0 is never
  std::size_t count_ = 0;
  bool has_failed_ = false;
  int failure_number_ = 0;
  std::string description_;
  Predicate counts_;
};

}  // namespace dossierkit::tests
