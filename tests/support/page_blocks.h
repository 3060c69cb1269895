// The blocks of code in a page of documentation.
#pragma once

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/support/paths.h"

namespace dossierkit::tests {

// The text of a file of the sources.
inline std::string TextOfSource(const std::string& file) {
  std::ifstream in(SourceFolder() + "/" + file);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// What stands between each ```language and the ``` behind it.
inline std::vector<std::string> BlocksOf(const std::string& page, const std::string& language) {
  const std::string text = TextOfSource(page);
  const std::string opening = "\n```" + language + "\n";
  std::vector<std::string> blocks;
  for (std::size_t begin = text.find(opening); begin != std::string::npos;
       begin = text.find(opening, begin + 1)) {
    const std::size_t code = begin + opening.size();
    blocks.push_back(text.substr(code, text.find("```\n", code) - code));
  }
  return blocks;
}

}  // namespace dossierkit::tests
