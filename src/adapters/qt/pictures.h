// Pictures: reading and decoding of JPEG files.
#pragma once

#include <QImage>
#include <string>

#include "platform/toolkit/controls/basic_controls.h"

namespace dossierkit::qt {

// The bytes of a JPEG file that was found to be readable; an empty path gives no picture. Throws 53
// where there is no such file, 481 where it is no JPEG.
toolkit::Picture ReadPicture(const std::string& path);

// The image, turned as the camera noted it; null for no picture.
QImage DecodePicture(const toolkit::Picture& picture);

}  // namespace dossierkit::qt
