// The module routines of a photograph file.
#include "photos/photo_files.h"

#include <exception>
#include <new>

#include "tests/photos/photo_test.h"

namespace dossierkit::tests {
namespace {

class PhotoFiles : public PhotoTest {
 protected:
  toolkit::Image person_image{"imgPerson"};
  toolkit::Image other_image{"imgOld"};
};

TEST_F(PhotoFiles, ThePathIsFolderBackslashIdentifierAndEnding) {
  EXPECT_EQ(PhotoFilePath("F:\\photos", "P1"), "F:\\photos\\P1.jpg");
  EXPECT_EQ(PhotoFilePath("", "P1"), "\\P1.jpg");
}

TEST_F(PhotoFiles, RequiredAFolderWithATrailingBackslashYieldsTwo) {
  EXPECT_EQ(PhotoFilePath("F:\\photos\\", "P1"), "F:\\photos\\\\P1.jpg");
}

TEST_F(PhotoFiles, AFileExistsOrNot) {
  EXPECT_TRUE(PhotoFileExists(PhotoName()));
  EXPECT_FALSE(PhotoFileExists(folder.Photos().string()));
  RemovePhoto();
  EXPECT_FALSE(PhotoFileExists(PhotoName()));
  EXPECT_FALSE(PhotoFileExists(""));
}

TEST_F(PhotoFiles, AFailureOfTheQuestionIsFalseWithoutAMessage) {
  visit.files.FailAt(1);
  EXPECT_FALSE(PhotoFileExists(PhotoName()));
  EXPECT_TRUE(visit.files.HasFailed());
  EXPECT_TRUE(Shown().empty());
}

// Not only what the disk answers.
TEST_F(PhotoFiles, WhateverTheQuestionThrowsIsFalse) {
  visit.files.FailAt(1, std::make_exception_ptr(std::bad_alloc()));
  EXPECT_FALSE(PhotoFileExists(PhotoName()));
  EXPECT_TRUE(visit.files.HasFailed());
  EXPECT_TRUE(Shown().empty());
}

TEST_F(PhotoFiles, WhateverTheDeletionThrowsIsShownAndForgotten) {
  for (const std::size_t call : {std::size_t{1}, std::size_t{2}}) {
    visit.files.FailAt(call, std::make_exception_ptr(std::bad_alloc()));
    DeletePhotoFile(kPerson, folder.Photos().string());
    EXPECT_TRUE(visit.files.HasFailed());
  }
  EXPECT_EQ(Shown(),
            (Messages{{"std::bad_alloc", 48, "人员照片删除"}, {"std::bad_alloc", 48, "人员照片删除"}}));
}

TEST_F(PhotoFiles, ThePictureIsShownInTheImageOfThePersonOnly) {
  ShowPhotoInImage(person_image, PhotoName());
  ShowPhotoInImage(other_image, PhotoName());
  EXPECT_FALSE(person_image.GetPicture().Empty());
  EXPECT_TRUE(other_image.GetPicture().Empty());
}

TEST_F(PhotoFiles, RequiredAnAbsentFileLeavesThePictureThatWasThere) {
  ShowPhotoInImage(person_image, PhotoName());
  RemovePhoto();
  ShowPhotoInImage(person_image, PhotoName());
  EXPECT_FALSE(person_image.GetPicture().Empty());
}

TEST_F(PhotoFiles, AnUnreadablePictureFails) {
  PhotoFolder::Write(Photo(), "no picture");
  EXPECT_EQ(NumberOfFailure([&] { ShowPhotoInImage(person_image, PhotoName()); }), 481);
}

TEST_F(PhotoFiles, TheDeletionIsByForce) {
  visit.files.FailAt(0);
  PhotoFolder::Protect(Photo());
  DeletePhotoFile(kPerson, folder.Photos().string());
  EXPECT_FALSE(std::filesystem::exists(Photo()));
  EXPECT_EQ(visit.files.Calls(),
            (Statements{"FileExists " + PhotoName(), "DeleteFile " + PhotoName() + " by force"}));
}

TEST_F(PhotoFiles, TheDeletionOfNoFileDoesNothing) {
  visit.files.FailAt(0);
  DeletePhotoFile("nobody", folder.Photos().string());
  EXPECT_EQ(visit.files.Calls().size(), 1U);
  EXPECT_TRUE(std::filesystem::exists(Photo()));
  EXPECT_TRUE(Shown().empty());
}

TEST_F(PhotoFiles, AFailureOfTheDeletionIsShownAndForgotten) {
  for (const std::size_t call : {std::size_t{1}, std::size_t{2}}) {
    visit.files.FailAt(call);
    DeletePhotoFile(kPerson, folder.Photos().string());
    EXPECT_EQ(Shown().back(), (Message{"拒绝的权限", 48, "人员照片删除"}));
    EXPECT_TRUE(std::filesystem::exists(Photo()));
  }
  EXPECT_EQ(Shown().size(), 2U);
}

}  // namespace
}  // namespace dossierkit::tests
