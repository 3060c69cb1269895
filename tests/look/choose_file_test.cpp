// The preview window with the real file dialog over it.
#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QTimer>

#include "platform/environment/failure.h"
#include "tests/look/preview_window.h"
#include "tests/support/qt_warnings.h"
#include "tests/support/window_test.h"

namespace dossierkit::tests {
namespace {

class QtWithDialog : public ScriptedQt {
 public:
  using ScriptedQt::ScriptedQt;
  std::string ChooseFile(const toolkit::CommonDialog& request) override {
    return QtPlatform::ChooseFile(request);
  }
};

class ChooseFile : public testing::Test {
 protected:
  // Presses the button and acts on the file dialog.
  void InDialog(const std::function<void(QFileDialog& dialog, QLineEdit& name)>& act) {
    QTimer::singleShot(0, [act] {
      ASSERT_TRUE(QTest::qWaitFor([] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        return dialog && dialog == QApplication::activeWindow();
      }));
      auto& dialog = *qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      act(dialog, *dialog.findChild<QLineEdit*>("fileNameEdit"));
    });
    open_();
  }
  void Type(const std::string& name) {
    InDialog([name](QFileDialog&, QLineEdit& edit) {
      edit.setText(QString::fromStdString(name));
      QTest::keyClick(&edit, Qt::Key_Return);
    });
  }

  QtWithDialog stage_;
  PreviewWindow window_{stage_};
  std::function<void()> open_ = [this] { window_.user.Click("cmdSelPic"); };
};

TEST_F(ChooseFile, TheDialogStartsInTheFolderOfThePhotographAndShowsPictures) {
  window_.Show([&] {
    InDialog([&](QFileDialog& dialog, QLineEdit& name) {
      EXPECT_EQ(dialog.directory().path().toStdString(), window_.folder.Photos().string());
      EXPECT_EQ(name.text().toStdString(), "");
      EXPECT_EQ(dialog.nameFilters(), QStringList{"图片文件 (*.jpg)"});
      QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(window_.preview->NewFile, "");
    EXPECT_FALSE(window_.preview->LoopEnded()) << "Esc closes the dialog, not the window behind it";
  });
}

TEST_F(ChooseFile, ATypedNameInThatFolderIsChosen) {
  PhotoFolder::Write(window_.folder.Photos() / "另一张.jpg", PhotoFolder::Read(kPictures + "green.jpg"));
  window_.Show([&] {
    Type("另一张.jpg");
    EXPECT_EQ(window_.preview->NewFile, (window_.folder.Photos() / "另一张.jpg").string());
  });
}

TEST_F(ChooseFile, TheLetterOfTheButtonOpensTheDialog) {
  open_ = [this] { window_.user.Press('S', toolkit::kAlt); };
  window_.Show([&] {
    Type(kPictures + "green.jpg");
    EXPECT_EQ(window_.preview->NewFile, kPictures + "green.jpg");
  });
}

TEST_F(ChooseFile, RequiredATypedNameThatDoesNotExistFailsTheWindow) {
  int number = 0;
  try {
    window_.Show([&] { Type("none.jpg"); });
  } catch (const environment::Failure& failure) {
    number = failure.number();
  }
  EXPECT_EQ(number, 53);
  EXPECT_FALSE(window_.preview->Loaded());
  EXPECT_TRUE(stage_.messages.empty());
}

TEST_F(ChooseFile, ThePicturesOfEveryKindOfJpegAreShown) {
  window_.Show([&] {
    for (const char* name : {"progressive.jpg", "cmyk.jpg", "grey.jpg", "upside-down.jpg"}) {
      Type(kPictures + name);
      EXPECT_EQ(window_.preview->NewFile, kPictures + name);
    }
    const DueQtWarning bytes("Corrupt JPEG data: 400 extraneous bytes before marker 0xd9");
    const DueQtWarning image("JPEG datastream contains no image");
    Type(kPictures + "garbage.jpg");
    EXPECT_EQ(window_.preview->NewFile, "");
  });
}

}  // namespace
}  // namespace dossierkit::tests
