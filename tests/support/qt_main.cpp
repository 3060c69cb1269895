// Tests with Qt run in a plain application object, or as guests in a foreign one, without a screen, unless
// told otherwise, and Qt has nothing to complain about.
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string>
#include <system_error>

#include "tests/support/foreign_application.h"
#include "tests/support/qt_warnings.h"
#include "tests/support/watchdog.h"

namespace {

// The application's end tells the threads of Qt's pool to end and does not wait until they have; one that is
// just ending makes the leak checker crash.
void WaitForThreads() {
  const std::filesystem::directory_iterator none;
  for (int i = 0; i < 1000; ++i) {
    std::error_code error;  // where they are not told, there is none to wait for
    if (std::distance(std::filesystem::directory_iterator("/proc/self/task", error), none) <= 1) return;
    usleep(1000);
  }
}

}  // namespace

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  setenv("QT_ACCESSIBILITY", "1", 1);
  const auto runtime =
      std::filesystem::temp_directory_path() / ("dossierkit-tests-" + std::to_string(getuid()));
  std::filesystem::create_directories(runtime);
  std::filesystem::permissions(runtime, std::filesystem::perms::owner_all);
  setenv("XDG_RUNTIME_DIR", runtime.c_str(), 0);
  dossierkit::tests::MakeQtWarningsFatal();
  int code = 0;
  {
    const auto application = dossierkit::tests::MakeForeignApplication(argc, argv);
    code = dossierkit::tests::RunTests(argc, argv);
  }
  WaitForThreads();
  return code;
}
