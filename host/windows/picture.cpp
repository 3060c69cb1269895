#include "host/windows/picture.h"

#include <wincodec.h>

#include "adapters/windows/pointer.h"
#include "host/paths.h"
#include "platform/environment/failure.h"

namespace dossierkit::host {
namespace {

using windows::Pointer;

// What a window and all that stands in it show now.
class Grabbed {
 public:
  explicit Grabbed(HWND window) {
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    RECT place;
    GetClientRect(window, &place);
    // A window's own context would leave out what its children paint.
    const HDC shown = GetDCEx(window, nullptr, DCX_CACHE);
    const HDC memory = CreateCompatibleDC(shown);
    bitmap_ = CreateCompatibleBitmap(shown, place.right, place.bottom);
    const HGDIOBJ before = SelectObject(memory, bitmap_);
    BitBlt(memory, 0, 0, place.right, place.bottom, shown, 0, 0, SRCCOPY);
    SelectObject(memory, before);
    DeleteDC(memory);
    ReleaseDC(window, shown);
  }
  ~Grabbed() { DeleteObject(bitmap_); }
  Grabbed(const Grabbed&) = delete;
  Grabbed& operator=(const Grabbed&) = delete;
  HBITMAP Get() const { return bitmap_; }

 private:
  HBITMAP bitmap_;
};

bool Encode(HBITMAP bitmap, const wchar_t* file) {
  Pointer<IWICImagingFactory> factory;
  Pointer<IWICBitmap> source;
  Pointer<IWICStream> stream;
  Pointer<IWICBitmapEncoder> encoder;
  Pointer<IWICBitmapFrameEncode> frame;
  return SUCCEEDED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                    IID_IWICImagingFactory, reinterpret_cast<void**>(factory.Put()))) &&
         SUCCEEDED(factory->CreateBitmapFromHBITMAP(bitmap, nullptr, WICBitmapIgnoreAlpha, source.Put())) &&
         SUCCEEDED(factory->CreateStream(stream.Put())) &&
         SUCCEEDED(stream->InitializeFromFilename(file, GENERIC_WRITE)) &&
         SUCCEEDED(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, encoder.Put())) &&
         SUCCEEDED(encoder->Initialize(stream.Get(), WICBitmapEncoderNoCache)) &&
         SUCCEEDED(encoder->CreateNewFrame(frame.Put(), nullptr)) && SUCCEEDED(frame->Initialize(nullptr)) &&
         SUCCEEDED(frame->WriteSource(source.Get(), nullptr)) && SUCCEEDED(frame->Commit()) &&
         SUCCEEDED(encoder->Commit());
}

}  // namespace

void WritePicture(HWND window, const std::filesystem::path& file) {
  const bool began = SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
  const bool written = Encode(Grabbed(window).Get(), file.c_str());
  if (began) CoUninitialize();
  if (!written) throw environment::Failure(environment::kPathAccess, "无法写入图片 " + TextOf(file));
}

}  // namespace dossierkit::host
