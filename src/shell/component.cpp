#include "shell/component.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include "pages/ctrl_user.h"
#include "platform/environment/clock.h"
#include "platform/files/files.h"
#include "platform/toolkit/loop/desktop.h"
#include "shell/ctrl_button_list.h"
#include "visit/dossier_window.h"
#include "visit/runtime.h"

namespace dossierkit {
namespace {

void RegisterClasses(toolkit::Desktop& desktop) {
  RegisterPages(desktop);
  desktop.RegisterClass("DossierKit.ctrlButtonList",
                        [](const std::string& name) { return std::make_shared<ctrlButtonList>(name); });
}

[[noreturn]] void EndProgram(const char* why) {
  std::fprintf(stderr, "DossierKit: %s\n", why);
  std::abort();
}

}  // namespace

struct Component::Parts {
  environment::SystemClock system_clock;
  files::LocalFiles local_files;
  toolkit::Desktop desktop;
  Runtime runtime;

  // Without a clock and files of the caller's: its own.
  Parts(toolkit::Platform& platform, std::string app_path, const environment::Clock* clock,
        files::Files* files)
      : desktop(platform), runtime{desktop,
                                   clock ? *clock : system_clock,
                                   files ? *files : local_files,
                                   std::move(app_path),
                                   nullptr,
                                   nullptr} {
    RegisterClasses(desktop);
    InstallRuntime(runtime);
  }
};

Component::Component(toolkit::Platform& platform, std::string app_path)
    : parts_(std::make_unique<Parts>(platform, std::move(app_path), nullptr, nullptr)) {}

Component::Component(toolkit::Platform& platform, std::string app_path, const environment::Clock& clock,
                     files::Files& files)
    : parts_(std::make_unique<Parts>(platform, std::move(app_path), &clock, &files)) {}

Component::~Component() {
  Runtime& runtime = parts_->runtime;
  if (runtime.thread != std::this_thread::get_id())
    EndProgram("a Component was ended on another thread than its own");
  if (runtime.InVisit()) EndProgram("a Component was ended during its visit");
  runtime.picker.reset();
  runtime.window.reset();
  UninstallRuntime(runtime);
}

toolkit::Desktop& Component::GetDesktop() const { return parts_->desktop; }

}  // namespace dossierkit
