// Warnings of Qt's are failures of the test that they come in.
#include <gtest/gtest-spi.h>

#include <QObject>

#include "tests/support/qt_warnings.h"

namespace dossierkit::tests {
namespace {

// As Qt itself finds it.
void ConnectNothing() { QObject::connect(nullptr, "1a()", nullptr, "1b()"); }
constexpr const char* kNothing = "QObject::connect: Cannot connect (nullptr)::a() to (nullptr)::b()";

TEST(QtWarnings, AWarningFailsItsTest) {
  EXPECT_NONFATAL_FAILURE(qWarning("not due"), "a warning of Qt's: not due");
  EXPECT_NONFATAL_FAILURE(qCritical("worse"), "a warning of Qt's: worse");
}

TEST(QtWarnings, AWarningThatIsDueIsTaken) {
  const DueQtWarning due(kNothing);
  ConnectNothing();
  ConnectNothing();
}

TEST(QtWarnings, ADueWarningIsMeantByItsWholeText) {
  const DueQtWarning due("due");
  EXPECT_NONFATAL_FAILURE(qWarning("due, or nearly"), "a warning of Qt's: due, or nearly");
  qWarning("due");
}

TEST(QtWarnings, ADueWarningThatDoesNotComeFailsItsTest) {
  EXPECT_NONFATAL_FAILURE(DueQtWarning("never"), "a warning of Qt's did not come: never");
  EXPECT_NONFATAL_FAILURE(qWarning("never"), "a warning of Qt's: never");
}

TEST(QtWarnings, WhatThePlatformWithoutAScreenSaysAtEachWindowIsKnown) {
  qWarning("This plugin does not support grabbing the keyboard");
  qWarning("This plugin does not support propagateSizeHints()");
  qWarning("This plugin does not support raise()");
}

}  // namespace
}  // namespace dossierkit::tests
