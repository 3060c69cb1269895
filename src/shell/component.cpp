#include "shell/component.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include "pages/ctrl_user.h"
#include "shell/ctrl_button_list.h"
#include "visit/dossier_window.h"

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

Component::Component(toolkit::Platform& platform, std::string app_path)
    : Component(platform, std::move(app_path), system_clock_, local_files_) {}

Component::Component(toolkit::Platform& platform, std::string app_path, const environment::Clock& clock,
                     files::Files& files)
    : desktop_(platform), runtime_{desktop_, clock, files, std::move(app_path), nullptr, nullptr} {
  RegisterClasses(desktop_);
  InstallRuntime(runtime_);
}

Component::~Component() {
  if (runtime_.thread != std::this_thread::get_id())
    EndProgram("a Component was ended on another thread than its own");
  if (runtime_.InVisit()) EndProgram("a Component was ended during its visit");
  runtime_.picker.reset();
  runtime_.window.reset();
  UninstallRuntime(runtime_);
}

}  // namespace dossierkit
