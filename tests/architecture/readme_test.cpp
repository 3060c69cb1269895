// What the README shows of a host is the code of an example, which is built and run.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "tests/support/paths.h"

namespace dossierkit::tests {
namespace {

std::string TextOf(const std::string& file) {
  std::ifstream in(SourceFolder() + "/" + file);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// The code between ```language and ```; empty where there is none.
std::string Block(const std::string& page, const std::string& language) {
  const std::string opening = "```" + language + "\n";
  const std::size_t begin = page.find(opening);
  if (begin == std::string::npos) return {};
  const std::size_t code = begin + opening.size();
  return page.substr(code, page.find("```\n", code) - code);
}

class Readme : public ::testing::TestWithParam<const char*> {};

TEST_P(Readme, ShowsTheCodeOfAnExample) {
  const std::string shown = Block(TextOf(GetParam()), "cpp");
  const std::size_t code = shown.find("bool Maintain(");
  ASSERT_NE(code, std::string::npos);
  const std::string example = TextOf("examples/console/main.cpp");
  EXPECT_NE(example.find(shown.substr(0, code - 1)), std::string::npos) << "the include";
  EXPECT_NE(example.find(shown.substr(code)), std::string::npos) << "the ten lines";
}

TEST_P(Readme, LinksAsTheExampleDoes) {
  EXPECT_EQ(Block(TextOf(GetParam()), "cmake"), TextOf("examples/console/CMakeLists.txt"));
}

INSTANTIATE_TEST_SUITE_P(InBothLanguages, Readme, ::testing::Values("README.md", "README.zh-CN.md"));

}  // namespace
}  // namespace dossierkit::tests
