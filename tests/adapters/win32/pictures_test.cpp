// Reading and turning of pictures, and the icons of the toolbar.
#include "adapters/win32/pictures.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "tests/support/failures.h"
#include "tests/support/jpeg.h"
#include "tests/support/paths.h"

namespace dossierkit::win32 {
namespace {

constexpr SIZE kFrame = {121, 159};

std::string PathOf(const std::string& name) {
  return tests::SourceFolder() + "/tests/photos/pictures\\" + name;
}

int NumberOf(const std::string& path) {
  return tests::NumberOfFailure([&] { ReadPicture(path, kFrame); });
}

Bitmap Read(const std::string& name, SIZE size = kFrame) { return BitmapOf(ReadPicture(PathOf(name), size)); }

void ExpectNear(std::uint32_t pixel, int red, int green, int blue) {
  EXPECT_NEAR(static_cast<int>(pixel >> 16U & 0xFFU), red, 12);
  EXPECT_NEAR(static_cast<int>(pixel >> 8U & 0xFFU), green, 12);
  EXPECT_NEAR(static_cast<int>(pixel & 0xFFU), blue, 12);
}

class Win32ReadablePicture : public testing::TestWithParam<const char*> {};

TEST_P(Win32ReadablePicture, IsShownUprightInItsColours) {
  const Bitmap bitmap = Read(std::string(GetParam()) + ".jpg");
  ASSERT_EQ(bitmap.width, 48);
  ASSERT_EQ(bitmap.height, 63);
  ExpectNear(bitmap.At(24, 15), 200, 30, 30);
  ExpectNear(bitmap.At(24, 47), 30, 30, 200);
}

INSTANTIATE_TEST_SUITE_P(Jpeg, Win32ReadablePicture,
                         testing::Values("red-over-blue", "progressive", "cmyk", "turned-right",
                                         "upside-down"),
                         [](const auto& name) {
                           std::string text = name.param;
                           std::erase(text, '-');
                           return text;
                         });

TEST(Win32Pictures, AGreyPictureIsRead) {
  const Bitmap bitmap = Read("grey.jpg");
  EXPECT_EQ(bitmap.At(24, 15) & 0xFFU, bitmap.At(24, 15) >> 16U & 0xFFU);
}

TEST(Win32Pictures, AnEmptyPathIsNoPicture) {
  EXPECT_TRUE(ReadPicture("", kFrame).Empty());
  EXPECT_TRUE(BitmapOf(ReadPicture("", kFrame)).Empty());
}

TEST(Win32Pictures, AFileThatIsNotThereIsNotFound) {
  EXPECT_EQ(NumberOf(PathOf("none.jpg")), 53);
  EXPECT_EQ(NumberOf("/nowhere\\a.jpg"), 53);
}

TEST(Win32Pictures, TheSizeIsThatOfTheTurnedPicture) {
  const auto size = [](LONG width, LONG height) {
    const Bitmap bitmap = Read("turned-right.jpg", {width, height});
    return std::pair(bitmap.width, bitmap.height);
  };
  EXPECT_EQ(size(40, 60), std::pair(40, 60));
  EXPECT_EQ(size(60, 50), std::pair(48, 50));
  EXPECT_EQ(size(0, 0), std::pair(1, 1));
}

class Win32PictureFile : public testing::Test {
 protected:
  ~Win32PictureFile() override { std::filesystem::remove(path_); }
  int FailureOfBytes(const std::string& bytes) {
    Write(bytes);
    return NumberOf(Name());
  }
  std::pair<int, int> SizeOf(const std::string& bytes, SIZE frame) {
    Write(bytes);
    const Bitmap& bitmap = BitmapOf(ReadPicture(Name(), frame));
    return {bitmap.width, bitmap.height};
  }

 private:
  void Write(const std::string& bytes) const { std::ofstream(path_, std::ios::binary) << bytes; }
  std::string Name() const {
    const std::u8string name = path_.u8string();
    return {name.begin(), name.end()};
  }
  std::filesystem::path path_ = std::filesystem::temp_directory_path() / L"dossierkit-照片 文件.jpg";
};

TEST_F(Win32PictureFile, WhatIsNoJpegIsRefused) {
  EXPECT_EQ(FailureOfBytes(""), 481);
  EXPECT_EQ(FailureOfBytes("\xFF\xD8\xFF\xD9"), 481);
  EXPECT_EQ(FailureOfBytes("\xFF\xD8\xFF\xE0"), 481);
  EXPECT_EQ(FailureOfBytes("GIF89a\x01"), 481);
  EXPECT_EQ(FailureOfBytes("no picture at all"), 481);
  EXPECT_EQ(NumberOf(PathOf("garbage.jpg")), 481);
}

// Another format that the system can decode, under the name of one.
TEST_F(Win32PictureFile, APictureOfAnotherFormatIsRefused) {
  std::ifstream in(tests::SourceFolder() + "/data/icons/toolbar-1.png", std::ios::binary);
  const std::string png{std::istreambuf_iterator<char>(in), {}};
  ASSERT_GT(png.size(), 100U);
  EXPECT_EQ(FailureOfBytes(png), 481);
}

TEST_F(Win32PictureFile, BeyondTheLimitsIsRefused) {
  EXPECT_EQ(FailureOfBytes(tests::ProgressiveJpeg(8000, 6000, 13)), 481);
  EXPECT_EQ(FailureOfBytes(tests::ProgressiveJpeg(10001, 10000, 1)), 481);
}

TEST_F(Win32PictureFile, IsDecodedAtTheSizeThatItIsShownIn) {
  const std::string bytes = tests::ProgressiveJpeg(1600, 1200, 2);
  EXPECT_EQ(SizeOf(bytes, kFrame), std::pair(121, 159));
  EXPECT_EQ(SizeOf(bytes, {3000, 159}), std::pair(1600, 159)) << "nothing is enlarged";
  EXPECT_EQ(SizeOf(tests::ProgressiveJpeg(48, 63, 2), kFrame), std::pair(48, 63));
}

// A bitmap of 2 by 3 pixels, 1 2 / 3 4 / 5 6.
TEST(Win32Bitmaps, TurnAsTheCameraWasHeld) {
  const Bitmap whole{2, 3, {1, 2, 3, 4, 5, 6}};
  using Pixels = std::vector<std::uint32_t>;
  const auto turned = [&](bool swapped, bool mirrored, bool upside_down) {
    const Bitmap bitmap = Turned(whole, {swapped, mirrored, upside_down});
    EXPECT_EQ(bitmap.width, swapped ? 3 : 2);
    EXPECT_EQ(bitmap.height, swapped ? 2 : 3);
    return bitmap.pixels;
  };
  EXPECT_EQ(turned(false, false, false), (Pixels{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(turned(false, true, false), (Pixels{2, 1, 4, 3, 6, 5}));
  EXPECT_EQ(turned(false, true, true), (Pixels{6, 5, 4, 3, 2, 1}));
  EXPECT_EQ(turned(false, false, true), (Pixels{5, 6, 3, 4, 1, 2}));
  EXPECT_EQ(turned(true, false, false), (Pixels{1, 3, 5, 2, 4, 6}));
  EXPECT_EQ(turned(true, true, false), (Pixels{5, 3, 1, 6, 4, 2})) << "a quarter to the right";
  EXPECT_EQ(turned(true, true, true), (Pixels{6, 4, 2, 5, 3, 1}));
  EXPECT_EQ(turned(true, false, true), (Pixels{2, 4, 6, 1, 3, 5})) << "a quarter to the left";
}

TEST(ToolbarIcons, AreCompiledIn) {
  for (const int number : {1, 2, 3, 4, 5, 6, 7, 9}) {
    const Bitmap icon = ToolbarIcon(number);
    EXPECT_EQ(icon.width, 24) << number;
    EXPECT_EQ(icon.height, 24) << number;
    EXPECT_FALSE(icon.Empty()) << number;
  }
  EXPECT_TRUE(ToolbarIcon(0).Empty());
  EXPECT_TRUE(ToolbarIcon(8).Empty());
}

TEST(ToolbarIcons, LetThroughWhatLiesBelow) {
  const Bitmap icon = ToolbarIcon(1);
  EXPECT_EQ(icon.At(0, 0), 0U) << "nothing at its corner";
  std::uint32_t most = 0;
  for (const std::uint32_t pixel : icon.pixels) most = std::max(most, pixel >> 24U);
  EXPECT_EQ(most, 255U);
}

// A context of 4 by 2 pixels in one colour.
class Surface {
 public:
  Surface() {
    BITMAPINFO head = {};
    head.bmiHeader.biSize = sizeof head.bmiHeader;
    head.bmiHeader.biWidth = 4;
    head.bmiHeader.biHeight = -2;
    head.bmiHeader.biPlanes = 1;
    head.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    context_ = CreateCompatibleDC(nullptr);
    section_ = CreateDIBSection(context_, &head, DIB_RGB_COLORS, &bits, nullptr, 0);
    before_ = SelectObject(context_, section_);
    for (int i = 0; i < 8; ++i) SetPixel(context_, i % 4, i / 4, RGB(100, 100, 100));
  }
  ~Surface() {
    SelectObject(context_, before_);
    DeleteObject(section_);
    DeleteDC(context_);
  }
  Surface(const Surface&) = delete;
  Surface& operator=(const Surface&) = delete;
  HDC Get() const { return context_; }
  COLORREF At(int x, int y) const { return GetPixel(context_, x, y); }

 private:
  HDC context_;
  HBITMAP section_;
  HGDIOBJ before_;
};

TEST(Win32Bitmaps, AreStretchedOverAllOfTheirPlace) {
  const Surface surface;
  PaintStretched(surface.Get(), {1, 0, 3, 2}, {1, 1, {0xFF2040C0U}});
  EXPECT_EQ(surface.At(0, 0), RGB(100, 100, 100));
  EXPECT_EQ(surface.At(1, 0), RGB(0x20, 0x40, 0xC0));
  EXPECT_EQ(surface.At(2, 1), RGB(0x20, 0x40, 0xC0));
  EXPECT_EQ(surface.At(3, 1), RGB(100, 100, 100));
}

TEST(Win32Bitmaps, ArePaintedOverWhatLiesBelow) {
  const Surface surface;
  PaintOver(surface.Get(), {0, 0, 2, 1}, {2, 1, {0x00000000U, 0xFF2040C0U}});
  EXPECT_EQ(surface.At(0, 0), RGB(100, 100, 100));
  EXPECT_EQ(surface.At(1, 0), RGB(0x20, 0x40, 0xC0));
}

TEST(Win32Bitmaps, PaledAreGreyAndHalfCovering) {
  const Bitmap paled = Paled({2, 1, {0xFFC8C8C8U, 0U}});
  EXPECT_EQ(paled.At(0, 0), 0x7F646464U);
  EXPECT_EQ(paled.At(1, 0), 0U);
}

}  // namespace
}  // namespace dossierkit::win32
