#pragma once

namespace quorvex {

/// Finds libraries and their symbols at run time. Any thread.
class DynamicLoader {
 public:
  /// When a library's own undefined symbols are looked up.
  enum class Binding { lazy, now };

  DynamicLoader() = default;
  DynamicLoader(const DynamicLoader&) = delete;
  DynamicLoader& operator=(const DynamicLoader&) = delete;
  virtual ~DynamicLoader() = default;

  /// A handle; null when the library cannot be loaded. A null path stands for what the process has
  /// loaded already. A failed attempt leaves no pending error behind.
  [[nodiscard]] virtual void* open(const char* path, Binding binding) = 0;
  /// The symbol's address; null when the library does not have it.
  [[nodiscard]] virtual void* symbol(void* handle, const char* name) = 0;
  virtual void close(void* handle) = 0;
};

/// The loader of the computer that the process runs on.
class SystemDynamicLoader final : public DynamicLoader {
 public:
  [[nodiscard]] void* open(const char* path, Binding binding) override;
  [[nodiscard]] void* symbol(void* handle, const char* name) override;
  void close(void* handle) override;
};

/// Owns an open library and closes it, unless it is told to keep it.
class DynamicLibrary {
 public:
  DynamicLibrary(DynamicLoader& loader, void* handle) : loader_(&loader), handle_(handle) {}
  DynamicLibrary(const DynamicLibrary&) = delete;
  DynamicLibrary& operator=(const DynamicLibrary&) = delete;
  ~DynamicLibrary() {
    if (handle_ != nullptr) {
      loader_->close(handle_);
    }
  }

  [[nodiscard]] explicit operator bool() const { return handle_ != nullptr; }

  /// Looks a function up. Whether it was found.
  template <typename Function>
  bool find(const char* name, Function*& function) {
    function = reinterpret_cast<Function*>(loader_->symbol(handle_, name));
    return function != nullptr;
  }

  /// Leaves the library open to the end of the process.
  void keepOpen() { handle_ = nullptr; }

 private:
  DynamicLoader* loader_;
  void* handle_;
};

}  // namespace quorvex
