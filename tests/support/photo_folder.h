// PhotoFolder: a folder of photographs, for one test unless named otherwise, and one beside it with
// pictures to choose from.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/support/named_file.h"

namespace dossierkit::tests {

class PhotoFolder {
 public:
  PhotoFolder() : PhotoFolder(::testing::UnitTest::GetInstance()->current_test_info()->name()) {}
  explicit PhotoFolder(const std::string& name)
      : root_(std::filesystem::temp_directory_path() /
              ("dossierkit-photos-" + std::to_string(getpid()) + "-" + name)) {
    RemoveFolder(root_);
    std::filesystem::create_directories(Photos());
    std::filesystem::create_directories(root_ / u8"图片");
  }
  ~PhotoFolder() { RemoveFolder(root_); }

  std::filesystem::path Photos() const { return root_ / u8"照片"; }
  std::filesystem::path Photo(const std::string& person) const {
    return Photos() / NamedFile(person + ".jpg");
  }
  // The path of a picture to choose, as a user names it.
  std::string Choice(const std::string& name) const { return (root_ / u8"图片" / NamedFile(name)).string(); }

  static void Write(const NamedFile& file, const std::string& bytes) {
    std::ofstream(static_cast<const std::filesystem::path&>(file), std::ios::binary) << bytes;
  }
  static std::string Read(const NamedFile& file) {
    std::ifstream in(static_cast<const std::filesystem::path&>(file), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  }
  static void Protect(const NamedFile& file) {
    std::filesystem::permissions(file, std::filesystem::perms::owner_read);
  }
  // Writes a picture to choose and gives its path.
  std::string MakeChoice(const std::string& name, const std::string& bytes) const {
    Write(Choice(name), bytes);
    return Choice(name);
  }

 private:
  std::filesystem::path root_;
};

// What the views without a screen take for a picture: `content` between the marks of a JPEG file.
inline std::string Jpeg(const std::string& content) { return "\xFF\xD8" + content + "\xFF\xD9"; }
// The same with so many bytes in all.
inline std::string JpegOfSize(std::size_t bytes) { return Jpeg(std::string(bytes - 4, 'x')); }

}  // namespace dossierkit::tests
