// Grey JPEG files of any size and any number of scans, in few bytes: every block is empty.
#pragma once

#include <cstdint>
#include <string>

namespace dossierkit::tests {

// A segment with its marker, and its length before the body.
inline std::string JpegSegment(int marker, const std::string& body) {
  const std::size_t length = body.size() + 2;
  return std::string{'\xFF', static_cast<char>(marker), static_cast<char>(length >> 8),
                     static_cast<char>(length)} +
         body;
}

// The frame of a picture: 0xC0 is a baseline picture, 0xC2 a progressive one.
inline std::string JpegFrame(int marker, int width, int height, int colours = 1) {
  const auto byte = [](int number) { return static_cast<char>(number); };
  std::string body{8, byte(height >> 8), byte(height), byte(width >> 8), byte(width), byte(colours)};
  for (int colour = 1; colour <= colours; ++colour) body += std::string{byte(colour), 0x11, 0};
  return JpegSegment(marker, body);
}

// What leads a scan over the coefficients from one to another. `bits` tells which bit of them it brings.
inline std::string JpegScan(int first, int last, int colours = 1, int bits = 0) {
  std::string body(1, static_cast<char>(colours));
  for (int colour = 1; colour <= colours; ++colour) body += std::string{static_cast<char>(colour), 0};
  return JpegSegment(0xDA,
                     body + static_cast<char>(first) + static_cast<char>(last) + static_cast<char>(bits));
}

// The tables of a picture; its codes have a bit for one symbol and two for another.
inline std::string JpegTables() {
  return JpegSegment(0xDB, std::string(1, 0) + std::string(64, 1)) +
         JpegSegment(0xC4, std::string(1, 0x00) + '\1' + std::string(15, 0) + '\0') +
         JpegSegment(0xC4, std::string(1, 0x10) + '\1' + '\1' + std::string(14, 0) + '\xE0' + '\0');
}

// A progressive picture. The first scan has the means of the blocks, with a bit for each; of the others each
// says with a run of so many blocks that they hold nothing more.
inline std::string ProgressiveJpeg(int width, int height, int scans) {
  constexpr std::int64_t kLongestRun = 32767;
  const std::int64_t blocks = std::int64_t{(width + 7) / 8} * ((height + 7) / 8);
  std::string run;  // a code of a bit, 0, and the length of the run less 16384 in 14 more: 15 bits of each
  std::uint64_t bits = 0;
  int count = 0;
  for (std::int64_t left = blocks; left > 0; left -= kLongestRun) {
    bits = bits << 15 | 0x3FFF;
    for (count += 15; count >= 8; count -= 8) {
      run += static_cast<char>(bits >> (count - 8));
      if (run.back() == '\xFF') run += '\0';
    }
  }
  if (count > 0) run += static_cast<char>(bits << (8 - count));
  std::string file = "\xFF\xD8" + JpegTables() + JpegFrame(0xC2, width, height) + JpegScan(0, 0) +
                     std::string(static_cast<std::size_t>((blocks + 7) / 8), 0);
  for (int scan = 1; scan < scans; ++scan) {
    const int coefficient = (scan - 1) % 63 + 1;
    file += JpegScan(coefficient, coefficient) + run;
  }
  return file + "\xFF\xD9";
}

}  // namespace dossierkit::tests
