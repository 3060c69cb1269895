// Program: the demo host as its users start it.
#pragma once

#include <filesystem>
#include <string>

namespace dossierkit::tests {

struct Outcome {
  int code;
  std::string out;
  std::string error;
};

// The content of a file, empty where there is none.
std::string Read(const std::filesystem::path& file);

// Runs it with these arguments, behind `before` in the shell's words; its output is caught in `folder`.
Outcome RunProgram(const std::filesystem::path& folder, const std::string& arguments,
                   const std::string& before = {});

}  // namespace dossierkit::tests
