// Picture files: reading one, and the limits that keep a picture from stopping the window. For the views of
// every platform: what they decode was counted here before.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace dossierkit::files {

// What is to be done to decode a JPEG, as its segments say. All 0 for what is none; then the decoder is
// asked.
struct PictureCounts {
  std::uint64_t pixels = 0;
  std::uint64_t scans = 0;  // each passes over the whole picture
  std::uint64_t notes = 0;  // segments of applications, and comments
  bool arithmetic = false;  // a coding that no camera writes, ten times as slow
};

// Counts at least what a decoder meets, up to the end of the picture, without decoding anything.
PictureCounts CountPicture(std::span<const unsigned char> bytes);

// How a decoded picture is turned so that it stands upright: first its sides change places (what was a row
// from the left becomes a column from above), then it is mirrored.
struct Orientation {
  bool sides_swapped = false;
  bool left_right_mirrored = false;
  bool upside_down = false;
  bool operator==(const Orientation&) const = default;
};

// As the camera noted it in the file (EXIF); upright where it noted nothing, or nothing that is known.
Orientation OrientationOf(std::span<const unsigned char> bytes);

// The limits. Beyond one of them a file is no picture.
inline constexpr std::uint64_t kLargestPictureFile = 33554432;  // bytes
inline constexpr std::uint64_t kMostPixels = 100'000'000;
inline constexpr std::uint64_t kMostPixelsOfAllScans = 600'000'000;
inline constexpr std::uint64_t kMostNotes = 4096;
bool IsBeyondLimits(const PictureCounts& counts);

// The bytes of a picture file; whether they are a picture is for the decoder to say. Throws 53 where there is
// no such file, 70 and 75 where it cannot be read, 481 where it is beyond the limits.
std::vector<unsigned char> ReadPictureFile(const std::string& path);

}  // namespace dossierkit::files
