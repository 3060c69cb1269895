// The photograph of a person, from the page to the file: real pictures, keys and message boxes.
#include <gtest/gtest.h>

#include "photos/frm_picture_preview.h"
#include "tests/support/paths.h"
#include "tests/support/photo_folder.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

using Texts = std::vector<std::string>;

std::string SamplePicture(const std::string& name) {
  return PhotoFolder::Read(SourceFolder() + "/tests/photos/pictures/" + name + ".jpg");
}

class PhotographJourney : public ::testing::Test {
 protected:
  void SetUp() override {
    PhotoFolder::Write(folder_.Photo(kPerson), SamplePicture("red-over-blue"));
    visit_.component.PhotoPath = folder_.Photos().string();
  }
  void TearDown() override { EXPECT_TRUE(visit_.script.AllUsed()); }

  void AddPhoto(const std::function<void()>& scene) {
    visit_.script.WillRun([this, scene](toolkit::Form& form) {
      preview_ = std::dynamic_pointer_cast<frmPicturePreview>(form.shared_from_this());
      scene();
    });
    visit_.user.Click("cmdAddPhoto");
  }
  void Choose(const std::string& sample) {
    visit_.script.WillChoose(folder_.MakeChoice(sample + ".jpg", SamplePicture(sample)));
    visit_.user.Click("cmdSelPic");
  }
  std::string Stored(const std::string& person = kPerson) { return PhotoFolder::Read(folder_.Photo(person)); }
  std::string OnPage() {
    const auto& picture = visit_.user.Find<toolkit::Image>("imgPerson")->GetPicture();
    return picture.Empty() ? "" : std::string(picture.bytes->begin(), picture.bytes->end());
  }

  PhotoFolder folder_;
  Visit visit_;
  std::shared_ptr<frmPicturePreview> preview_;
};

TEST_F(PhotographJourney, IsReplacedAfterANoAndAYes) {
  visit_.OpenPerson(kPerson, [&] {
    EXPECT_EQ(OnPage(), SamplePicture("red-over-blue"));
    AddPhoto([&] {
      EXPECT_EQ(visit_.Caption("lblOldPicture"), "当前照片");
      Choose("green");
      EXPECT_EQ(visit_.Caption("lblNewPicture"), "新照片");
      visit_.script.WillAnswer(toolkit::kAnswerNo);
      visit_.user.Click("cmdOK");
      EXPECT_EQ(Stored(), SamplePicture("red-over-blue"));
      visit_.script.WillAnswer(toolkit::kAnswerYes);
      visit_.user.Click("cmdOK");
    });
    EXPECT_EQ(preview_->Cancelled, 0);
    EXPECT_EQ(OnPage(), SamplePicture("green"));
  });
  EXPECT_EQ(Stored(), SamplePicture("green"));
  EXPECT_EQ(visit_.Messages(), (Texts{"确定替换现有照片文件吗？", "确定替换现有照片文件吗？"}));
}

TEST_F(PhotographJourney, IsEnteredForANewPersonByKeys) {
  std::string person;
  visit_.OpenNew([&] {
    person = visit_.OnShow().WhInfo().personID;
    EXPECT_EQ(OnPage(), "");
    AddPhoto([&] {
      EXPECT_EQ(visit_.Caption("lblOldPicture"), "当前没有照片");
      visit_.script.WillChoose(folder_.MakeChoice("新.jpg", SamplePicture("progressive")));
      EXPECT_EQ(preview_->ActiveControl()->Name(), "cmdOK");
      visit_.user.BackTab();
      visit_.user.Press(toolkit::kKeyReturn);  // 选择
      EXPECT_EQ(visit_.Caption("lblNewPicture"), "新照片");
      EXPECT_EQ(preview_->ActiveControl()->Name(), "cmdOK");
      visit_.user.Press(toolkit::kKeyReturn);  // 确定
    });
    EXPECT_EQ(OnPage(), SamplePicture("progressive"));
  });
  EXPECT_EQ(Stored(person), SamplePicture("progressive"));
  EXPECT_TRUE(visit_.Messages().empty());
}

TEST_F(PhotographJourney, EnterPressesOkAndEscCancel) {
  visit_.OpenPerson(kPerson, [&] {
    AddPhoto([&] { visit_.user.Press(toolkit::kKeyReturn); });
    EXPECT_EQ(preview_->Cancelled, 0);
    AddPhoto([&] {
      Choose("green");
      visit_.user.Press(toolkit::kKeyEscape);
    });
    EXPECT_EQ(preview_->Cancelled, 1);
    EXPECT_EQ(preview_->NewFile, "");
    // The page has its focus and its keys back.
    visit_.Text("A01_A0101").SetFocus();
    visit_.user.Type("x");
    EXPECT_TRUE(visit_.OnShow().WhInfo().IsChange);
  });
  EXPECT_EQ(Stored(), SamplePicture("red-over-blue"));
}

TEST_F(PhotographJourney, TheCloseBoxChangesNothing) {
  visit_.OpenPerson(kPerson, [&] {
    AddPhoto([&] {
      Choose("green");
      visit_.user.Close();
    });
    EXPECT_EQ(preview_->Cancelled, 1);
    EXPECT_EQ(OnPage(), SamplePicture("red-over-blue"));
  });
  EXPECT_EQ(Stored(), SamplePicture("red-over-blue"));
}

TEST_F(PhotographJourney, RequiredANameThatDoesNotExistClosesThePreview) {
  visit_.OpenPerson(kPerson, [&] {
    AddPhoto([&] {
      visit_.script.WillChoose(folder_.Choice("none.jpg"));
      visit_.user.Click("cmdSelPic");
    });
    EXPECT_FALSE(preview_->Loaded());
    EXPECT_EQ(preview_->Cancelled, 1);
    AddPhoto([&] { EXPECT_EQ(visit_.Caption("lblOldPicture"), "当前照片"); });
  });
  EXPECT_EQ(visit_.Messages(), (Texts{"更新照片出错！原因是：文件未找到"}));
  EXPECT_EQ(visit_.script.messages.front().flags, 64);
  EXPECT_EQ(visit_.script.messages.front().title, "更新照片");
}

TEST_F(PhotographJourney, AFileThatIsNoPictureIsNotFound) {
  visit_.OpenPerson(kPerson, [&] {
    PhotoFolder::Write(folder_.Photo(kPerson), "no picture");
    AddPhoto([&] {
      EXPECT_EQ(visit_.Caption("lblOldPicture"), "没有找到照片");
      visit_.script.WillChoose(folder_.MakeChoice("text.jpg", "no picture"));
      visit_.user.Click("cmdSelPic");
      EXPECT_EQ(visit_.Caption("lblNewPicture"), "没有找到照片");
      visit_.user.Click("cmdOK");
    });
    EXPECT_EQ(OnPage(), SamplePicture("red-over-blue"));
  });
  EXPECT_EQ(visit_.Messages(), (Texts{"更新照片出错！原因是：无效图片"}));
  EXPECT_EQ(Stored(), "no picture");
}

TEST_F(PhotographJourney, GoesWithThePerson) {
  visit_.OpenPerson(kPerson, [&] {
    visit_.script.WillAnswer(toolkit::kAnswerYes);
    visit_.user.ClickToolbar("Delete");
    EXPECT_EQ(OnPage(), "") << "the page of the next new person";
  });
  EXPECT_FALSE(std::filesystem::exists(folder_.Photo(kPerson)));
}

}  // namespace
}  // namespace dossierkit::tests
