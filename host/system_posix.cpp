#ifndef _WIN32

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

#include "host/system.h"

namespace dossierkit::host {

namespace fs = std::filesystem;

std::vector<std::string> ArgumentsOf(int argc, char** argv) { return {argv + 1, argv + argc}; }

fs::path ShareFolder() {
  return fs::read_symlink("/proc/self/exe").parent_path().parent_path() / "share" / "dossierkit";
}

bool IsErrorATerminal() { return isatty(STDERR_FILENO) == 1; }

fs::path DataHome() {
  const auto variable = [](const char* name) {
    const char* value = std::getenv(name);
    return fs::path(value ? value : "");
  };
  fs::path data = variable("XDG_DATA_HOME");
  if (data.is_absolute()) return data;
  const passwd* user = getpwuid(geteuid());
  const fs::path home = variable("HOME");
  return (home.is_absolute() || !user ? home : fs::path(user->pw_dir)) / ".local" / "share";
}

}  // namespace dossierkit::host

#endif
