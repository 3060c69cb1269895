#include "adapters/com/pointers.h"

#include <new>

namespace dossierkit::com {

std::wstring Wide(std::string_view text) {
  if (text.empty()) return {};
  const int size = static_cast<int>(text.size());
  std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)),
                    L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::string Utf8(std::wstring_view text) {
  if (text.empty()) return {};
  const int size = static_cast<int>(text.size());
  std::string utf8(static_cast<std::size_t>(
                       WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr)),
                   '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), size, utf8.data(), static_cast<int>(utf8.size()), nullptr,
                      nullptr);
  return utf8;
}

std::string TextOf(BSTR text) {
  return text ? Utf8(std::wstring_view(text, SysStringLen(text))) : std::string();
}

Bstr::Bstr(std::string_view text) {
  const std::wstring wide = Wide(text);
  held_ = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  if (!held_) throw std::bad_alloc();
}

Variant Variant::OfText(std::string_view text) {
  Variant value;
  V_BSTR(&value.held_) = Bstr(text).Release();
  V_VT(&value.held_) = VT_BSTR;
  return value;
}

Variant Variant::OfInteger(LONG number) {
  Variant value;
  V_VT(&value.held_) = VT_I4;
  V_I4(&value.held_) = number;
  return value;
}

Variant Variant::Missing() {
  Variant value;
  V_VT(&value.held_) = VT_ERROR;
  V_ERROR(&value.held_) = DISP_E_PARAMNOTFOUND;
  return value;
}

}  // namespace dossierkit::com
