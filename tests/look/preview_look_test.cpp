// How the preview window looks on the screen: at 100, 150 and 200 % nothing overlaps, nothing is cut
// off, and the pictures stand upright in their frames.
#include <gtest/gtest.h>

#include <QApplication>
#include <QFontMetrics>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QWidget>
#include <cstdlib>

#include "tests/look/preview_window.h"

namespace dossierkit::tests {
namespace {

class PreviewLook : public testing::TestWithParam<double> {
 protected:
  // Shows the window with another picture chosen, and calls `look`.
  void Look(const std::function<void(QWidget& window)>& look) {
    ScriptedQt stage({GetParam()});
    PreviewWindow window(stage);
    stage.WillChoose(kPictures + "green.jpg");
    window.Show([&] {
      window.user.Click("cmdSelPic");
      QApplication::processEvents();
      look(*QApplication::activeWindow());
    });
  }

  static std::vector<QWidget*> Parts(const QWidget& window) {
    std::vector<QWidget*> parts;
    for (const char* name :
         {"lblOldPicture", "lblNewPicture", "imgOld", "imgNew", "cmdSelPic", "cmdOK", "cmdCancel"})
      parts.push_back(window.findChild<QWidget*>(name));
    return parts;
  }
  static QRect PlaceOf(const QWidget& widget, const QWidget& window) {
    return {widget.mapTo(&window, QPoint(0, 0)), widget.size()};
  }
};

TEST_P(PreviewLook, NothingOverlapsOrLeavesTheWindow) {
  Look([](const QWidget& window) {
    const auto parts = Parts(window);
    for (std::size_t i = 0; i < parts.size(); ++i) {
      const QRect place = PlaceOf(*parts[i], window);
      EXPECT_TRUE(window.rect().contains(place)) << parts[i]->objectName().toStdString();
      for (std::size_t j = i + 1; j < parts.size(); ++j)
        EXPECT_FALSE(place.intersects(PlaceOf(*parts[j], window)))
            << parts[i]->objectName().toStdString() << " and " << parts[j]->objectName().toStdString();
    }
  });
}

TEST_P(PreviewLook, EveryTextHasRoom) {
  Look([](const QWidget& window) {
    for (const char* name : {"lblOldPicture", "lblNewPicture"}) {
      const auto* label = window.findChild<QLabel*>(name);
      for (const char* text : {"当前照片", "当前没有照片", "没有找到照片", "新照片"})
        EXPECT_LE(label->fontMetrics().horizontalAdvance(text), label->contentsRect().width()) << text;
      EXPECT_LE(label->fontMetrics().height(), label->height());
    }
    for (const char* name : {"cmdSelPic", "cmdOK", "cmdCancel"}) {
      const auto* button = window.findChild<QPushButton*>(name);
      EXPECT_LE(button->sizeHint().height(), button->height() + 2) << name;
      EXPECT_LE(button->fontMetrics().horizontalAdvance(button->text()) + 12, button->width()) << name;
    }
  });
}

// Where QT_TESTS_PREVIEW names a file, the window is kept there for the eye.
TEST_P(PreviewLook, ThePicturesStandUprightAndFillTheirFrames) {
  Look([](QWidget& window) {
    const char* file = std::getenv("QT_TESTS_PREVIEW");
    EXPECT_TRUE(!file || window.grab().save(file));
    auto* old_image = window.findChild<QWidget*>("imgOld");
    const QImage shown = old_image->grab().toImage();
    const int middle = shown.width() / 2;
    EXPECT_GT(shown.pixelColor(middle, 4).red(), 180);
    EXPECT_GT(shown.pixelColor(4, shown.height() / 3).red(), 180);
    EXPECT_GT(shown.pixelColor(middle, shown.height() - 5).blue(), 180);
    EXPECT_LT(shown.pixelColor(middle, shown.height() - 5).red(), 60);
    const QImage chosen = window.findChild<QWidget*>("imgNew")->grab().toImage();
    for (const QPoint at : {QPoint(4, 4), QPoint(chosen.width() - 5, chosen.height() - 5)})
      EXPECT_NEAR(chosen.pixelColor(at).green(), 150, 12);
  });
}

TEST_P(PreviewLook, StandsInTheMiddleOfTheScreen) {
  Look([](const QWidget& window) {
    const QPoint off = window.geometry().center() - window.screen()->geometry().center();
    EXPECT_LE(off.manhattanLength(), 40);
  });
}

TEST_P(PreviewLook, PicturesAreNamedByTheirLabels) {
  Look([](const QWidget& window) {
    EXPECT_EQ(window.findChild<QWidget*>("imgOld")->accessibleName().toStdString(), "当前照片");
    EXPECT_EQ(window.findChild<QWidget*>("imgNew")->accessibleName().toStdString(), "新照片");
    EXPECT_TRUE(window.findChild<QPushButton*>("cmdOK")->isDefault());
  });
}

INSTANTIATE_TEST_SUITE_P(Scales, PreviewLook, testing::Values(1.0, 1.5, 2.0), [](const auto& scale) {
  return std::to_string(static_cast<int>(scale.param * 100)) + "Percent";
});

}  // namespace
}  // namespace dossierkit::tests
