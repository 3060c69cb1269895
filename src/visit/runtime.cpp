#include "visit/runtime.h"

#include <stdexcept>

namespace dossierkit {
namespace {

Runtime* installed = nullptr;

}  // namespace

void InstallRuntime(Runtime* runtime) { installed = runtime; }

Runtime& TheRuntime() {
  if (!installed) throw std::logic_error("no runtime is installed");
  return *installed;
}

ado::Connection& gConnection() {
  auto& connection = TheRuntime().connection;
  if (!connection) connection = std::make_shared<ado::UnopenedConnection>();
  return *connection;
}

}  // namespace dossierkit
