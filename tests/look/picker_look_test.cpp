// How the picker looks on the screen: at 100, 150 and 200 % nothing overlaps, nothing is cut off, and the
// list of codes stays out of sight.
#include <gtest/gtest.h>

#include <QApplication>
#include <QPushButton>
#include <QScrollArea>
#include <QWidget>
#include <cstdlib>

#include "codes/fm_grp_cod.h"
#include "tests/support/scripted_qt.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

class PickerLook : public testing::TestWithParam<double> {
 protected:
  // Shows the picker alone, on the divisions of the country, and calls `look`.
  void Look(const std::string& search, const std::function<void(QWidget& content)>& look) {
    ScriptedQt stage({GetParam()});
    toolkit::Desktop desktop(stage);
    const FixedClock clock;
    files::LocalFiles files;
    Runtime runtime{desktop, clock, files, "/opt/dossier", SampleDatabase(), nullptr};
    InstallRuntime(runtime);
    CodePicker().DmGrp = "GB2260";
    CodePicker().SearchText = search;
    stage.WillRun([&](toolkit::Form&) {
      QApplication::processEvents();
      // A screen that is too small scrolls what stands in the window.
      look(*QApplication::activeWindow()->findChild<QScrollArea*>()->widget());
    });
    CodePicker().ShowModal();
    UninstallRuntime(runtime);
  }

  static QRect PlaceOf(const QWidget& widget, const QWidget& content) {
    return {widget.mapTo(&content, QPoint(0, 0)), widget.size()};
  }
  static void ExpectAbove(const QWidget& content, const char* upper, const char* lower) {
    EXPECT_LT(PlaceOf(*content.findChild<QWidget*>(upper), content).bottom(),
              PlaceOf(*content.findChild<QWidget*>(lower), content).top())
        << upper << " above " << lower;
  }
  static void ExpectApart(const QWidget& content, const std::vector<const char*>& names) {
    for (const char* name : names) {
      const auto* part = content.findChild<QWidget*>(name);
      ASSERT_TRUE(part) << name;
      EXPECT_TRUE(part->isVisible()) << name;
      EXPECT_TRUE(content.rect().contains(PlaceOf(*part, content))) << name;
      for (const char* other : names) {
        if (name == other) continue;
        const auto* neighbour = content.findChild<QWidget*>(other);
        EXPECT_FALSE(PlaceOf(*part, content).intersects(PlaceOf(*neighbour, content)))
            << name << " and " << other;
      }
    }
  }
};

// Where QT_TESTS_PICKER names a file, the window is kept there for the eye.
TEST_P(PickerLook, TheTreeStandsAloneAboveTheButtons) {
  Look("", [](QWidget& content) {
    ExpectApart(content, {"tvGrpCod", "cmdOK", "cmdCancel", "cmdDel"});
    for (const char* button : {"cmdOK", "cmdCancel", "cmdDel"}) ExpectAbove(content, "tvGrpCod", button);
    EXPECT_FALSE(content.findChild<QWidget*>("lstDmCpt")->isVisible());
    const char* file = std::getenv("QT_TESTS_PICKER");
    EXPECT_TRUE(!file || content.grab().save(file));
  });
}

TEST_P(PickerLook, TheListStandsBelowItsBox) {
  Look("bjs", [](const QWidget& content) {
    ExpectApart(content, {"txtDm", "lstDmCpt", "cmdOK", "cmdCancel", "cmdDel"});
    ExpectAbove(content, "txtDm", "lstDmCpt");
    for (const char* button : {"cmdOK", "cmdCancel", "cmdDel"}) ExpectAbove(content, "lstDmCpt", button);
    EXPECT_FALSE(content.findChild<QWidget*>("tvGrpCod")->isVisible());
  });
}

TEST_P(PickerLook, TheListOfCodesIsOutOfSight) {
  Look("bjs", [](const QWidget& content) {
    const auto* codes = content.findChild<QWidget*>("lstDmCod");
    ASSERT_TRUE(codes);
    EXPECT_FALSE(content.rect().intersects(PlaceOf(*codes, content)));
  });
}

TEST_P(PickerLook, TheButtonsHaveRoomForTheirCaptions) {
  Look("", [](const QWidget& content) {
    for (const char* name : {"cmdOK", "cmdCancel", "cmdDel"}) {
      const auto* button = content.findChild<QPushButton*>(name);
      EXPECT_LE(button->fontMetrics().horizontalAdvance(button->text()) + 12, button->width()) << name;
      EXPECT_LE(button->sizeHint().height(), button->height() + 2) << name;
    }
  });
}

INSTANTIATE_TEST_SUITE_P(Scales, PickerLook, testing::Values(1.0, 1.5, 2.0), [](const auto& scale) {
  return std::to_string(static_cast<int>(scale.param * 100)) + "Percent";
});

}  // namespace
}  // namespace dossierkit::tests
