// Pictures: reading of JPEG files, and the icons of the toolbar.
#pragma once

#include <memory>
#include <string>

#include "adapters/win32/bitmap.h"
#include "platform/toolkit/controls/basic_controls.h"

namespace dossierkit::win32 {

// A JPEG file, turned as its camera noted it and no larger than `size`, in pixels; an empty path gives no
// picture. Throws 53 where there is no such file, 70 and 75 where it cannot be read, 481 where it is no JPEG
// or beyond the limits of a picture file.
toolkit::Picture ReadPicture(const std::string& path, SIZE size);

// The bitmap that ReadPicture makes of the bytes of a file; empty where they are no JPEG file.
Bitmap DecodePicture(std::span<const unsigned char> bytes, SIZE size);

// The bitmap of a picture that ReadPicture has read; an empty one for no picture.
const Bitmap& BitmapOf(const toolkit::Picture& picture);

// An icon of the toolbar, compiled into the program or library that holds these views; empty for a number
// that has none.
Bitmap ToolbarIcon(int number);

}  // namespace dossierkit::win32
