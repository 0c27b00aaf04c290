#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <limits>
#include <new>

namespace quorvex::testing {

/// The file system of every store that is opened while it lives, in which writing can be made to
/// fail: as on a full disk, or as on one that breaks.
class FaultyVFS {
 public:
  FaultyVFS() : real_(sqlite3_vfs_find(nullptr)), vfs_(*real_) {
    current = this;
    vfs_.zName = "faulty";
    vfs_.szOsFile = static_cast<int>(sizeof(File)) + real_->szOsFile;
    vfs_.xOpen = &FaultyVFS::open;
    sqlite3_vfs_register(&vfs_, 1);
  }
  FaultyVFS(const FaultyVFS&) = delete;
  FaultyVFS& operator=(const FaultyVFS&) = delete;
  ~FaultyVFS() {
    sqlite3_vfs_unregister(&vfs_);
    sqlite3_vfs_register(real_, 1);
    current = nullptr;
  }

  /// After `count` more writes and syncs each one fails with a SQLite result code.
  void failAfter(int count, int code) {
    remaining_ = count;
    code_ = code;
  }
  /// Everything works again.
  void repair() { remaining_ = std::numeric_limits<int>::max(); }
  /// Whether a write or sync has failed so far.
  [[nodiscard]] bool hasFailed() const { return hasFailed_; }

 private:
  /// The real file's record follows it in memory.
  struct File {
    sqlite3_file base;
    [[nodiscard]] sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
  };
  static sqlite3_file* realOf(sqlite3_file* file) { return reinterpret_cast<File*>(file)->real(); }

  static int open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    auto* const own = new (file) File{};
    const int code = current->real_->xOpen(current->real_, name, own->real(), flags, outFlags);
    own->base.pMethods = own->real()->pMethods == nullptr ? nullptr : &methods;
    return code;
  }

  int next() {
    if (remaining_ == 0) {
      hasFailed_ = true;
      return code_;
    }
    if (remaining_ != std::numeric_limits<int>::max()) {
      --remaining_;
    }
    return SQLITE_OK;
  }

  static int write(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset) {
    const int code = current->next();
    return code != SQLITE_OK ? code
                             : realOf(file)->pMethods->xWrite(realOf(file), data, size, offset);
  }
  static int sync(sqlite3_file* file, int flags) {
    const int code = current->next();
    return code != SQLITE_OK ? code : realOf(file)->pMethods->xSync(realOf(file), flags);
  }
  static int close(sqlite3_file* f) { return realOf(f)->pMethods->xClose(realOf(f)); }
  static int read(sqlite3_file* f, void* data, int size, sqlite3_int64 offset) {
    return realOf(f)->pMethods->xRead(realOf(f), data, size, offset);
  }
  static int truncate(sqlite3_file* f, sqlite3_int64 size) {
    return realOf(f)->pMethods->xTruncate(realOf(f), size);
  }
  static int fileSize(sqlite3_file* f, sqlite3_int64* size) {
    return realOf(f)->pMethods->xFileSize(realOf(f), size);
  }
  static int lock(sqlite3_file* f, int level) {
    return realOf(f)->pMethods->xLock(realOf(f), level);
  }
  static int unlock(sqlite3_file* f, int level) {
    return realOf(f)->pMethods->xUnlock(realOf(f), level);
  }
  static int checkReservedLock(sqlite3_file* f, int* result) {
    return realOf(f)->pMethods->xCheckReservedLock(realOf(f), result);
  }
  static int control(sqlite3_file* f, int operation, void* argument) {
    return realOf(f)->pMethods->xFileControl(realOf(f), operation, argument);
  }
  static int sectorSize(sqlite3_file* f) { return realOf(f)->pMethods->xSectorSize(realOf(f)); }
  static int characteristics(sqlite3_file* f) {
    return realOf(f)->pMethods->xDeviceCharacteristics(realOf(f));
  }
  static int shmMap(sqlite3_file* f, int page, int size, int extend, void volatile** memory) {
    return realOf(f)->pMethods->xShmMap(realOf(f), page, size, extend, memory);
  }
  static int shmLock(sqlite3_file* f, int offset, int count, int flags) {
    return realOf(f)->pMethods->xShmLock(realOf(f), offset, count, flags);
  }
  static void shmBarrier(sqlite3_file* f) { realOf(f)->pMethods->xShmBarrier(realOf(f)); }
  static int shmUnmap(sqlite3_file* f, int remove) {
    return realOf(f)->pMethods->xShmUnmap(realOf(f), remove);
  }

  static constexpr sqlite3_io_methods methods{2,
                                              close,
                                              read,
                                              write,
                                              truncate,
                                              sync,
                                              fileSize,
                                              lock,
                                              unlock,
                                              checkReservedLock,
                                              control,
                                              sectorSize,
                                              characteristics,
                                              shmMap,
                                              shmLock,
                                              shmBarrier,
                                              shmUnmap,
                                              nullptr,
                                              nullptr};
  static inline FaultyVFS* current = nullptr;

  sqlite3_vfs* real_;
  sqlite3_vfs vfs_;
  int remaining_ = std::numeric_limits<int>::max();
  int code_ = SQLITE_OK;
  bool hasFailed_ = false;
};

}  // namespace quorvex::testing
