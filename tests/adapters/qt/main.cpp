// The tests of the Qt views run without a screen.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "tests/adapters/qt/stage.h"
#include "tests/support/paths.h"

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  setenv("QT_LOGGING_RULES", "*.warning=false", 1);
  setenv("QT_ACCESSIBILITY", "1", 1);
  const auto runtime =
      std::filesystem::temp_directory_path() / ("dossierkit-qt-tests-" + std::to_string(getuid()));
  std::filesystem::create_directories(runtime);
  std::filesystem::permissions(runtime, std::filesystem::perms::owner_all);
  setenv("XDG_RUNTIME_DIR", runtime.c_str(), 0);
  ::testing::InitGoogleTest(&argc, argv);
  if (GTEST_FLAG_GET(list_tests)) return RUN_ALL_TESTS();
  dossierkit::qt::QtPlatform platform({1.0, dossierkit::tests::ShareFolder()});
  dossierkit::qt::Stage::the_platform = &platform;
  return RUN_ALL_TESTS();
}
