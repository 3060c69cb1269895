// Bitmap: pixels that were decoded, and how they are painted. They hold no object of Windows, so that they
// may outlive the windows that show them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "adapters/windows/windows_headers.h"
#include "platform/files/picture_file.h"

namespace dossierkit::win32 {

struct Bitmap {
  int width = 0;
  int height = 0;
  // Row by row from above: blue in the lowest byte, then green, red and how much of what lies below is
  // covered, by which the others have been multiplied already.
  std::vector<std::uint32_t> pixels;

  bool Empty() const { return pixels.empty(); }
  std::uint32_t At(int x, int y) const {
    return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                  static_cast<std::size_t>(x)];
  }
};

enum class Format { kJpeg, kPng };

// Decodes a picture, no larger than `most` if that is given and no smaller than a pixel. Empty where the
// bytes are no picture of the format.
Bitmap Decode(std::span<const unsigned char> bytes, Format format, const SIZE* most = nullptr);

// The bitmap as its camera held it.
Bitmap Turned(const Bitmap& bitmap, const files::Orientation& orientation);

// Paints a bitmap stretched to a place: over all of it, or as a picture that lets through what lies below.
void PaintStretched(HDC context, const RECT& place, const Bitmap& bitmap);
void PaintOver(HDC context, const RECT& place, const Bitmap& bitmap);

// The bitmap in grey, paler: of a button that is disabled.
Bitmap Paled(Bitmap bitmap);

}  // namespace dossierkit::win32
