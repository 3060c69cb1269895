// What the README shows of a host is the code of an example, which is built and run.
#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "tests/support/page_blocks.h"

namespace dossierkit::tests {
namespace {

// The code without its comments, which are in the language of the page, each a whole line or behind two
// blanks.
std::string WithoutComments(const std::string& code) {
  return std::regex_replace(code, std::regex("  // [^\n]*|\n *// [^\n]*"), "");
}

class InBothLanguages : public ::testing::TestWithParam<const char*> {};

TEST_P(InBothLanguages, ShowsTheCodeOfAnExample) {
  const std::vector<std::string> blocks = BlocksOf(GetParam(), "cpp");
  ASSERT_EQ(blocks.size(), 1U);
  const std::string shown = WithoutComments(blocks[0]);
  const std::size_t code = shown.find("bool Maintain(");
  ASSERT_NE(code, std::string::npos);
  const std::string example = WithoutComments(TextOfSource("examples/console/main.cpp"));
  EXPECT_NE(example.find(shown.substr(0, code - 1)), std::string::npos) << "the include";
  EXPECT_NE(example.find(shown.substr(code)), std::string::npos) << "the ten lines";
}

TEST_P(InBothLanguages, LinksAsTheExampleDoes) {
  EXPECT_EQ(BlocksOf(GetParam(), "cmake"),
            std::vector<std::string>{TextOfSource("examples/console/CMakeLists.txt")});
}

TEST(Readme, ShowsTheCommentsOfTheExampleInEnglish) {
  const std::string shown = BlocksOf("README.md", "cpp").at(0);
  EXPECT_NE(TextOfSource("examples/console/main.cpp").find(shown.substr(shown.find("bool Maintain("))),
            std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Readme, InBothLanguages, ::testing::Values("README.md", "README.zh-CN.md"));

}  // namespace
}  // namespace dossierkit::tests
