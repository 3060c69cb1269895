#include "adapters/win32/pictures.h"

#include <utility>

#include "adapters/win32/window_classes.h"
#include "platform/environment/failure.h"
#include "platform/files/picture_file.h"

namespace dossierkit::win32 {
namespace {

const wchar_t* const kRawData = MAKEINTRESOURCEW(10);  // as RT_RCDATA
constexpr int kFirstIcon = 100;                        // the resource of number 0

}  // namespace

toolkit::Picture ReadPicture(const std::string& path, SIZE size) {
  if (path.empty()) return {};
  toolkit::Picture picture;
  picture.bytes = std::make_shared<const std::vector<unsigned char>>(files::ReadPictureFile(path));
  const auto bitmap = std::make_shared<const Bitmap>(DecodePicture(*picture.bytes, size));
  if (bitmap->Empty()) throw environment::MakeFailure(environment::kInvalidPicture);
  picture.decoded = bitmap;
  return picture;
}

Bitmap DecodePicture(std::span<const unsigned char> bytes, SIZE size) {
  const files::Orientation orientation = files::OrientationOf(bytes);
  if (orientation.sides_swapped) std::swap(size.cx, size.cy);
  return Turned(Decode(bytes, Format::kJpeg, &size), orientation);
}

const Bitmap& BitmapOf(const toolkit::Picture& picture) {
  static const Bitmap kNone;
  return picture.decoded ? *static_cast<const Bitmap*>(picture.decoded.get()) : kNone;
}

Bitmap ToolbarIcon(int number) {
  const HMODULE module = OwnModule();
  const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(kFirstIcon + number), kRawData);
  const HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
  if (!loaded) return {};
  const auto* bytes = static_cast<const unsigned char*>(LockResource(loaded));
  return Decode({bytes, SizeofResource(module, found)}, Format::kPng);
}

}  // namespace dossierkit::win32
