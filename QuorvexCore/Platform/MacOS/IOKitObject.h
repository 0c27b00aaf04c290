#pragma once

#include <IOKit/IOKitLib.h>

namespace quorvex {

/// Owns a handle of the I/O registry and releases it; 0 stands for none.
class IOKitObject {
 public:
  explicit IOKitObject(io_object_t object) : object_(object) {}
  IOKitObject(const IOKitObject&) = delete;
  IOKitObject& operator=(const IOKitObject&) = delete;
  ~IOKitObject() {
    if (object_ != 0) {
      IOObjectRelease(object_);
    }
  }

  [[nodiscard]] io_object_t get() const { return object_; }
  [[nodiscard]] explicit operator bool() const { return object_ != 0; }

 private:
  io_object_t object_;
};

}  // namespace quorvex
