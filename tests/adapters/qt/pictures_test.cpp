// Reading of picture files: what a camera or a program may have made of a JPEG.
#include "adapters/qt/pictures.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "adapters/qt/texts.h"
#include "platform/environment/failure.h"
#include "tests/adapters/qt/stage.h"
#include "tests/support/failures.h"
#include "tests/support/jpeg.h"
#include "tests/support/paths.h"
#include "tests/support/qt_warnings.h"

namespace dossierkit::qt {
namespace {

std::string PathOf(const std::string& name) {
  return tests::SourceFolder() + "/tests/photos/pictures\\" + name;
}

constexpr QSize kFrame(121, 159);

// The number of the failure of reading a file; 0 where it is read.
int NumberOf(const std::string& path) {
  return tests::NumberOfFailure([&] { ReadPicture(path, kFrame); });
}

// Red above, blue below, upright.
void ExpectRedOverBlue(const QImage& image) {
  ASSERT_EQ(image.size(), QSize(48, 63));
  const QColor above = image.pixelColor(24, 15);
  const QColor below = image.pixelColor(24, 47);
  EXPECT_NEAR(above.red(), 200, 12);
  EXPECT_NEAR(above.green(), 30, 12);
  EXPECT_NEAR(above.blue(), 30, 12);
  EXPECT_NEAR(below.red(), 30, 12);
  EXPECT_NEAR(below.green(), 30, 12);
  EXPECT_NEAR(below.blue(), 200, 12);
}

class ReadablePicture : public ::testing::TestWithParam<const char*> {};

TEST_P(ReadablePicture, IsShownUprightInItsColours) {
  ExpectRedOverBlue(ImageOf(ReadPicture(PathOf(std::string(GetParam()) + ".jpg"), kFrame)));
}

INSTANTIATE_TEST_SUITE_P(Jpeg, ReadablePicture,
                         ::testing::Values("red-over-blue", "progressive", "cmyk", "turned-right",
                                           "upside-down"),
                         [](const auto& name) {
                           std::string text = name.param;
                           std::erase(text, '-');
                           return text;
                         });

TEST(Pictures, AGreyPictureIsRead) {
  const QImage image = ImageOf(ReadPicture(PathOf("grey.jpg"), kFrame));
  const QColor pixel = image.pixelColor(24, 15);
  EXPECT_EQ(pixel.red(), pixel.blue());
}

TEST(Pictures, WhatOnlyBeginsLikeAJpegIsRefused) {
  const tests::DueQtWarning bytes("Corrupt JPEG data: 400 extraneous bytes before marker 0xd9");
  const tests::DueQtWarning image("JPEG datastream contains no image");
  EXPECT_EQ(NumberOf(PathOf("garbage.jpg")), 481);
}

TEST(Pictures, AnEmptyPathIsNoPicture) {
  EXPECT_TRUE(ReadPicture("", kFrame).Empty());
  EXPECT_TRUE(ImageOf(ReadPicture("", kFrame)).isNull());
}

class PictureFile : public ::testing::Test {
 protected:
  ~PictureFile() override { std::filesystem::remove(path_); }
  void Write(const std::string& bytes) const { std::ofstream(path_, std::ios::binary) << bytes; }
  int FailureOfBytes(const std::string& bytes) {
    Write(bytes);
    return NumberOf(path_.string());
  }
  // The size of the image that is decoded for a frame.
  QSize SizeOf(const std::string& bytes, QSize frame) {
    Write(bytes);
    return ImageOf(ReadPicture(path_.string(), frame)).size();
  }
  std::filesystem::path path_ =
      std::filesystem::temp_directory_path() / ("dossierkit-照片 文件-" + std::to_string(getpid()) + ".jpg");
};

TEST_F(PictureFile, AnEmptyFileIsRefused) { EXPECT_EQ(FailureOfBytes(""), 481); }

TEST_F(PictureFile, AHeadWithoutAPictureIsRefused) {
  const tests::DueQtWarning image("JPEG datastream contains no image");
  EXPECT_EQ(FailureOfBytes("\xFF\xD8\xFF\xD9"), 481);
  const tests::DueQtWarning bytes("Corrupt JPEG data: 1 extraneous bytes before marker 0xd9");
  EXPECT_EQ(FailureOfBytes("\xFF\xD8\xFF\xE0"), 481);
}

TEST_F(PictureFile, AnotherFormatUnderThatNameIsRefused) {
  EXPECT_EQ(FailureOfBytes("GIF89a\x01"), 481);
  EXPECT_EQ(FailureOfBytes("<svg xmlns='http://www.w3.org/2000/svg'/>"), 481);
}

// A few bytes may claim to be 65,500 pixels square: they must not fill the memory.
TEST_F(PictureFile, AnEnormousPictureIsRefused) {
  std::ifstream in(std::filesystem::path(tests::SourceFolder() + "/tests/photos/pictures/red-over-blue.jpg"),
                   std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(in), {}};
  const auto frame = bytes.find("\xFF\xC0");
  ASSERT_NE(frame, std::string::npos);
  bytes.replace(frame + 5, 4, "\xFF\xDC\xFF\xDC");
  EXPECT_EQ(FailureOfBytes(bytes), 481);
}

TEST_F(PictureFile, IsDecodedAtTheSizeThatItIsShownIn) {
  const std::string bytes = tests::ProgressiveJpeg(1600, 1200, 2);
  EXPECT_EQ(SizeOf(bytes, kFrame), kFrame);
  EXPECT_EQ(SizeOf(bytes, QSize(484, 636)), QSize(484, 636));
  EXPECT_EQ(SizeOf(bytes, QSize(3000, 159)), QSize(1600, 159)) << "nothing is enlarged";
  EXPECT_EQ(SizeOf(tests::ProgressiveJpeg(48, 63, 2), kFrame), QSize(48, 63));
  EXPECT_EQ(SizeOf(bytes, QSize(0, 0)), QSize(1, 1));
}

// Turned by its camera's note it is 48 pixels wide.
TEST_F(PictureFile, IsDecodedAtTheSizeOfTheTurnedPicture) {
  const auto size = [](int width, int height) {
    return ImageOf(ReadPicture(PathOf("turned-right.jpg"), QSize(width, height))).size();
  };
  EXPECT_EQ(size(40, 60), QSize(40, 60));
  EXPECT_EQ(size(60, 50), QSize(48, 50));
  EXPECT_EQ(size(40, 15), QSize(40, 15)) << "decoded for the turned frame";
}

TEST_F(PictureFile, OfFortyEightMegapixelsInTenScansIsShown) {
  EXPECT_EQ(SizeOf(tests::ProgressiveJpeg(8000, 6000, 10), kFrame), kFrame);
}

// Whatever its frame, a very long picture does not fill the memory: it is decoded smaller.
TEST_F(PictureFile, OfAnyShapeWithinTheLimitsIsShown) {
  EXPECT_EQ(SizeOf(tests::ProgressiveJpeg(65500, 1500, 2), QSize(484, 636)), QSize(484, 524));
  EXPECT_EQ(SizeOf(tests::ProgressiveJpeg(1500, 65500, 2), QSize(484, 636)), QSize(484, 636));
  EXPECT_EQ(SizeOf(tests::ProgressiveJpeg(65500, 8, 2), kFrame), QSize(121, 8));
  EXPECT_EQ(SizeOf(tests::ProgressiveJpeg(10000, 10000, 6), kFrame), kFrame);
}

TEST_F(PictureFile, BeyondTheLimitsIsRefused) {
  EXPECT_EQ(FailureOfBytes(tests::ProgressiveJpeg(8000, 6000, 13)), 481);
  EXPECT_EQ(FailureOfBytes(tests::ProgressiveJpeg(10001, 10000, 1)), 481);
}

TEST_F(PictureFile, AFileThatIsNotThereIsNotFound) {
  EXPECT_EQ(NumberOf(path_.string()), 53);
  EXPECT_EQ(NumberOf("/nowhere\\a.jpg"), 53);
}

}  // namespace
}  // namespace dossierkit::qt
