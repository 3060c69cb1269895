// The preview window: its design, what its load shows, its ways out.
#include <exception>
#include <new>

#include "adapters/headless/headless_platform.h"
#include "tests/photos/photo_test.h"

namespace dossierkit::tests {
namespace {

using PicturePreview = PhotoTest;

TEST_F(PicturePreview, TextsAreExact) {
  Preview([&] {
    EXPECT_EQ(preview->Name(), "frmPicturePreview");
    EXPECT_EQ(preview->Caption(), "照片预览");
    EXPECT_EQ(visit.user.Find<toolkit::CommandButton>("cmdSelPic")->Caption(), "选择(&S)...");
    EXPECT_EQ(visit.user.Find<toolkit::CommandButton>("cmdOK")->Caption(), "确   定");
    EXPECT_EQ(visit.user.Find<toolkit::CommandButton>("cmdCancel")->Caption(), "取   消");
    EXPECT_EQ(visit.user.Find("dlgSelPic")->GetKind(), toolkit::Kind::kCommonDialog);
  });
}

TEST_F(PicturePreview, OkIsTheDefaultButtonAndCancelTheCancelButton) {
  Preview([&] {
    for (const char* name : {"cmdSelPic", "cmdOK", "cmdCancel"}) {
      const auto button = visit.user.Find<toolkit::CommandButton>(name);
      EXPECT_EQ(button->Default(), std::string(name) == "cmdOK") << name;
      EXPECT_EQ(button->Cancel(), std::string(name) == "cmdCancel") << name;
    }
  });
}

TEST_F(PicturePreview, TheTwoPicturesStandSideBySideBelowTheirLabels) {
  Preview([&] {
    const auto old_image = visit.user.Find<toolkit::Image>("imgOld");
    const auto new_image = visit.user.Find<toolkit::Image>("imgNew");
    for (const auto& image : {old_image, new_image}) {
      EXPECT_EQ(image->Place().width, 1695);
      EXPECT_EQ(image->Place().height, 2175);
      EXPECT_TRUE(image->Border());
    }
    EXPECT_LT(old_image->Place().left + 1695, new_image->Place().left);
    EXPECT_EQ(old_image->Place().top, new_image->Place().top);
    for (const auto& [label, image] : {std::pair{"lblOldPicture", old_image}, {"lblNewPicture", new_image}}) {
      const auto& place = visit.user.Find(label)->Place();
      EXPECT_EQ(place.left, image->Place().left) << label;
      EXPECT_LE(place.top + place.height, image->Place().top) << label;
      EXPECT_EQ(image->AccessibleName(), visit.Caption(label)) << label;
    }
  });
}

TEST_F(PicturePreview, EverythingStandsInsideTheWindow) {
  Preview([&] {
    for (const auto& control : preview->Controls()) {
      const auto& place = control->Place();
      EXPECT_LE(place.left + place.width, preview->DesignWidth()) << control->Name();
      EXPECT_LE(place.top + place.height, preview->DesignHeight()) << control->Name();
    }
    EXPECT_FALSE(preview->Sizable());
  });
}

TEST_F(PicturePreview, StandsInTheMiddleOfTheScreen) {
  Preview([&] {
    EXPECT_EQ(preview->Place().left, (15360 - preview->Place().width) / 2);
    EXPECT_EQ(preview->Place().top, (11520 - preview->Place().height) / 2);
  });
}

TEST_F(PicturePreview, ShowsThePresentPhotograph) {
  Preview([&] {
    EXPECT_EQ(preview->personID, kPerson);
    EXPECT_EQ(preview->OldFile, PhotoName());
    EXPECT_EQ(preview->TargetFile, PhotoName());
    EXPECT_EQ(preview->NewFile, "");
    EXPECT_EQ(preview->Cancelled, 1);
    EXPECT_EQ(OldCaption(), "当前照片");
    EXPECT_EQ(Shown("imgOld"), "old");
    EXPECT_EQ(Shown("imgNew"), "");
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(PicturePreview, SaysThatThereIsNoPhotograph) {
  RemovePhoto();
  Preview([&] {
    EXPECT_EQ(preview->OldFile, "");
    EXPECT_EQ(preview->TargetFile, PhotoName());
    EXPECT_EQ(OldCaption(), "当前没有照片");
    EXPECT_EQ(Shown("imgOld"), "");
  });
}

TEST_F(PicturePreview, AFolderThatDoesNotExistIsNoFailure) {
  for (const std::string& path : {std::string(), folder.Photos().string() + "-none"}) {
    visit.component.PhotoPath = path;
    Preview([&] {
      EXPECT_EQ(preview->OldFile, "");
      EXPECT_EQ(preview->TargetFile, path + "\\" + kPerson + ".jpg");
      EXPECT_EQ(OldCaption(), "当前没有照片");
    });
  }
  EXPECT_TRUE(Shown().empty());
}

TEST_F(PicturePreview, AFileThatIsNoPictureIsNotFoundButKept) {
  visit.Open([&] {
    PhotoFolder::Write(Photo(), "no picture");
    AddPhoto([&] {
      EXPECT_EQ(OldCaption(), "没有找到照片");
      EXPECT_EQ(preview->OldFile, PhotoName());
      EXPECT_EQ(Shown("imgOld"), "");
    });
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(PicturePreview, RequiredAFolderWithATrailingBackslashYieldsTwo) {
  visit.component.PhotoPath = folder.Photos().string() + "\\";
  const std::string doubled = folder.Photos().string() + "\\\\" + kPerson + ".jpg";
  Preview([&] {
    EXPECT_EQ(preview->OldFile, doubled);
    EXPECT_EQ(preview->TargetFile, doubled);
  });
}

TEST_F(PicturePreview, AFailureToLookForThePhotographIsShownAndGivesNone) {
  visit.Open([&] {
    visit.files.FailAt(1, environment::kPathAccess);
    AddPhoto([&] {
      EXPECT_EQ(preview->OldFile, "");
      EXPECT_EQ(preview->TargetFile, PhotoName());
      EXPECT_EQ(OldCaption(), "当前没有照片");
    });
  });
  EXPECT_EQ(Shown(), (Messages{{"读取此人员的照片出错！原因是：路径/文件访问错误", 64, "照片预览"}}));
}

TEST_F(PicturePreview, WhateverTheLookThrowsIsShownAndGivesNone) {
  visit.Open([&] {
    visit.files.FailAt(1, std::make_exception_ptr(std::bad_alloc()));
    AddPhoto([&] {
      EXPECT_EQ(preview->OldFile, "");
      EXPECT_EQ(OldCaption(), "当前没有照片");
    });
  });
  EXPECT_EQ(Shown(), (Messages{{"读取此人员的照片出错！原因是：std::bad_alloc", 64, "照片预览"}}));
}

TEST_F(PicturePreview, WhateverTheReadingThrowsIsNotFound) {
  visit.Open([&] {
    visit.HeadlessViews().on_load_picture = [](const std::string&) { throw std::bad_alloc(); };
    AddPhoto([&] { EXPECT_EQ(OldCaption(), "没有找到照片"); });
    visit.HeadlessViews().on_load_picture = nullptr;
  });
  EXPECT_TRUE(Shown().empty());
}

// --- the ways out ------------------------------------------------------------------------------------------

TEST_F(PicturePreview, EnterIsOk) {
  Preview([&] {
    visit.user.Press(toolkit::kKeyReturn);
    EXPECT_TRUE(preview->LoopEnded());
  });
  EXPECT_EQ(preview->Cancelled, 0);
}

TEST_F(PicturePreview, EscIsCancel) {
  Preview([&] {
    ChooseNew();
    visit.user.Press(toolkit::kKeyEscape);
    EXPECT_TRUE(preview->LoopEnded());
  });
  EXPECT_EQ(preview->Cancelled, 1);
  EXPECT_EQ(preview->NewFile, "");
}

TEST_F(PicturePreview, CancelAfterAChoiceDropsIt) {
  Preview([&] {
    ChooseNew();
    visit.user.Click("cmdCancel");
  });
  EXPECT_EQ(preview->Cancelled, 1);
  EXPECT_EQ(preview->NewFile, "");
  EXPECT_EQ(StoredPhoto(), Jpeg("old"));
  EXPECT_TRUE(Shown().empty());
}

TEST_F(PicturePreview, TheCloseBoxLeavesEverythingAsItWas) {
  Preview([&] {
    ChooseNew();
    visit.user.Close();
    EXPECT_FALSE(preview->Loaded());
  });
  EXPECT_EQ(preview->Cancelled, 1);
  EXPECT_EQ(StoredPhoto(), Jpeg("old"));
  EXPECT_TRUE(Shown().empty());
}

TEST_F(PicturePreview, TheCloseBoxAfterARefusedOkCountsAsCancelled) {
  PhotoFolder::Protect(Photo());
  Preview([&] {
    ChooseNew();
    Answer(toolkit::kAnswerYes);
    Ok();
    visit.user.Close();
  });
  EXPECT_EQ(preview->Cancelled, 1);
}

}  // namespace
}  // namespace dossierkit::tests
