// The choice of a new picture.
#ifndef _WIN32
#include <sys/stat.h>
#endif

#include <new>

#include "tests/photos/photo_test.h"
#include "tests/support/jpeg.h"

namespace dossierkit::tests {
namespace {

class ChoosePicture : public PhotoTest {
 protected:
  void ExpectNoChoice(const std::string& caption) {
    EXPECT_EQ(preview->NewFile, "");
    EXPECT_EQ(NewCaption(), caption);
  }
};

const Message kTooLarge = {"所选照片文件不能大于300K,请重新选择", 48, "选择照片"};

TEST_F(ChoosePicture, APictureIsShownBesideThePresentOne) {
  Preview([&] {
    ChooseNew();
    EXPECT_EQ(preview->NewFile, folder.Choice("新.jpg"));
    EXPECT_EQ(NewCaption(), "新照片");
    EXPECT_EQ(Shown("imgNew"), "new");
    EXPECT_EQ(Shown("imgOld"), "old");
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(ChoosePicture, EnterMeansOkOnceAPictureWasChosen) {
  int dialogs = 0;
  visit.script.on_choose = [&](const toolkit::CommonDialog&) { ++dialogs; };
  Preview([&] {
    ChooseNew();
    EXPECT_EQ(preview->ActiveControl()->Name(), "cmdOK");
    Answer(toolkit::kAnswerYes);
    visit.user.Press(toolkit::kKeyReturn);
  });
  EXPECT_EQ(dialogs, 1);
  EXPECT_EQ(preview->Cancelled, 0);
  EXPECT_EQ(StoredPhoto(), Jpeg("new"));
}

TEST_F(ChoosePicture, EnterAsksAgainWhereNoPictureWasChosen) {
  int dialogs = 0;
  visit.script.on_choose = [&](const toolkit::CommonDialog&) { ++dialogs; };
  Preview([&] {
    Choose("");
    EXPECT_EQ(preview->ActiveControl()->Name(), "cmdSelPic");
    visit.user.Press(toolkit::kKeyReturn);
    EXPECT_EQ(dialogs, 2);
  });
  EXPECT_EQ(preview->Cancelled, 1);
}

TEST_F(ChoosePicture, TouchesNoFile) {
  visit.Open([&] {
    visit.files.FailAt(0);
    AddPhoto([&] { ChooseNew(); });
    EXPECT_EQ(visit.files.Calls(),
              (Statements{"FileExists " + PhotoName(), "FileLen " + folder.Choice("新.jpg")}));
  });
}

TEST_F(ChoosePicture, TheDialogStartsAtThePresentPhotographAndAfreshEachTime) {
  Statements requests;
  visit.script.on_choose = [&](const toolkit::CommonDialog& request) {
    requests.push_back(request.Name() + "|" + request.init_dir + "|" + request.file_name + "|" +
                       request.filter + "|" + std::to_string(request.flags));
  };
  Preview([&] {
    ChooseNew();
    Choose("");
  });
  const std::string expected = "dlgSelPic|" + PhotoName() + "||图片文件 (*.jpg)|*.jpg;|4";
  EXPECT_EQ(requests, (Statements{expected, expected}));
}

TEST_F(ChoosePicture, WithoutAPhotographTheDialogStartsNowhere) {
  RemovePhoto();
  std::string start = "?";
  visit.script.on_choose = [&](const toolkit::CommonDialog& request) { start = request.init_dir; };
  Preview([&] { ChooseNew(); });
  EXPECT_EQ(start, "");
}

TEST_F(ChoosePicture, AFileOfExactly307200BytesPasses) {
  Preview([&] {
    Choose(folder.MakeChoice("limit.jpg", JpegOfSize(307200)));
    EXPECT_EQ(preview->NewFile, folder.Choice("limit.jpg"));
    EXPECT_EQ(NewCaption(), "新照片");
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(ChoosePicture, AFileOf307201BytesIsRefused) {
  Preview([&] {
    Choose(folder.MakeChoice("large.jpg", JpegOfSize(307201)));
    ExpectNoChoice("当前没有照片");
    EXPECT_EQ(Shown("imgNew"), "");
    EXPECT_FALSE(preview->LoopEnded());
  });
  EXPECT_EQ(Shown(), Messages{kTooLarge});
}

TEST_F(ChoosePicture, ALargeFileIsRefusedEvenIfItIsNoPicture) {
  Preview([&] { Choose(folder.MakeChoice("large.txt", std::string(400000, 'x'))); });
  EXPECT_EQ(Shown(), Messages{kTooLarge});
}

TEST_F(ChoosePicture, RequiredATooLargeFileDropsTheFormerChoice) {
  Preview([&] {
    ChooseNew();
    Choose(folder.MakeChoice("large.jpg", JpegOfSize(307201)));
    ExpectNoChoice("当前没有照片");
    EXPECT_EQ(Shown("imgNew"), "");
    Ok();
  });
  EXPECT_EQ(Shown(), Messages{kTooLarge}) << "no question: nothing is chosen";
  EXPECT_EQ(StoredPhoto(), Jpeg("old"));
}

TEST_F(ChoosePicture, RequiredACancelledDialogDropsTheFormerChoice) {
  Preview([&] {
    ChooseNew();
    Choose("");
    ExpectNoChoice("当前没有照片");
    EXPECT_EQ(Shown("imgNew"), "");
    Ok();
  });
  EXPECT_TRUE(Shown().empty());
  EXPECT_EQ(StoredPhoto(), Jpeg("old"));
}

TEST_F(ChoosePicture, AFileThatIsNoPictureIsNotFoundAndOkChangesNothing) {
  Preview([&] {
    Choose(folder.MakeChoice("text.jpg", "no picture"));
    ExpectNoChoice("没有找到照片");
    EXPECT_EQ(Shown("imgNew"), "");
    Ok();
  });
  EXPECT_TRUE(Shown().empty());
  EXPECT_EQ(preview->Cancelled, 0);
  EXPECT_EQ(StoredPhoto(), Jpeg("old"));
}

TEST_F(ChoosePicture, AFileBeyondTheLimitsIsNotFoundThoughItIsSmall) {
  Preview([&] {
    const std::string bytes = ProgressiveJpeg(6600, 5000, 2000);
    ASSERT_LE(bytes.size(), 307200U);
    Choose(folder.MakeChoice("slow.jpg", bytes));
    ExpectNoChoice("没有找到照片");
  });
}

TEST_F(ChoosePicture, WhateverTheReadingThrowsIsNotFound) {
  Preview([&] {
    visit.HeadlessViews().on_load_picture = [](const std::string&) { throw std::bad_alloc(); };
    ChooseNew();
    ExpectNoChoice("没有找到照片");
    visit.HeadlessViews().on_load_picture = nullptr;
  });
  EXPECT_TRUE(Shown().empty());
}

#ifndef _WIN32
TEST_F(ChoosePicture, APipeIsNoFile) {
  ASSERT_EQ(mkfifo(folder.Choice("pipe.jpg").c_str(), 0600), 0);
  Preview([&] { Choose(folder.Choice("pipe.jpg")); });
  EXPECT_EQ(Shown(), (Messages{{"更新照片出错！原因是：文件未找到", 64, "更新照片"}}));
}
#endif

TEST_F(ChoosePicture, RequiredAnUnreadableFileDropsTheFormerChoiceButLeavesItInSight) {
  Preview([&] {
    ChooseNew();
    Choose(folder.MakeChoice("text.jpg", "no picture"));
    ExpectNoChoice("没有找到照片");
    EXPECT_EQ(Shown("imgNew"), "new");
  });
}

TEST_F(ChoosePicture, AChoiceReplacesTheFormerOne) {
  Preview([&] {
    Choose(folder.MakeChoice("text.jpg", "no picture"));
    ChooseNew();
    Choose(folder.MakeChoice("二.jpg", Jpeg("second")));
    EXPECT_EQ(preview->NewFile, folder.Choice("二.jpg"));
    EXPECT_EQ(NewCaption(), "新照片");
    EXPECT_EQ(Shown("imgNew"), "second");
  });
}

TEST_F(ChoosePicture, OnlyTheContentDecidesWhatAPictureIs) {
  Preview([&] {
    Choose(folder.MakeChoice("照片.png", Jpeg("png by name")));
    EXPECT_EQ(NewCaption(), "新照片");
  });
}

// Nothing in the window traps the failure: the window goes, and the button's own trap tells of it.
TEST_F(ChoosePicture, RequiredANameThatDoesNotExistClosesThePreview) {
  visit.Open([&] {
    AddPhoto([&] {
      ChooseNew();
      Choose(folder.Choice("none.jpg"));
      EXPECT_TRUE(preview->LoopEnded());
    });
    EXPECT_FALSE(preview->Loaded());
    EXPECT_EQ(preview->Cancelled, 1);
    EXPECT_EQ(Shown("imgPerson"), "old");
    EXPECT_EQ(Shown(), (Messages{{"更新照片出错！原因是：文件未找到", 64, "更新照片"}}));
    // The page works on, and so does the next preview.
    AddPhoto([&] { EXPECT_EQ(OldCaption(), "当前照片"); });
  });
  EXPECT_EQ(StoredPhoto(), Jpeg("old"));
}

TEST_F(ChoosePicture, RequiredAFolderThatDoesNotExistClosesThePreviewToo) {
  Preview([&] { Choose("/nowhere\\a.jpg"); });
  EXPECT_EQ(Shown(), (Messages{{"更新照片出错！原因是：路径未找到", 64, "更新照片"}}));
}

}  // namespace
}  // namespace dossierkit::tests
