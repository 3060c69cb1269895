// OK in the preview window: the photograph's file is replaced, or is not.
#include "tests/photos/photo_test.h"

namespace dossierkit::tests {
namespace {

class ReplacePhoto : public PhotoTest {
 protected:
  // The window is still open, nothing was written and nothing closed.
  void ExpectRefused(const std::string& stored) {
    EXPECT_FALSE(preview->LoopEnded());
    EXPECT_EQ(preview->Cancelled, 1);
    EXPECT_EQ(StoredPhoto(), stored);
  }
};

const Message kQuestion = {"确定替换现有照片文件吗？", 36, "照片预览"};

TEST_F(ReplacePhoto, YesReplacesTheFileByteForByte) {
  Preview([&] {
    ChooseNew();
    Answer(toolkit::kAnswerYes);
    Ok();
    EXPECT_TRUE(preview->LoopEnded());
  });
  EXPECT_EQ(preview->Cancelled, 0);
  EXPECT_EQ(StoredPhoto(), Jpeg("new"));
  EXPECT_EQ(PhotoFolder::Read(folder.Choice("新.jpg")), Jpeg("new"));
  EXPECT_EQ(Shown(), Messages{kQuestion});
}

TEST_F(ReplacePhoto, TheFileIsUntouchedUntilTheAnswer) {
  visit.script.on_message = [&](const Message&) { EXPECT_EQ(StoredPhoto(), Jpeg("old")); };
  Preview([&] {
    ChooseNew();
    Answer(toolkit::kAnswerYes);
    Ok();
  });
}

TEST_F(ReplacePhoto, NoLeavesTheWindowOpenAndTheNextOkAsksAgain) {
  Preview([&] {
    ChooseNew();
    for (int i = 0; i < 2; ++i) {
      Answer(toolkit::kAnswerNo);
      Ok();
      ExpectRefused(Jpeg("old"));
      EXPECT_EQ(preview->NewFile, folder.Choice("新.jpg"));
    }
    Answer(toolkit::kAnswerYes);
    Ok();
  });
  EXPECT_EQ(preview->Cancelled, 0);
  EXPECT_EQ(StoredPhoto(), Jpeg("new"));
  EXPECT_EQ(Shown(), (Messages{kQuestion, kQuestion, kQuestion}));
}

TEST_F(ReplacePhoto, TheFirstPhotographIsCopiedWithoutAQuestion) {
  RemovePhoto();
  Preview([&] {
    ChooseNew();
    Ok();
  });
  EXPECT_EQ(preview->Cancelled, 0);
  EXPECT_EQ(StoredPhoto(), Jpeg("new"));
  EXPECT_TRUE(Shown().empty());
}

TEST_F(ReplacePhoto, TheCopyBearsThePersonsNameWhateverTheChosenFileWasCalled) {
  RemovePhoto();
  Preview([&] {
    Choose(folder.MakeChoice("我的 照片.png", Jpeg("other name")));
    Ok();
  });
  EXPECT_EQ(StoredPhoto(), Jpeg("other name"));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Photos()), {}), 1);
}

TEST_F(ReplacePhoto, AProtectedChoiceMakesAPhotographThatCanBeReplacedAgain) {
  RemovePhoto();
  Preview([&] {
    const auto choice = folder.MakeChoice("a.jpg", Jpeg("protected"));
    PhotoFolder::Protect(choice);
    Choose(choice);
    Ok();
  });
  Preview([&] {
    ChooseNew();
    Answer(toolkit::kAnswerYes);
    Ok();
  });
  EXPECT_EQ(StoredPhoto(), Jpeg("new"));
}

TEST_F(ReplacePhoto, RequiredOkWithoutAChoiceCountsAsSuccess) {
  visit.Open([&] {
    visit.files.FailAt(0);
    AddPhoto([&] {
      Ok();
      EXPECT_TRUE(preview->LoopEnded());
    });
    EXPECT_EQ(preview->Cancelled, 0);
    EXPECT_EQ(visit.files.Calls(), (Statements{"FileExists " + PhotoName(), "FileExists " + PhotoName()}));
  });
  EXPECT_TRUE(Shown().empty());
  EXPECT_EQ(StoredPhoto(), Jpeg("old"));
}

TEST_F(ReplacePhoto, RequiredAChoiceThatVanishedClosesTheWindowAsIfItHadWorked) {
  Preview([&] {
    ChooseNew();
    std::filesystem::remove(NamedFile(folder.Choice("新.jpg")));
    Answer(toolkit::kAnswerYes);
    Ok();
    EXPECT_TRUE(preview->LoopEnded());
  });
  EXPECT_EQ(preview->Cancelled, 0);
  EXPECT_EQ(Shown(), Messages{kQuestion});
  EXPECT_EQ(StoredPhoto(), Jpeg("old"));
}

TEST_F(ReplacePhoto, RequiredTheFirstChoiceThatVanishedLeavesNoPhotograph) {
  RemovePhoto();
  Preview([&] {
    ChooseNew();
    std::filesystem::remove(NamedFile(folder.Choice("新.jpg")));
    Ok();
  });
  EXPECT_EQ(preview->Cancelled, 0);
  EXPECT_TRUE(Shown().empty());
  EXPECT_FALSE(std::filesystem::exists(Photo()));
}

TEST_F(ReplacePhoto, AWriteProtectedPhotographIsKept) {
  PhotoFolder::Protect(Photo());
  Preview([&] {
    ChooseNew();
    Answer(toolkit::kAnswerYes);
    Ok();
    ExpectRefused(Jpeg("old"));
  });
  EXPECT_EQ(Shown(), (Messages{kQuestion, {"更新此人员的照片出错！原因是：拒绝的权限", 64, "照片预览"}}));
}

TEST_F(ReplacePhoto, RequiredAFolderThatDoesNotExistIsToldAndNotMade) {
  visit.component.PhotoPath = folder.Photos().string() + "-none";
  Preview([&] {
    ChooseNew();
    Ok();
    EXPECT_FALSE(preview->LoopEnded());
    EXPECT_EQ(preview->Cancelled, 1);
  });
  EXPECT_EQ(Shown(), (Messages{{"更新此人员的照片出错！原因是：路径未找到", 64, "照片预览"}}));
  EXPECT_FALSE(std::filesystem::exists(NamedFile(folder.Photos().string() + "-none")));
}

TEST_F(ReplacePhoto, ThePhotographItselfAsTheChoiceIsRefusedAndKept) {
  Preview([&] {
    Choose(PhotoName());
    Answer(toolkit::kAnswerYes);
    Ok();
    ExpectRefused(Jpeg("old"));
  });
  EXPECT_EQ(Shown().back(), (Message{"更新此人员的照片出错！原因是：拒绝的权限", 64, "照片预览"}));
}

TEST_F(ReplacePhoto, AnUnreadablePhotographIsReplacedAfterTheQuestion) {
  visit.Open([&] {
    PhotoFolder::Write(Photo(), "no picture");
    AddPhoto([&] {
      ChooseNew();
      Answer(toolkit::kAnswerYes);
      Ok();
    });
    EXPECT_EQ(Shown("imgPerson"), "new");
  });
  EXPECT_EQ(Shown(), Messages{kQuestion});
  EXPECT_EQ(StoredPhoto(), Jpeg("new"));
}

TEST_F(ReplacePhoto, AfterARefusedCopyTheNextOkTriesAgain) {
  RemovePhoto();
  std::filesystem::remove(folder.Photos());
  Preview([&] {
    ChooseNew();
    Ok();
    std::filesystem::create_directory(folder.Photos());
    Ok();
  });
  EXPECT_EQ(preview->Cancelled, 0);
  EXPECT_EQ(Shown().size(), 1U);
  EXPECT_EQ(StoredPhoto(), Jpeg("new"));
}

TEST_F(ReplacePhoto, WhateverTheCopyThrowsIsTold) {
  Preview([&] {
    ChooseNew();
    visit.files.FailAt(2, std::make_exception_ptr(std::bad_alloc()));
    Answer(toolkit::kAnswerYes);
    Ok();
    ExpectRefused(Jpeg("old"));
  });
  EXPECT_EQ(Shown().back(), (Message{"更新此人员的照片出错！原因是：std::bad_alloc", 64, "照片预览"}));
}

TEST_F(ReplacePhoto, TheMessagesBearTheWindowsCaption) {
  Preview([&] {
    preview->SetCaption("另一个标题");
    ChooseNew();
    PhotoFolder::Protect(Photo());
    Answer(toolkit::kAnswerYes);
    Ok();
  });
  EXPECT_EQ(Shown().at(0).title, "另一个标题");
  EXPECT_EQ(Shown().at(1).title, "另一个标题");
}

}  // namespace
}  // namespace dossierkit::tests
