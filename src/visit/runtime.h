// Runtime: the one object through which module routines reach connection, message boxes, clock and
// files. The program installs it.
#pragma once

#include <memory>
#include <string>

#include "platform/ado/connection.h"
#include "platform/environment/clock.h"
#include "platform/files/files.h"
#include "platform/toolkit/loop/desktop.h"

namespace dossierkit {

class DossierWindow;
class fmGrpCod;

struct Runtime {
  toolkit::Desktop& desktop;
  const environment::Clock& clock;
  files::Files& files;
  std::string app_path;  // folder of the component, where its icon files lie

  // State that outlives a visit.
  std::shared_ptr<ado::Connection> connection;
  std::shared_ptr<DossierWindow> window;
  std::shared_ptr<fmGrpCod> picker = nullptr;  // made on its first use
};

// Makes `runtime` the one in use, or none with nullptr. It must outlive its use.
void InstallRuntime(Runtime* runtime);
// The one in use; throws std::logic_error where none was installed.
Runtime& TheRuntime();

// The connection of the visit; an unopened one is made where none was set.
ado::Connection& gConnection();

}  // namespace dossierkit
