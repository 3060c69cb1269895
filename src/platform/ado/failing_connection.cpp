#include "platform/ado/failing_connection.h"

#include <utility>

namespace dossierkit::ado {

FailingConnection::FailingConnection(std::shared_ptr<Connection> inner) : inner_(std::move(inner)) {}

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

Snapshot FailingConnection::Run(const std::string& statement) {
  if (!counts_ || counts_(statement)) {
    ++count_;
    if (count_ == fail_at_) {
      has_failed_ = true;
      throw environment::Failure(failure_number_, description_, statement);
    }
  }
  return inner_->Run(statement);
}

}  // namespace dossierkit::ado
