#include "tests/support/qt_warnings.h"

#include <gtest/gtest.h>

#include <QString>
#include <QtGlobal>
#include <utility>

#include "tests/support/offscreen_complaints.h"
#include "tests/support/watchdog.h"

namespace dossierkit::tests {
namespace {

QtMessageHandler former = nullptr;
DueQtWarning* innermost = nullptr;

}  // namespace

bool IsDue(const std::string& text) {
  bool due = false;
  for (DueQtWarning* warning = innermost; warning; warning = warning->outer_) {
    if (warning->text_ != text) continue;
    warning->came_ = true;
    due = true;
  }
  return due;
}

namespace {

void Handle(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  const std::string text = message.toStdString();
  if (type != QtWarningMsg && type != QtCriticalMsg) {
    former(type, context, message);
  } else if (!kOffscreenComplaints.contains(text) && !IsDue(text)) {
    ADD_FAILURE() << "a warning of Qt's: " << text;
    PrintStack();
  }
}

}  // namespace

void MakeQtWarningsFatal() { former = qInstallMessageHandler(Handle); }

DueQtWarning::DueQtWarning(std::string text)
    : text_(std::move(text)), outer_(std::exchange(innermost, this)) {}

DueQtWarning::~DueQtWarning() {
  innermost = outer_;
  EXPECT_TRUE(came_) << "a warning of Qt's did not come: " << text_;
}

}  // namespace dossierkit::tests
