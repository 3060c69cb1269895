// The engine that the system's tests run on is named when their program is started.
#include <gtest/gtest.h>

#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

TEST(EngineOfTheTests, IsKnownByItsName) { EXPECT_STREQ(EngineNamed("sqlite").name, "sqlite"); }

TEST(EngineOfTheTests, AnUnknownNameEndsTheProgramWithASentence) {
  EXPECT_EXIT(EngineNamed("dbase"), testing::ExitedWithCode(2),
              "DOSSIERKIT_ENGINE=dbase: the tests do not know this engine. They run on: sqlite.");
}

TEST(EngineOfTheTests, EveryVisitHasACopyOfItsOwn) {
  Visit first;
  const std::string before = SampleDatabase()->Bytes();
  EXPECT_EQ(first.database->Bytes(), before);
  first.database->RunScript("delete from A02; delete from A03");
  EXPECT_NE(first.database->Bytes(), before);
  EXPECT_EQ(SampleDatabase()->Bytes(), before);
}

}  // namespace
}  // namespace dossierkit::tests
