#include "platform/files/picture_file.h"

#include <algorithm>
#include <cstring>
#include <system_error>

#include "platform/environment/failure.h"
#include "platform/files/disk.h"

namespace dossierkit::files {
namespace {

using Bytes = std::span<const unsigned char>;

// The second bytes of a marker.
enum Marker : unsigned char {
  kFirstFrame = 0xC0,
  kHuffmanTables = 0xC4,
  kFirstArithmeticFrame = 0xC8,
  kArithmeticTables = 0xCC,
  kLastFrame = 0xCF,
  kFirstRestart = 0xD0,
  kStart = 0xD8,
  kEnd = 0xD9,
  kScan = 0xDA,
  kFirstApplication = 0xE0,
  kLastApplication = 0xEF,
  kComment = 0xFE,
};

std::uint64_t NumberAt(Bytes bytes, std::size_t place) { return bytes[place] * 256U + bytes[place + 1]; }

// Takes everything up to the next marker off `bytes`, and the marker; 0 where there is none. An FF in the
// data of a scan is followed by a 0.
unsigned char TakeMarker(Bytes& bytes) {
  while (const void* found = bytes.empty() ? nullptr : std::memchr(bytes.data(), 0xFF, bytes.size())) {
    bytes = bytes.subspan(static_cast<std::size_t>(static_cast<const unsigned char*>(found) - bytes.data()));
    while (!bytes.empty() && bytes[0] == 0xFF) bytes = bytes.subspan(1);
    if (bytes.empty()) break;
    const unsigned char marker = bytes[0];
    bytes = bytes.subspan(1);
    if (marker != 0) return marker;
  }
  return 0;
}

// No length follows these. Of the unknown ones a decoder may pass over the marker alone, so what follows is
// looked at.
bool StandsAlone(unsigned char marker) {
  return marker < kFirstFrame || (marker >= kFirstRestart && marker <= kStart);
}

bool IsFrame(unsigned char marker) {
  return marker >= kFirstFrame && marker <= kLastFrame && marker != kHuffmanTables &&
         marker != kArithmeticTables;
}

void CountSegment(PictureCounts& counts, unsigned char marker, Bytes body) {
  if (marker == kScan) ++counts.scans;
  if (marker == kComment || (marker >= kFirstApplication && marker <= kLastApplication)) ++counts.notes;
  if (!IsFrame(marker)) return;
  if (marker > kFirstArithmeticFrame) counts.arithmetic = true;
  // The bits of a sample, then height and width.
  if (body.size() >= 5) counts.pixels = std::max(counts.pixels, NumberAt(body, 1) * NumberAt(body, 3));
}

}  // namespace

PictureCounts CountPicture(Bytes bytes) {
  PictureCounts counts;
  if (bytes.size() < 2 || bytes[0] != 0xFF || bytes[1] != kStart) return counts;
  bytes = bytes.subspan(2);
  while (const unsigned char marker = TakeMarker(bytes)) {
    if (marker == kEnd) break;
    if (StandsAlone(marker)) continue;
    if (bytes.size() < 2) break;
    const std::size_t length =
        static_cast<std::size_t>(std::clamp<std::uint64_t>(NumberAt(bytes, 0), 2, bytes.size()));
    CountSegment(counts, marker, bytes.subspan(2, length - 2));
    bytes = bytes.subspan(length);
  }
  return counts;
}

bool IsBeyondLimits(const PictureCounts& counts) {
  return counts.pixels > kMostPixels || counts.scans * counts.pixels > kMostPixelsOfAllScans ||
         counts.notes > kMostNotes || counts.arithmetic;
}

std::vector<unsigned char> ReadPictureFile(const std::string& path) {
  try {
    const OpenFile file = OpenFile::ToRead(PathOf(path));
    const std::uint64_t size = file.Size();
    if (size > kLargestPictureFile) throw environment::MakeFailure(environment::kInvalidPicture);
    std::vector<unsigned char> bytes(static_cast<std::size_t>(size));
    bytes.resize(file.Read(0, {reinterpret_cast<char*>(bytes.data()), bytes.size()}));
    if (IsBeyondLimits(CountPicture(bytes))) throw environment::MakeFailure(environment::kInvalidPicture);
    return bytes;
  } catch (const std::system_error& failure) {
    throw FailureOf(failure.code());
  }
}

}  // namespace dossierkit::files
