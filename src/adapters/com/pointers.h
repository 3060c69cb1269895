// What COM hands out, owned by objects of C++.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "adapters/windows/pointer.h"
#include "adapters/windows/texts.h"

namespace dossierkit::com {

using windows::Pointer;

// A text of COM.
class Bstr {
 public:
  Bstr() = default;
  // From UTF-8.
  explicit Bstr(std::string_view text);
  Bstr(const Bstr&) = delete;
  Bstr& operator=(const Bstr&) = delete;
  ~Bstr() { SysFreeString(held_); }

  BSTR Get() const { return held_; }
  BSTR* Put() { return &held_; }
  // For a caller, who frees it.
  BSTR Release() { return std::exchange(held_, nullptr); }

 private:
  BSTR held_ = nullptr;
};

// A value of COM, of any type.
class Variant {
 public:
  Variant() { VariantInit(&held_); }
  Variant(Variant&& other) noexcept : held_(other.held_) { VariantInit(&other.held_); }
  Variant& operator=(Variant&& other) noexcept {
    std::swap(held_, other.held_);
    return *this;
  }
  ~Variant() { VariantClear(&held_); }

  static Variant OfText(std::string_view text);
  static Variant OfInteger(LONG number);
  // An argument that is left out.
  static Variant Missing();

  VARIANT& Get() { return held_; }
  const VARIANT& Get() const { return held_; }

 private:
  VARIANT held_;
};

using windows::Utf8;
using windows::Wide;
std::string TextOf(BSTR text);  // null is the empty text

}  // namespace dossierkit::com
