#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <utility>

namespace quorvex {

/// Owns one retain of a Core Foundation object, as functions with Create or Copy in their names
/// give it, and releases it. `Reference` is the object's reference type, CFStringRef for one.
template <typename Reference>
class CFReference {
 public:
  CFReference() = default;
  explicit CFReference(Reference object) : object_(object) {}
  CFReference(CFReference&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  CFReference& operator=(CFReference&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  CFReference(const CFReference&) = delete;
  CFReference& operator=(const CFReference&) = delete;
  ~CFReference() {
    if (object_ != nullptr) {
      CFRelease(object_);
    }
  }

  [[nodiscard]] Reference get() const { return object_; }
  [[nodiscard]] explicit operator bool() const { return object_ != nullptr; }
  /// Gives the retain to the caller.
  [[nodiscard]] Reference take() { return std::exchange(object_, nullptr); }
  /// For functions that give an object through a pointer; call it on an empty reference only.
  [[nodiscard]] Reference* out() { return &object_; }

 private:
  Reference object_ = nullptr;
};

}  // namespace quorvex
