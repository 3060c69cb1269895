// Pointer: a counted reference to an object of COM.
#pragma once

#include <utility>

namespace dossierkit::windows {

template <typename T>
class Pointer {
 public:
  Pointer() = default;
  // Takes a reference of its own.
  explicit Pointer(T* held) : held_(held) {
    if (held_) held_->AddRef();
  }
  Pointer(const Pointer& other) : Pointer(other.held_) {}
  Pointer(Pointer&& other) noexcept : held_(std::exchange(other.held_, nullptr)) {}
  Pointer& operator=(Pointer other) noexcept {
    std::swap(held_, other.held_);
    return *this;
  }
  ~Pointer() {
    if (held_) held_->Release();
  }

  T* Get() const { return held_; }
  T* operator->() const { return held_; }
  explicit operator bool() const { return held_ != nullptr; }
  // Where a function puts a reference; what was held is let go.
  T** Put() {
    *this = Pointer();
    return &held_;
  }
  void** PutVoid() { return reinterpret_cast<void**>(Put()); }
  // A reference for a caller.
  T* Copy() const {
    if (held_) held_->AddRef();
    return held_;
  }

 private:
  T* held_ = nullptr;
};

}  // namespace dossierkit::windows
