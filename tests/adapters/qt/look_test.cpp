// The fonts of the views.
#include "adapters/qt/look.h"

#include <gtest/gtest.h>

#include <QFontInfo>

namespace dossierkit::qt {
namespace {

// The families that the pages name are missing on most systems; what takes their place is not left to the
// system's own settings.
TEST(QtLook, AFamilyThatTheSystemLacksGivesTheProgramsFont) {
  const Metrics metrics(1.0);
  for (const char* family : {"宋体", "SimSun", "华文细黑", "STXihei"}) {
    EXPECT_EQ(QFontInfo(metrics.FontOf({family, 9, false})).family(), "WenQuanYi Zen Hei") << family;
  }
}

}  // namespace
}  // namespace dossierkit::qt
