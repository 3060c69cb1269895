#include "platform/environment/during.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace dossierkit::environment {
namespace {

TEST(During, TheFlagIsSetUntilTheScopeEnds) {
  bool flag = false;
  {
    const During during(flag);
    EXPECT_TRUE(flag);
  }
  EXPECT_FALSE(flag);
}

TEST(During, AnInnerScopeLeavesTheFlagToTheOuterOne) {
  bool flag = false;
  const During outer(flag);
  { const During inner(flag); }
  EXPECT_TRUE(flag);
}

TEST(During, AFailureLeavesTheFlagAsItWas) {
  bool flag = false;
  EXPECT_THROW(
      {
        const During during(flag);
        throw std::runtime_error("坏了");
      },
      std::runtime_error);
  EXPECT_FALSE(flag);
}

}  // namespace
}  // namespace dossierkit::environment
