#include "visit/runtime.h"

#include <stdexcept>

#include "platform/environment/failure.h"
#include "visit/dossier_window.h"

namespace dossierkit {
namespace {

Runtime* installed = nullptr;

}  // namespace

bool Runtime::InVisit() const { return window && window->InVisit(); }

void InstallRuntime(Runtime& runtime) {
  if (installed && installed->thread != runtime.thread)
    throw std::logic_error("DossierKit: a Component of another thread is in use");
  if (installed && installed->InVisit()) throw environment::MakeFailure(environment::kAlreadyShown);
  installed = &runtime;
}

void UninstallRuntime(const Runtime& runtime) {
  if (installed == &runtime) installed = nullptr;
}

Runtime& TheRuntime() {
  if (!installed) throw std::logic_error("DossierKit: no Component is set up");
  return *installed;
}

ado::Connection& gConnection() {
  TheRuntime().desktop.Busy().Tick();  // each statement comes by here
  auto& connection = TheRuntime().connection;
  if (!connection) connection = std::make_shared<ado::UnopenedConnection>();
  return *connection;
}

}  // namespace dossierkit
