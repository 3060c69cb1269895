// NamedFile: a file as tests name it. Not every system takes a text for UTF-8 when it makes a path of it.
#pragma once

#include <filesystem>
#include <string>

#include "platform/files/disk.h"

namespace dossierkit::tests {

class NamedFile {
 public:
  NamedFile(const char* text) : path_(files::PathOf(text)) {}
  NamedFile(const std::string& text) : path_(files::PathOf(text)) {}
  NamedFile(const std::filesystem::path& path) : path_(path) {}
  operator const std::filesystem::path&() const { return path_; }

 private:
  std::filesystem::path path_;
};

// Removes a folder with all that is in it; on some systems a write-protected file would stay.
inline void RemoveFolder(const std::filesystem::path& folder) {
  std::error_code error;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder, error)) {
    std::filesystem::permissions(entry.path(), std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::add | std::filesystem::perm_options::nofollow,
                                 error);
  }
  std::filesystem::remove_all(folder);
}

}  // namespace dossierkit::tests
