// FolderTest: a folder of files for one test, on the disk of the tests.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

#include "platform/environment/failure.h"
#include "platform/files/files.h"
#include "tests/support/failures.h"
#include "tests/support/named_file.h"

namespace dossierkit::files {

using tests::NumberOfFailure;

class FolderTest : public testing::Test {
 protected:
  FolderTest() {
    const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
    root_ =
        std::filesystem::path(testing::TempDir()) / ("dossierkit-" + std::to_string(getpid()) + "-" + name);
    folder_ = root_ / u8"照片";
    tests::RemoveFolder(root_);
    std::filesystem::create_directories(folder_);
  }
  ~FolderTest() override { tests::RemoveFolder(root_); }

  // The path of a file in the folder, as the system writes paths.
  std::string Path(const std::string& name) const { return folder_.string() + "\\" + name; }
  // The path of a file outside of it.
  std::filesystem::path Elsewhere(const std::string& name) const { return root_ / name; }

  // Files by their name in the folder, or by their whole path.
  void Write(const tests::NamedFile& file, const std::string& content) const {
    std::ofstream(folder_ / file, std::ios::binary) << content;
  }
  std::string Read(const tests::NamedFile& file) const {
    std::ostringstream bytes;
    bytes << std::ifstream(folder_ / file, std::ios::binary).rdbuf();
    return bytes.str();
  }
  void Allow(const std::string& name, unsigned rights) const {
    std::filesystem::permissions(folder_ / name, std::filesystem::perms{rights});
  }
  unsigned RightsOf(const std::string& name) const {
    return static_cast<unsigned>(std::filesystem::symlink_status(folder_ / name).permissions());
  }
  // The names in the folder.
  std::set<std::string> Names() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }
  int NumberOfCopy(const std::string& source, const std::string& target) {
    return NumberOfFailure([&] { files_.CopyFile(source, target, true); });
  }

  std::filesystem::path root_;
  std::filesystem::path folder_;
  LocalFiles files_;
};

using NameSet = std::set<std::string>;

}  // namespace dossierkit::files
