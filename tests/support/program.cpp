#include "tests/support/program.h"

#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "tests/support/paths.h"

namespace dossierkit::tests {

std::string Read(const std::filesystem::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

Outcome RunProgram(const std::filesystem::path& folder, const std::string& arguments,
                   const std::string& before) {
  const std::filesystem::path out = folder / "out";
  const std::filesystem::path error = folder / "error";
  const std::string command = before + "'" + DossierProgram() + "' " + arguments + " >'" + out.string() +
                              "' 2>'" + error.string() + "' </dev/null";
  const int status = std::system(command.c_str());
  return {WEXITSTATUS(status), Read(out), Read(error)};
}

}  // namespace dossierkit::tests
