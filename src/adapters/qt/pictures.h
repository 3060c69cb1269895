// Pictures: reading and decoding of JPEG files.
#pragma once

#include <QImage>
#include <QSize>
#include <string>

#include "platform/toolkit/controls/basic_controls.h"

namespace dossierkit::qt {

// A JPEG file, turned as its camera noted it and no larger than `size` needs, in pixels; an empty path gives
// no picture. Throws 53 where there is no such file, 70 and 75 where it cannot be read, 481 where it is no
// JPEG or beyond the limits of a picture file.
toolkit::Picture ReadPicture(const std::string& path, QSize size);

// The image of a picture that ReadPicture has read; null for no picture.
QImage ImageOf(const toolkit::Picture& picture);

}  // namespace dossierkit::qt
