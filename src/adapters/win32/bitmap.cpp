#include "adapters/win32/bitmap.h"

#include <wincodec.h>

#include <algorithm>

#include "adapters/windows/pointer.h"

namespace dossierkit::win32 {
namespace {

using windows::Pointer;

// The imaging component wants COM on its thread, which a program with views need not have begun.
class ComOnThread {
 public:
  ComOnThread() : began_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
  ~ComOnThread() {
    if (began_) CoUninitialize();
  }
  ComOnThread(const ComOnThread&) = delete;
  ComOnThread& operator=(const ComOnThread&) = delete;

 private:
  bool began_;
};

// A size within another one, of at least a pixel.
SIZE Within(UINT width, UINT height, const SIZE* most) {
  const auto side = [](UINT whole, LONG limit) {
    return static_cast<LONG>(std::min(whole, static_cast<UINT>(std::max(limit, LONG{1}))));
  };
  if (!most) return {static_cast<LONG>(width), static_cast<LONG>(height)};
  return {side(width, most->cx), side(height, most->cy)};
}

// The first picture of the bytes; null where they are none of the format.
Pointer<IWICBitmapFrameDecode> FrameOf(IWICImagingFactory& factory, std::span<const unsigned char> bytes,
                                       Format format) {
  Pointer<IWICBitmapFrameDecode> frame;
  Pointer<IWICStream> stream;
  Pointer<IWICBitmapDecoder> decoder;
  GUID container = {};
  if (FAILED(factory.CreateStream(stream.Put())) ||
      FAILED(
          stream->InitializeFromMemory(const_cast<BYTE*>(bytes.data()), static_cast<DWORD>(bytes.size()))) ||
      FAILED(factory.CreateDecoderFromStream(stream.Get(), nullptr, WICDecodeMetadataCacheOnDemand,
                                             decoder.Put())) ||
      FAILED(decoder->GetContainerFormat(&container)) ||
      !IsEqualGUID(container, format == Format::kJpeg ? GUID_ContainerFormatJpeg : GUID_ContainerFormatPng) ||
      FAILED(decoder->GetFrame(0, frame.Put())))
    return {};
  return frame;
}

Pointer<IWICBitmapSource> Scaled(IWICImagingFactory& factory, IWICBitmapSource& source, SIZE size) {
  UINT width = 0;
  UINT height = 0;
  Pointer<IWICBitmapScaler> scaler;
  if (FAILED(source.GetSize(&width, &height))) return {};
  if (static_cast<LONG>(width) == size.cx && static_cast<LONG>(height) == size.cy)
    return Pointer<IWICBitmapSource>(&source);
  if (FAILED(factory.CreateBitmapScaler(scaler.Put())) ||
      FAILED(scaler->Initialize(&source, static_cast<UINT>(size.cx), static_cast<UINT>(size.cy),
                                WICBitmapInterpolationModeFant)))
    return {};
  return Pointer<IWICBitmapSource>(scaler.Get());
}

BITMAPINFO HeadOf(const Bitmap& bitmap) {
  BITMAPINFO head = {};
  head.bmiHeader.biSize = sizeof head.bmiHeader;
  head.bmiHeader.biWidth = bitmap.width;
  head.bmiHeader.biHeight = -bitmap.height;  // from above
  head.bmiHeader.biPlanes = 1;
  head.bmiHeader.biBitCount = 32;
  head.bmiHeader.biCompression = BI_RGB;
  return head;
}

int Width(const RECT& place) { return static_cast<int>(place.right - place.left); }
int Height(const RECT& place) { return static_cast<int>(place.bottom - place.top); }

}  // namespace

Bitmap Decode(std::span<const unsigned char> bytes, Format format, const SIZE* most) {
  const ComOnThread com;
  Pointer<IWICImagingFactory> factory;
  if (bytes.empty() || FAILED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                               IID_IWICImagingFactory, factory.PutVoid())))
    return {};
  const auto frame = FrameOf(*factory.Get(), bytes, format);
  UINT width = 0;
  UINT height = 0;
  if (!frame || FAILED(frame->GetSize(&width, &height)) || width == 0 || height == 0) return {};
  const SIZE size = Within(width, height, most);
  const auto scaled = Scaled(*factory.Get(), *frame.Get(), size);
  Pointer<IWICFormatConverter> converter;
  if (!scaled || FAILED(factory->CreateFormatConverter(converter.Put())) ||
      FAILED(converter->Initialize(scaled.Get(), GUID_WICPixelFormat32bppPBGRA, WICBitmapDitherTypeNone,
                                   nullptr, 0, WICBitmapPaletteTypeCustom)))
    return {};
  Bitmap bitmap{static_cast<int>(size.cx), static_cast<int>(size.cy), {}};
  bitmap.pixels.resize(static_cast<std::size_t>(size.cx) * static_cast<std::size_t>(size.cy));
  const UINT stride = static_cast<UINT>(size.cx) * 4;
  if (FAILED(converter->CopyPixels(nullptr, stride, stride * static_cast<UINT>(size.cy),
                                   reinterpret_cast<BYTE*>(bitmap.pixels.data()))))
    return {};
  return bitmap;
}

Bitmap Turned(const Bitmap& bitmap, const files::Orientation& orientation) {
  if (orientation == files::Orientation{}) return bitmap;
  Bitmap turned{bitmap.width, bitmap.height, {}};
  if (orientation.sides_swapped) std::swap(turned.width, turned.height);
  turned.pixels.reserve(bitmap.pixels.size());
  for (int y = 0; y < turned.height; ++y) {
    for (int x = 0; x < turned.width; ++x) {
      const int across = orientation.left_right_mirrored ? turned.width - 1 - x : x;
      const int down = orientation.upside_down ? turned.height - 1 - y : y;
      turned.pixels.push_back(orientation.sides_swapped ? bitmap.At(down, across) : bitmap.At(across, down));
    }
  }
  return turned;
}

void PaintStretched(HDC context, const RECT& place, const Bitmap& bitmap) {
  if (bitmap.Empty()) return;
  const BITMAPINFO head = HeadOf(bitmap);
  const int before = SetStretchBltMode(context, HALFTONE);
  StretchDIBits(context, place.left, place.top, Width(place), Height(place), 0, 0, bitmap.width,
                bitmap.height, bitmap.pixels.data(), &head, DIB_RGB_COLORS, SRCCOPY);
  SetStretchBltMode(context, before);
}

void PaintOver(HDC context, const RECT& place, const Bitmap& bitmap) {
  if (bitmap.Empty()) return;
  const BITMAPINFO head = HeadOf(bitmap);
  void* bits = nullptr;
  const HBITMAP section = CreateDIBSection(context, &head, DIB_RGB_COLORS, &bits, nullptr, 0);
  if (!section) return;
  std::copy(bitmap.pixels.begin(), bitmap.pixels.end(), static_cast<std::uint32_t*>(bits));
  const HDC memory = CreateCompatibleDC(context);
  const HGDIOBJ before = SelectObject(memory, section);
  AlphaBlend(context, place.left, place.top, Width(place), Height(place), memory, 0, 0, bitmap.width,
             bitmap.height, {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA});
  SelectObject(memory, before);
  DeleteDC(memory);
  DeleteObject(section);
}

Bitmap Paled(Bitmap bitmap) {
  for (std::uint32_t& pixel : bitmap.pixels) {
    const std::uint32_t grey =
        ((pixel & 0xFFU) * 11 + ((pixel >> 8U) & 0xFFU) * 59 + ((pixel >> 16U) & 0xFFU) * 30) / 200;
    const std::uint32_t covered = (pixel >> 24U) / 2;
    pixel = covered << 24U | grey << 16U | grey << 8U | grey;
  }
  return bitmap;
}

}  // namespace dossierkit::win32
