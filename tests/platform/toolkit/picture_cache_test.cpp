#include "platform/toolkit/controls/picture_cache.h"

#include <gtest/gtest.h>

#include <vector>

namespace dossierkit::toolkit {
namespace {

TEST(PictureCache, ReadsEachFileOnceAlsoOneThatIsMissing) {
  std::vector<std::string> read;
  PictureCache<int> cache([&](const std::string& path) {
    read.push_back(path);
    return path == "missing" ? 0 : static_cast<int>(path.size());
  });
  EXPECT_EQ(cache.Of("a.ico"), 5);
  EXPECT_EQ(cache.Of("missing"), 0);
  EXPECT_EQ(cache.Of("a.ico"), 5);
  EXPECT_EQ(cache.Of("missing"), 0);
  EXPECT_EQ(read, (std::vector<std::string>{"a.ico", "missing"}));
}

}  // namespace
}  // namespace dossierkit::toolkit
