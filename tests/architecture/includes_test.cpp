// The direction of the includes, and the size of the files.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "tests/support/paths.h"

namespace dossierkit::tests {
namespace {

namespace fs = std::filesystem;

constexpr int kMostLines = 500;

// What the files of a folder of src/ may include besides the standard library and their own folder.
const std::map<std::string, std::set<std::string>> kAllowed = {
    {"platform/environment", {}},
    {"platform/files", {"platform/environment"}},
    {"platform/ado", {"platform/environment"}},
    {"platform/jet", {"platform/environment", "platform/ado"}},
    {"platform/toolkit/controls", {"platform/environment", "platform/ado"}},
    {"platform/toolkit/focus", {"platform/environment", "platform/toolkit/controls"}},
    {"platform/toolkit/loop",
     {"platform/environment", "platform/toolkit/controls", "platform/toolkit/focus"}},
    {"visit", {"platform"}},
    {"binding", {"platform", "visit"}},
    {"metadata", {"platform", "visit"}},
    {"codes", {"platform", "visit", "metadata"}},
    {"photos", {"platform", "visit"}},
    {"pages", {"platform", "visit", "metadata", "binding", "codes", "photos"}},
    {"shell", {"platform", "visit", "metadata", "binding", "codes", "photos", "pages"}},
    {"adapters/sqlite", {"platform/environment", "platform/ado", "platform/jet"}},
    {"adapters/odbc", {"platform/environment", "platform/ado", "platform/jet"}},
    {"adapters/headless", {"platform/environment", "platform/files", "platform/toolkit"}},
    {"adapters/qt", {"platform/environment", "platform/files", "platform/toolkit"}},
    // What both adapters of Windows need: its headers and its texts.
    {"adapters/windows", {}},
    {"adapters/win32", {"adapters/windows", "platform/environment", "platform/files", "platform/toolkit"}},
    // The COM server joins the system with the views and the connection of its host, as a program does.
    {"adapters/com",
     {"adapters/windows", "platform/environment", "platform/ado", "platform/toolkit", "shell", "visit"}},
};

// Written by the build: names and places that hosts see as well.
const std::set<std::string> kBuilt = {"dossierkit/share_folder.h", "dossierkit/version.h"};

// The files that call a system directly; each port to another brings its own.
const std::set<std::string> kSystemFiles = {"platform/files/disk_posix.cpp",
                                            "platform/files/disk_windows.cpp"};

// Headers of libraries, by the folder that may use them.
const std::regex kQtHeader("Q[A-Za-z]+|Q[A-Za-z]+/.*|qt.*");
const std::regex kSqliteHeader("sqlite3\\.h");
const std::regex kOdbcHeader("sql(ext|types|ucode)?\\.h");

std::vector<fs::path> Sources(const fs::path& folder) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    const auto ending = entry.path().extension();
    if (ending == ".h" || ending == ".cpp") files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::vector<std::string> Lines(const fs::path& file) {
  std::ifstream in(file);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

bool IsWithin(const std::string& path, const std::string& folder) { return path.starts_with(folder + "/"); }

std::string FolderOf(const std::string& path) {
  for (const auto& [folder, allowed] : kAllowed) {
    if (IsWithin(path, folder)) return folder;
  }
  return {};
}

TEST(Architecture, EveryFileHasAPlace) {
  for (const auto& file : Sources(SourceFolder() + "/src")) {
    EXPECT_NE(FolderOf(fs::relative(file, SourceFolder() + "/src").string()), "") << file;
  }
}

TEST(Architecture, IncludesPointDownwardsOnly) {
  const std::regex quoted("\\s*#include \"([^\"]+)\".*");
  for (const auto& file : Sources(SourceFolder() + "/src")) {
    const std::string folder = FolderOf(fs::relative(file, SourceFolder() + "/src").string());
    const auto& allowed = kAllowed.at(folder);
    for (const std::string& line : Lines(file)) {
      std::smatch match;
      if (!std::regex_match(line, match, quoted)) continue;
      const std::string included = match[1];
      const bool fine = kBuilt.contains(included) || IsWithin(included, folder) ||
                        std::any_of(allowed.begin(), allowed.end(),
                                    [&](const auto& other) { return IsWithin(included, other); });
      EXPECT_TRUE(fine) << file << " includes " << included;
    }
  }
}

TEST(Architecture, LibrariesStayInTheirAdapters) {
  const std::regex angled("\\s*#include <([^>]+)>.*");
  for (const auto& file : Sources(SourceFolder() + "/src")) {
    const std::string name = fs::relative(file, SourceFolder() + "/src").string();
    const std::string folder = FolderOf(name);
    for (const std::string& line : Lines(file)) {
      std::smatch match;
      if (!std::regex_match(line, match, angled)) continue;
      const std::string header = match[1];
      EXPECT_TRUE(folder == "adapters/qt" || !std::regex_match(header, kQtHeader))
          << file << " includes " << header;
      EXPECT_TRUE(folder == "adapters/sqlite" || !std::regex_match(header, kSqliteHeader))
          << file << " includes " << header;
      EXPECT_TRUE(folder == "adapters/odbc" || !std::regex_match(header, kOdbcHeader))
          << file << " includes " << header;
      const bool is_library =
          header.find('.') != std::string::npos || std::isupper(static_cast<unsigned char>(header[0]));
      EXPECT_TRUE(!is_library || folder.starts_with("adapters/") || kSystemFiles.contains(name))
          << file << " includes " << header;
    }
  }
}

// What a command has done stays done when a later statement of it fails: required. Only ports and adapters
// know the transactions, for hosts.
TEST(Architecture, RequiredTheSystemUsesNoTransaction) {
  const std::regex transaction("(BeginTrans|CommitTrans|RollbackTrans)\\b");
  int known = 0;
  for (const auto& file : Sources(SourceFolder() + "/src")) {
    const std::string folder = FolderOf(fs::relative(file, SourceFolder() + "/src").string());
    for (const std::string& line : Lines(file)) {
      if (!std::regex_search(line, transaction)) continue;
      ++known;
      EXPECT_TRUE(folder == "platform/ado" || folder.starts_with("adapters/")) << file << ": " << line;
    }
  }
  EXPECT_GT(known, 0) << "the names have changed: this test looks for nothing";
}

TEST(Architecture, TheCareForHostsNeedsThePortsAlone) {
  const std::regex included("\\s*#include [\"<]([^\">]+)[\">].*");
  for (const auto& file : Sources(SourceFolder() + "/host/care")) {
    for (const std::string& line : Lines(file)) {
      std::smatch match;
      if (!std::regex_match(line, match, included)) continue;
      const std::string header = match[1];
      EXPECT_TRUE(header.find_first_of("./") == std::string::npos || IsWithin(header, "host/care") ||
                  IsWithin(header, "platform/ado") || IsWithin(header, "platform/environment"))
          << file << " includes " << header;
      EXPECT_FALSE(std::regex_match(header, kQtHeader)) << file << " includes " << header;
    }
  }
}

TEST(Architecture, FilesStaySmall) {
  for (const char* folder : {"/src", "/host", "/tests", "/bench", "/fuzz"}) {
    for (const auto& file : Sources(SourceFolder() + folder)) {
      EXPECT_LE(Lines(file).size(), std::size_t{kMostLines}) << file;
    }
  }
}

}  // namespace
}  // namespace dossierkit::tests
