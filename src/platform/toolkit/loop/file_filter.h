// FileFilter: the kinds of files that a file dialog offers.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace dossierkit::toolkit {

struct FileFilter {
  std::string name;  // 图片文件, without the patterns that may stand behind it in parentheses
  std::vector<std::string> patterns;  // *.jpg, *.jpeg, ...
  bool operator==(const FileFilter&) const = default;
};

// The filters of "name|patterns|name|patterns", the patterns separated by ";". A name without patterns is
// left out.
std::vector<FileFilter> FileFiltersOf(std::string_view filter);

}  // namespace dossierkit::toolkit
