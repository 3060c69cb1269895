#include "tests/support/failing_connection.h"

#include <utility>

namespace dossierkit::tests {

FailingConnection::FailingConnection(std::shared_ptr<ado::Connection> inner) : inner_(std::move(inner)) {}

void FailingConnection::FailAt(std::size_t statement_number, int failure_number, std::string description,
                               Predicate counts) {
  fail_at_ = statement_number;
  count_ = 0;
  has_failed_ = false;
  failure_number_ = failure_number;
  description_ = std::move(description);
  counts_ = std::move(counts);
}

bool FailingConnection::IsOpen() const { return inner_->IsOpen(); }

void FailingConnection::CountAndFail(const std::string& statement) {
  if (counts_ && !counts_(statement)) return;
  ++count_;
  if (count_ != fail_at_) return;
  has_failed_ = true;
  throw environment::Failure(failure_number_, description_, statement);
}

ado::Snapshot FailingConnection::Run(const std::string& statement) {
  CountAndFail(statement);
  return inner_->Run(statement);
}

std::int32_t FailingConnection::BeginTrans() {
  CountAndFail("BeginTrans");
  return inner_->BeginTrans();
}

void FailingConnection::CommitTrans() {
  CountAndFail("CommitTrans");
  inner_->CommitTrans();
}

void FailingConnection::RollbackTrans() {
  CountAndFail("RollbackTrans");
  inner_->RollbackTrans();
}

}  // namespace dossierkit::tests
