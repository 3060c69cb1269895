// Runtime: the one object through which module routines reach connection, message boxes, clock and
// files. The program installs it.
#pragma once

#include <memory>
#include <string>
#include <thread>

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

  std::thread::id thread = std::this_thread::get_id();  // the one on which everything happens

  // From the load of the window to the end of its modal call.
  bool InVisit() const;
};

// Makes `runtime` the one in use, in place of a former one. It must outlive its use. Throws 400 during a
// visit, std::logic_error where the former one is of another thread.
void InstallRuntime(Runtime& runtime);
// From now on none is in use, if it was this one.
void UninstallRuntime(const Runtime& runtime);
// The one in use; throws std::logic_error where none is.
Runtime& TheRuntime();

// The connection of the visit; an unopened one is made where none was set.
ado::Connection& gConnection();

}  // namespace dossierkit
