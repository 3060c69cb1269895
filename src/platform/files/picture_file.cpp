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
  kCameraNote = 0xE1,
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

// Calls see(marker, body) for each segment of a JPEG up to the end of the picture, as long as it gives true.
template <typename See>
void SeeSegments(Bytes bytes, const See& see) {
  if (bytes.size() < 2 || bytes[0] != 0xFF || bytes[1] != kStart) return;
  bytes = bytes.subspan(2);
  while (const unsigned char marker = TakeMarker(bytes)) {
    if (marker == kEnd) break;
    if (StandsAlone(marker)) continue;
    if (bytes.size() < 2) break;
    const std::size_t length =
        static_cast<std::size_t>(std::clamp<std::uint64_t>(NumberAt(bytes, 0), 2, bytes.size()));
    if (!see(marker, bytes.subspan(2, length - 2))) break;
    bytes = bytes.subspan(length);
  }
}

void CountSegment(PictureCounts& counts, unsigned char marker, Bytes body) {
  if (marker == kScan) ++counts.scans;
  if (marker == kComment || (marker >= kFirstApplication && marker <= kLastApplication)) ++counts.notes;
  if (!IsFrame(marker)) return;
  if (marker > kFirstArithmeticFrame) counts.arithmetic = true;
  // The bits of a sample, then height and width.
  if (body.size() >= 5) counts.pixels = std::max(counts.pixels, NumberAt(body, 1) * NumberAt(body, 3));
}

// What stands in a camera's note, in its own order of bytes; 0 beyond its end.
class CameraNote {
 public:
  explicit CameraNote(Bytes bytes) : bytes_(bytes), from_end_(!bytes.empty() && bytes[0] == 'I') {}
  std::uint64_t At(std::uint64_t place, std::size_t size) const {
    if (place > bytes_.size() || size > bytes_.size() - place) return 0;
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < size; ++i) {
      const std::size_t byte = static_cast<std::size_t>(place) + (from_end_ ? size - 1 - i : i);
      number = number << 8U | bytes_[byte];
    }
    return number;
  }

 private:
  Bytes bytes_;
  bool from_end_;  // the lowest byte of a number stands first
};

// Of the first directory of the note: a count, and then so many entries of a tag, a type, a count and a
// value.
std::uint64_t NotedOrientation(Bytes body) {
  constexpr char kHead[] = {'E', 'x', 'i', 'f', 0, 0};
  if (body.size() < sizeof kHead || std::memcmp(body.data(), kHead, sizeof kHead) != 0) return 0;
  constexpr std::uint64_t kMagic = 42;
  constexpr std::uint64_t kOrientation = 0x0112;
  constexpr std::uint64_t kShort = 3;
  constexpr std::uint64_t kEntry = 12;  // bytes
  const CameraNote note(body.subspan(sizeof kHead));
  if (note.At(2, 2) != kMagic) return 0;
  const std::uint64_t directory = note.At(4, 4);
  const std::uint64_t entries = note.At(directory, 2);
  for (std::uint64_t i = 0; i < entries; ++i) {
    const std::uint64_t entry = directory + 2 + i * kEntry;
    if (note.At(entry, 2) == kOrientation && note.At(entry + 2, 2) == kShort) return note.At(entry + 8, 2);
  }
  return 0;
}

}  // namespace

PictureCounts CountPicture(Bytes bytes) {
  PictureCounts counts;
  SeeSegments(bytes, [&](unsigned char marker, Bytes body) {
    CountSegment(counts, marker, body);
    return true;
  });
  return counts;
}

Orientation OrientationOf(Bytes bytes) {
  std::uint64_t noted = 0;
  SeeSegments(bytes, [&](unsigned char marker, Bytes body) {
    if (marker == kCameraNote) noted = NotedOrientation(body);
    return noted == 0 && marker != kScan;
  });
  const bool known = noted > 1 && noted <= 8;
  // The sides change places from the fifth on.
  constexpr Orientation kNoted[] = {{false, false, false}, {false, true, false}, {false, true, true},
                                    {false, false, true},  {true, false, false}, {true, true, false},
                                    {true, true, true},    {true, false, true}};
  return known ? kNoted[noted - 1] : Orientation{};
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
