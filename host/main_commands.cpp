// dossier: the demo host where there are no views for its windows.
#include "host/commands.h"

namespace dossierkit::host {
namespace {

int Run(const Options& options) {
  if (const auto code = RunCommand(options)) return *code;
  throw UsageError("this build opens no window: it knows check, create-sample and create-empty");
}

}  // namespace
}  // namespace dossierkit::host

int main(int argc, char** argv) {
  return dossierkit::host::RunProgram(argc, argv, dossierkit::host::Run, nullptr);
}
