#include "platform/ado/tracing_connection.h"

#include <chrono>
#include <exception>
#include <utility>

namespace dossierkit::ado {

TracingConnection::TracingConnection(std::shared_ptr<Connection> inner, Observer observer)
    : inner_(std::move(inner)), observer_(std::move(observer)) {}

bool TracingConnection::IsOpen() const { return inner_->IsOpen(); }

Snapshot TracingConnection::Run(const std::string& statement) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point start = Clock::now();
  const auto report = [&](std::size_t rows, const std::string& error) {
    const std::chrono::duration<double, std::milli> taken = Clock::now() - start;
    observer_({statement, rows, taken.count(), error});
  };
  Snapshot rows;
  try {
    rows = inner_->Run(statement);
  } catch (const std::exception& failure) {
    report(0, failure.what());
    throw;
  }
  report(rows.RowCount(), {});
  return rows;
}

}  // namespace dossierkit::ado
