// dossier: the demo host where there are no views for its list of people.
#include "host/commands.h"
#include "host/windows/tour.h"

namespace dossierkit::host {
namespace {

int Run(const Options& options) {
  if (const auto code = RunCommand(options)) return *code;
  if (options.action == Options::Action::kTour) return RunTour(options);
  throw UsageError("this build opens no dossier: it knows check, create-sample, create-empty and --tour");
}

}  // namespace
}  // namespace dossierkit::host

int main(int argc, char** argv) {
  return dossierkit::host::RunProgram(argc, argv, dossierkit::host::Run, nullptr);
}
