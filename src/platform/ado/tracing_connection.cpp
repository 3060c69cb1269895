#include "platform/ado/tracing_connection.h"

#include <chrono>
#include <exception>
#include <utility>

namespace dossierkit::ado {

TracingConnection::TracingConnection(std::shared_ptr<Connection> inner, Observer observer)
    : inner_(std::move(inner)), observer_(std::move(observer)) {}

bool TracingConnection::IsOpen() const { return inner_->IsOpen(); }

void TracingConnection::Observe(const std::string& statement,
                                const std::function<std::size_t()>& work) const {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point start = Clock::now();
  const auto report = [&](std::size_t rows, const std::string& error) {
    const std::chrono::duration<double, std::milli> taken = Clock::now() - start;
    observer_({statement, rows, taken.count(), error});
  };
  std::size_t rows = 0;
  try {
    rows = work();
  } catch (const std::exception& failure) {
    report(0, failure.what());
    throw;
  }
  report(rows, {});
}

Snapshot TracingConnection::Run(const std::string& statement) {
  Snapshot rows;
  Observe(statement, [&] {
    rows = inner_->Run(statement);
    return rows.RowCount();
  });
  return rows;
}

std::int32_t TracingConnection::BeginTrans() {
  std::int32_t level = 0;
  Observe("BeginTrans", [&] {
    level = inner_->BeginTrans();
    return 0;
  });
  return level;
}

void TracingConnection::CommitTrans() {
  Observe("CommitTrans", [&] {
    inner_->CommitTrans();
    return 0;
  });
}

void TracingConnection::RollbackTrans() {
  Observe("RollbackTrans", [&] {
    inner_->RollbackTrans();
    return 0;
  });
}

}  // namespace dossierkit::ado
