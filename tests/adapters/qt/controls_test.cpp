#include <unistd.h>

#include <QCheckBox>
#include <QImage>
#include <QLabel>
#include <QScrollArea>
#include <QToolButton>
#include <cmath>
#include <cstdlib>
#include <filesystem>

#include "platform/environment/failure.h"
#include "tests/adapters/qt/stage.h"

namespace dossierkit::qt {
namespace {

class QtControls : public Stage {};

TEST_F(QtControls, StandAtTheirPlaces) {
  Play([&] {
    auto* box = Native(*form->page->name);
    EXPECT_EQ(box->geometry(), QRect(97, 226, 266, 21));  // 1450, 3390, 4000, 315 in twips, by edges
    EXPECT_EQ(box->parentWidget()->objectName(), "ctrlUserA02");
    EXPECT_EQ(Native("LabInterFace")->parentWidget()->objectName(), "Frm2");
    EXPECT_EQ(QApplication::activeWindow()->size(), QSize(796, 741))
        << "the design, as wide as screen and frame allow";
  });
}

// Where QT_TESTS_PICTURE names a file, the window is kept there for the eye.
TEST_F(QtControls, DrawThemselves) {
  Play([&] {
    auto* window = QApplication::activeWindow();
    window->resize(1016, 741);
    form->page->coded->SetText("硕士");
    form->page->name->SetText("清华大学");
    form->page->date->SetText("1990年03月");
    form->page->notes->SetText("师从张教授，从事结构力学研究。\r\n毕业论文获优秀奖。");
    form->bar->Button("Delete").SetEnabled(false);
    const QImage picture = window->grab().toImage();
    EXPECT_EQ(picture.size(), window->size());
    const char* file = std::getenv("QT_TESTS_PICTURE");
    EXPECT_TRUE(!file || picture.save(file));
  });
}

TEST_F(QtControls, FollowTheModelsState) {
  Play([&] {
    auto* box = Native(*form->page->coded);
    form->page->coded->SetEnabled(false);
    EXPECT_FALSE(box->isEnabled());
    form->page->coded->SetVisible(false);
    EXPECT_FALSE(box->isVisible());
    form->page->coded->SetVisible(true);
    EXPECT_TRUE(box->isVisible());
    form->page->coded->Move({1450, 5400, 3000, 315});
    EXPECT_EQ(box->y(), 360);
    form->area->SetEnabled(false);
    EXPECT_FALSE(Native(*form->page->name)->isEnabled());
    form->area->SetEnabled(true);
    EXPECT_TRUE(Native(*form->page->name)->isEnabled());
    EXPECT_TRUE(Native(*form->page->name)->hasFocus()) << "the model's focus never left";
  });
}

TEST_F(QtControls, ShowColoursAndFonts) {
  Play([&] {
    EXPECT_EQ(Native(*form->page->coded)->palette().color(QPalette::Base), QColor(0xC9, 0xE0, 0xFC));
    EXPECT_EQ(Native("labOpt")->palette().color(QPalette::WindowText), QColor(0, 0, 255));
    EXPECT_TRUE(Native("labPersonName")->font().bold());
    EXPECT_EQ(Native("labPersonName")->font().pixelSize(), 19);
    EXPECT_EQ(Native("labOpt")->font().pixelSize(), 12);
    form->page->name_label->SetFontBold(false);
    EXPECT_FALSE(Native(*form->page->name_label)->font().bold());
  });
}

TEST_F(QtControls, ALabelShowsItsTextAsItIs) {
  Play([&] {
    form->page->name_label->SetCaption("<b>甲&乙</b>");
    EXPECT_EQ(Native<QLabel>(*form->page->name_label)->text(), "<b>甲&乙</b>");
    EXPECT_EQ(Native<QLabel>(*form->page->name_label)->textFormat(), Qt::PlainText);
  });
}

TEST_F(QtControls, ACheckBoxIsCheckedByTheModel) {
  int clicks = 0;
  Play([&] {
    On(form->page->check->Click, [&] { ++clicks; });
    auto* box = Native<QCheckBox>(*form->page->check);
    Click(box);
    EXPECT_EQ(form->page->check->Value(), 1);
    EXPECT_TRUE(box->isChecked());
    Press(box, Qt::Key_Space);
    EXPECT_FALSE(box->isChecked());
    Press(box, Qt::Key_M, Qt::AltModifier);
    EXPECT_TRUE(box->isChecked());
    form->page->check->SetValue(0);
    EXPECT_FALSE(box->isChecked());
  });
  EXPECT_EQ(clicks, 4);
}

TEST_F(QtControls, ACommandButtonIsClickedByMouseBlankAndEnter) {
  int clicks = 0;
  Play([&] {
    On(form->page->button->Click, [&] { ++clicks; });
    auto* button = Native(*form->page->button);
    Click(button);
    EXPECT_TRUE(form->page->button->HasFocus());
    Press(button, Qt::Key_Space);
    Press(button, Qt::Key_Return);
  });
  EXPECT_EQ(clicks, 3);
}

TEST_F(QtControls, AnImageLoadsAJpegOrFails) {
  const auto folder =
      std::filesystem::temp_directory_path() / ("dossierkit-qt-pictures-" + std::to_string(getpid()));
  std::filesystem::create_directories(folder);
  QImage image(8, 8, QImage::Format_RGB32);
  image.fill(Qt::red);
  const std::string good = (folder / "good.jpg").string();
  const std::string bad = (folder / "bad.jpg").string();
  ASSERT_TRUE(image.save(QString::fromStdString(good), "JPEG"));
  ASSERT_TRUE(image.save(QString::fromStdString(bad), "PNG"));
  const auto number = [](const std::string& path) {
    try {
      the_platform->LoadPicture(path, {0, 0, 1500, 1500});
    } catch (const environment::Failure& failure) {
      return failure.number();
    }
    return 0;
  };
  EXPECT_EQ(number(folder.string() + "\\none.jpg"), 53);
  EXPECT_EQ(number(folder.string()), 53);
  EXPECT_EQ(number(bad), 481);
  EXPECT_TRUE(the_platform->LoadPicture("", {}).Empty());
  Play([&] {
    toolkit::Picture picture =
        the_platform->LoadPicture(folder.string() + "\\good.jpg", form->page->photo->Place());
    picture.bytes = std::make_shared<const std::vector<unsigned char>>(9, '\0');  // nobody decodes again
    form->page->photo->SetPicture(picture);
    auto* native = Native(*form->page->photo);
    const QColor middle = native->grab().toImage().pixelColor(native->width() / 2, native->height() / 2);
    EXPECT_GT(middle.red(), 240);
    EXPECT_LT(middle.green(), 20);
  });
}

TEST_F(QtControls, AToolbarButtonTakesNoFocus) {
  std::string clicked;
  Play([&] {
    On(form->bar->ButtonClick, [&](toolkit::ToolbarButton& button) { clicked += button.Key() + " "; });
    Click(Native("Add"));
    EXPECT_TRUE(form->page->name->HasFocus());
    EXPECT_TRUE(Native(*form->page->name)->hasFocus());
    Press(Native(*form->page->name), Qt::Key_S, Qt::AltModifier);
    form->bar->Button("Delete").SetEnabled(false);
    EXPECT_FALSE(Native("Delete")->isEnabled());
    Click(Native("Delete"));
    Press(Native(*form->page->name), Qt::Key_D, Qt::AltModifier);
    EXPECT_EQ(Native<QToolButton>("Exit")->accessibleName(), "退出");
    EXPECT_FALSE(Native<QToolButton>("Save")->icon().isNull());
  });
  EXPECT_EQ(clicked, "Add Save ");
}

TEST_F(QtControls, ToolbarButtonsOnlyCheckWhereTheyShould) {
  std::string clicked;
  int checks = 0;
  Play([&] {
    On(form->bar->ButtonClick, [&](toolkit::ToolbarButton& button) { clicked += button.Key() + " "; });
    On(form->page->name->Validate, [&](bool& cancel) {
      ++checks;
      cancel = true;
    });
    Click(Native("Add"));
    Click(Native("Delete"));
    Click(Native("Cancel"));
    Click(Native("Exit"));
  });
  EXPECT_EQ(clicked, "Delete Cancel Exit ");
  EXPECT_EQ(checks, 1);
}

TEST_F(QtControls, BelongToAScrollingAreaOnASmallScreen) {
  Play([&] {
    auto* area = QApplication::activeWindow()->findChild<QScrollArea*>();
    ASSERT_TRUE(area);
    EXPECT_EQ(area->widget()->size(), QSize(863, 625)) << "the page's frame alone";
    EXPECT_EQ(form->Place().width, 15240 + 120);
  });
}

TEST(QtScale, EnlargesPlacesAndFonts) {
  for (const double scale : {1.0, 1.5, 2.0}) {
    QtPlatform platform({scale});
    toolkit::Desktop desktop(platform);
    const auto form = std::make_shared<DemoForm>(desktop);
    QTimer::singleShot(0, qApp, [&] {
      ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activeWindow() != nullptr; }));
      auto* box = QApplication::activeWindow()->findChild<QWidget*>("A02_A0202_v");
      ASSERT_TRUE(box);
      EXPECT_EQ(box->x(), std::lround(1450 * scale / 15));
      EXPECT_EQ(box->geometry().right() + 1, std::lround(5450 * scale / 15));
      EXPECT_EQ(box->font().pixelSize(), std::lround(12 * scale));
      form->UserClose();
    });
    form->ShowModal();
  }
}

}  // namespace
}  // namespace dossierkit::qt
