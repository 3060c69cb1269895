#include "platform/toolkit/loop/file_filter.h"

#include "platform/environment/text.h"

namespace dossierkit::toolkit {

using environment::Split;
using environment::WithoutOuterBlanks;

std::vector<FileFilter> FileFiltersOf(std::string_view filter) {
  std::vector<FileFilter> filters;
  const auto parts = Split(filter, "|");
  for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
    FileFilter read;
    for (const std::string& pattern : Split(parts[i + 1], ";")) {
      if (!pattern.empty()) read.patterns.emplace_back(WithoutOuterBlanks(pattern));
    }
    if (read.patterns.empty()) continue;
    read.name = WithoutOuterBlanks(std::string_view(parts[i]).substr(0, parts[i].find('(')));
    filters.push_back(std::move(read));
  }
  return filters;
}

}  // namespace dossierkit::toolkit
