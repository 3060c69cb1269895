// What is counted of a picture file before it is decoded, and where its limits are.
#include "platform/files/picture_file.h"

#include "tests/platform/files/folder.h"
#include "tests/support/jpeg.h"
#include "tests/support/paths.h"

namespace dossierkit::files {
namespace {

namespace fs = std::filesystem;
using tests::JpegFrame;
using tests::JpegScan;
using tests::JpegSegment;
using tests::ProgressiveJpeg;

const std::string kStart = "\xFF\xD8";
const std::string kEnd = "\xFF\xD9";

PictureCounts Count(const std::string& bytes) {
  return CountPicture({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
}

std::string Sample(const std::string& name) {
  std::ifstream in(tests::SourceFolder() + "/tests/photos/pictures/" + name + ".jpg", std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

TEST(PictureCounts, OfRealPicturesAreTheirPixelsAndScans) {
  for (const char* name : {"red-over-blue", "cmyk", "grey", "turned-right", "upside-down"}) {
    const PictureCounts counts = Count(Sample(name));
    EXPECT_EQ(counts.scans, 1U) << name;
    EXPECT_EQ(counts.pixels, 48U * 63U) << name;
    EXPECT_FALSE(counts.arithmetic) << name;
  }
  EXPECT_EQ(Count(Sample("progressive")).scans, 10U);
  EXPECT_EQ(Count(Sample("progressive")).pixels, 48U * 63U);
}

TEST(PictureCounts, EveryScanCounts) {
  const PictureCounts counts = Count(ProgressiveJpeg(6600, 5000, 3937));
  EXPECT_EQ(counts.scans, 3937U);
  EXPECT_EQ(counts.pixels, 33'000'000U);
  EXPECT_EQ(counts.notes, 0U);
}

TEST(PictureCounts, WhatIsNoJpegCountsNothing) {
  for (const std::string& bytes :
       {std::string(), std::string("\xFF"), std::string("no picture"), "x" + ProgressiveJpeg(16, 16, 3),
        "\xFF\xD9" + ProgressiveJpeg(16, 16, 3), "x\xD8" + ProgressiveJpeg(16, 16, 3).substr(2)}) {
    EXPECT_EQ(Count(bytes).scans, 0U);
    EXPECT_EQ(Count(bytes).pixels, 0U);
  }
}

// A small picture of the whole stands in the notes of most cameras.
TEST(PictureCounts, APictureInsideANoteIsNoneOfThePicture) {
  const std::string inner = ProgressiveJpeg(640, 480, 9);
  const std::string file =
      kStart + JpegSegment(0xE1, "Exif" + inner.substr(0, 20000)) + ProgressiveJpeg(16, 16, 2).substr(2);
  EXPECT_EQ(Count(file).scans, 2U);
  EXPECT_EQ(Count(file).pixels, 256U);
  EXPECT_EQ(Count(file).notes, 1U);
}

TEST(PictureCounts, WhatFollowsTheEndIsNoneOfThePicture) {
  EXPECT_EQ(Count(ProgressiveJpeg(16, 16, 2) + ProgressiveJpeg(6600, 5000, 40)).scans, 2U);
}

TEST(PictureCounts, NotesAreThoseOfApplicationsAndComments) {
  std::string file = kStart;
  for (const int marker : {0xE0, 0xE1, 0xE7, 0xEF, 0xFE, 0xDB, 0xC4, 0xDD}) file += JpegSegment(marker, "ab");
  EXPECT_EQ(Count(file + kEnd).notes, 5U);
}

// In the data of a scan an FF is followed by a 0, a restart is no end, and markers may be led by any number
// of FF.
TEST(PictureCounts, TheDataOfAScanAreReadAsADecoderReadsThem) {
  const std::string stuffed("ab\xFF\0\xDA\xFF\xD0xx\xFF\xD7", 11);
  const std::string file = kStart + JpegFrame(0xC2, 8, 8) + JpegScan(0, 0) + stuffed + "\xFF\xFF\xFF" +
                           JpegScan(1, 63).substr(1) + "data" + kEnd;
  EXPECT_EQ(Count(file).scans, 2U);
  EXPECT_EQ(Count(file).pixels, 64U);
}

// A decoder that looks for a restart passes over an unknown marker and takes no length behind it: what
// stands there would hide a scan.
TEST(PictureCounts, BehindAnUnknownMarkerNothingIsHidden) {
  for (const int marker : {0x01, 0x02, 0xBF}) {
    const std::string hiding{'\xFF', static_cast<char>(marker), '\x7F', '\x7F'};
    const std::string file =
        kStart + JpegFrame(0xC2, 8, 8) + JpegScan(0, 0) + hiding + JpegScan(1, 63) + "data" + kEnd;
    EXPECT_EQ(Count(file).scans, 2U) << marker;
  }
}

TEST(PictureCounts, ALengthOfLessThanItsOwnTwoBytesIsTwo) {
  for (const char length : {'\0', '\1'}) {
    const std::string file = kStart + std::string{'\xFF', '\xE1', '\0', length} + JpegScan(0, 0) + kEnd;
    EXPECT_EQ(Count(file).scans, 1U);
  }
}

TEST(PictureCounts, ASegmentOfNoBytesHasNoSize) {
  for (const char length : {'\0', '\1', '\2', '\6'}) {
    const std::string file = kStart + std::string("\xFF\xC2\0", 3) + length + "\x08\x10\x10\x10\x10";
    EXPECT_EQ(Count(file).pixels, 0U) << int{length};
  }
  EXPECT_EQ(Count(kStart + std::string("\xFF\xC2\0\7\x08\0\3\0\5", 9)).pixels, 15U);
  EXPECT_EQ(Count(kStart + std::string("\xFF\xDA\0\2", 4)).scans, 1U);
}

TEST(PictureCounts, BehindASecondStartNothingIsHidden) {
  EXPECT_EQ(Count(kStart + kStart + JpegFrame(0xC2, 8, 8)).pixels, 64U);
}

TEST(PictureCounts, AFileThatEndsAnywhereIsCountedSoFar) {
  const std::string file = ProgressiveJpeg(64, 64, 4);
  std::uint64_t scans = 0;
  for (std::size_t size = 0; size <= file.size(); ++size) {
    const std::uint64_t now = Count(file.substr(0, size)).scans;
    EXPECT_GE(now, scans);
    scans = now;
  }
  EXPECT_EQ(scans, 4U);
}

TEST(PictureCounts, TablesAreNoFrames) {
  for (const int marker : {0xC4, 0xC8, 0xCC, 0xDB}) {
    EXPECT_FALSE(Count(kStart + JpegFrame(marker, 8, 8)).arithmetic) << marker;
  }
  for (const int marker : {0xC4, 0xCC}) EXPECT_EQ(Count(kStart + JpegFrame(marker, 8, 8)).pixels, 0U);
}

TEST(PictureCounts, OfTwoFramesTheLargerCounts) {
  EXPECT_EQ(Count(kStart + JpegFrame(0xC2, 800, 800) + JpegFrame(0xC2, 8, 8)).pixels, 640'000U);
}

// --- how a picture is turned
// ---------------------------------------------------------------------------------

Orientation OrientationIn(const std::string& bytes) {
  return OrientationOf({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
}

std::string Bytes(std::initializer_list<int> numbers) {
  std::string bytes;
  for (const int number : numbers) bytes += static_cast<char>(number);
  return bytes;
}

// A camera's note of two entries, the highest byte of a number first, then the lowest.
std::string NoteFromTop(int orientation) {
  return std::string("Exif\0\0MM", 8) + Bytes({0, 42, 0, 0, 0, 8, 0, 2}) +
         Bytes({1, 0x0F, 0, 2, 0, 0, 0, 1, 'a', 0, 0, 0}) +
         Bytes({1, 0x12, 0, 3, 0, 0, 0, 1, 0, orientation, 0, 0});
}
std::string NoteFromEnd(int orientation) {
  return std::string("Exif\0\0II", 8) + Bytes({42, 0, 8, 0, 0, 0, 2, 0}) +
         Bytes({0x0F, 1, 2, 0, 1, 0, 0, 0, 'a', 0, 0, 0}) +
         Bytes({0x12, 1, 3, 0, 1, 0, 0, 0, orientation, 0, 0, 0});
}
std::string PictureWith(const std::string& note) { return kStart + JpegSegment(0xE1, note) + kEnd; }

constexpr Orientation kUpright{};
constexpr Orientation kTurnedRight{true, true, false};

TEST(PictureOrientation, OfRealPicturesIsTheirCameras) {
  EXPECT_EQ(OrientationIn(Sample("red-over-blue")), kUpright);
  EXPECT_EQ(OrientationIn(Sample("turned-right")), kTurnedRight);
  EXPECT_EQ(OrientationIn(Sample("upside-down")), (Orientation{false, true, true}));
}

TEST(PictureOrientation, HasEightWaysInEitherOrderOfBytes) {
  const Orientation expected[] = {
      kUpright,     {false, true, false}, {false, true, true}, {false, false, true}, {true, false, false},
      kTurnedRight, {true, true, true},   {true, false, true}};
  for (int i = 1; i <= 8; ++i) {
    EXPECT_EQ(OrientationIn(PictureWith(NoteFromTop(i))), expected[i - 1]) << i;
    EXPECT_EQ(OrientationIn(PictureWith(NoteFromEnd(i))), expected[i - 1]) << i;
  }
}

TEST(PictureOrientation, ThatIsNotKnownIsUpright) {
  for (const int unknown : {0, 9, 255}) {
    EXPECT_EQ(OrientationIn(PictureWith(NoteFromTop(unknown))), kUpright) << unknown;
    EXPECT_EQ(OrientationIn(PictureWith(NoteFromEnd(unknown))), kUpright) << unknown;
  }
}

TEST(PictureOrientation, IsReadFromTheCamerasNoteAlone) {
  const std::string note = NoteFromTop(6);
  EXPECT_EQ(OrientationIn(kStart + JpegSegment(0xE0, note) + kEnd), kUpright);
  EXPECT_EQ(OrientationIn(PictureWith("Http" + note.substr(4))), kUpright);
  EXPECT_EQ(OrientationIn(PictureWith(std::string(note).replace(8, 2, Bytes({0, 43})))), kUpright);
  EXPECT_EQ(OrientationIn(JpegSegment(0xE1, note)), kUpright) << "no picture";
}

TEST(PictureOrientation, IsReadFromANumberOfSixteenBitsAlone) {
  std::string note = NoteFromTop(6);
  note[31] = 4;
  EXPECT_EQ(OrientationIn(PictureWith(note)), kUpright);
}

TEST(PictureOrientation, StandsInAnyNoteBeforeThePicture) {
  EXPECT_EQ(OrientationIn(kStart + JpegSegment(0xE0, "JFIF") + JpegSegment(0xE1, "http://ns.adobe.com") +
                          JpegSegment(0xE1, NoteFromTop(6)) + JpegSegment(0xE1, NoteFromTop(3)) + kEnd),
            kTurnedRight);
  EXPECT_EQ(OrientationIn(kStart + JpegScan(0, 0) + JpegSegment(0xE1, NoteFromTop(6)) + kEnd), kUpright);
}

TEST(PictureOrientation, OfANoteThatEndsAnywhereIsReadOnceItIsThere) {
  const std::string note = NoteFromTop(6);
  for (std::size_t size = 0; size <= note.size(); ++size) {
    EXPECT_EQ(OrientationIn(PictureWith(note.substr(0, size))), size < 38 ? kUpright : kTurnedRight) << size;
  }
}

TEST(PictureOrientation, OfADirectoryBeyondTheNoteIsUpright) {
  for (const auto& place :
       {Bytes({0, 0, 0, 39}), Bytes({0x7F, 0xFF, 0xFF, 0xFF}), Bytes({255, 255, 255, 255})}) {
    EXPECT_EQ(OrientationIn(PictureWith(std::string(NoteFromTop(6)).replace(10, 4, place))), kUpright);
  }
}

// --- limits
// --------------------------------------------------------------------------------------------------

PictureCounts Counts(std::uint64_t pixels, std::uint64_t scans, std::uint64_t notes = 0) {
  return {.pixels = pixels, .scans = scans, .notes = notes};
}

TEST(PictureLimits, AreSixHundredMegapixelsInAllScans) {
  EXPECT_FALSE(IsBeyondLimits(Counts(48'000'000, 10)));
  EXPECT_FALSE(IsBeyondLimits(Counts(60'000'000, 10)));
  EXPECT_TRUE(IsBeyondLimits(Counts(60'000'001, 10)));
  EXPECT_FALSE(IsBeyondLimits(Counts(1'000'000, 600)));
  EXPECT_TRUE(IsBeyondLimits(Counts(1'000'000, 601)));
}

TEST(PictureLimits, AreAHundredMegapixels) {
  EXPECT_FALSE(IsBeyondLimits(Counts(100'000'000, 1)));
  EXPECT_TRUE(IsBeyondLimits(Counts(100'000'001, 1)));
  EXPECT_TRUE(IsBeyondLimits(Counts(std::uint64_t{65535} * 65535, 0)));
}

TEST(PictureLimits, AreFourThousandNotes) {
  EXPECT_FALSE(IsBeyondLimits(Counts(1, 1, 4096)));
  EXPECT_TRUE(IsBeyondLimits(Counts(1, 1, 4097)));
}

TEST(PictureLimits, LeaveOutTheArithmeticCoding) {
  for (const int marker : {0xC9, 0xCA, 0xCB, 0xCD, 0xCF}) {
    EXPECT_TRUE(IsBeyondLimits(Count(kStart + JpegFrame(marker, 8, 8)))) << marker;
  }
  for (const int marker : {0xC0, 0xC1, 0xC2, 0xC3, 0xC7}) {
    EXPECT_FALSE(IsBeyondLimits(Count(kStart + JpegFrame(marker, 8, 8)))) << marker;
  }
}

// --- files
// ---------------------------------------------------------------------------------------------------

class PictureFile : public FolderTest {
 protected:
  int NumberOf(const std::string& name) {
    return NumberOfFailure([&] { ReadPictureFile(Path(name)); });
  }
};

TEST_F(PictureFile, IsReadByteForByte) {
  const std::string bytes = ProgressiveJpeg(64, 64, 3);
  Write("照.jpg", bytes);
  const std::vector<unsigned char> read = ReadPictureFile(Path("照.jpg"));
  EXPECT_EQ(std::string(read.begin(), read.end()), bytes);
  Write("empty.jpg", "");
  EXPECT_TRUE(ReadPictureFile(Path("empty.jpg")).empty());
}

TEST_F(PictureFile, BeyondTheLimitsIsNoPicture) {
  const std::string bytes = ProgressiveJpeg(6600, 5000, 3937);
  EXPECT_LT(bytes.size(), 400'000U);
  Write("a.jpg", bytes);
  EXPECT_EQ(NumberOf("a.jpg"), 481);
}

TEST_F(PictureFile, OfMoreThan32MebibytesIsNoPicture) {
  Write("a.jpg", "\xFF\xD8");
  fs::resize_file(folder_ / "a.jpg", 33554432);
  EXPECT_EQ(NumberOf("a.jpg"), 0);
  fs::resize_file(folder_ / "a.jpg", 33554433);
  EXPECT_EQ(NumberOf("a.jpg"), 481);
}

TEST_F(PictureFile, ThatIsAFolderOrMissingIsNotFound) {
  fs::create_directory(folder_ / "folder.jpg");
  for (const char* name : {"folder.jpg", "none.jpg", "none\\a.jpg"}) EXPECT_EQ(NumberOf(name), 53) << name;
}

}  // namespace
}  // namespace dossierkit::files
