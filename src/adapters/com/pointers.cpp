#include "adapters/com/pointers.h"

#include <new>

namespace dossierkit::com {

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
