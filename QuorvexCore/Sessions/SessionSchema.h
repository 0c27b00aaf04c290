#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string_view>

#include "SQLiteDatabase.h"
#include "StoreError.h"

namespace quorvex {

/// The tables of a session store, and what tells a store's file from any other. The format is
/// described for readers outside the program in docs/store-format.md.
namespace SessionSchema {

/// "QVXS": the file's application id.
inline constexpr std::int64_t applicationID = 0x51565853;
/// The schema that this program writes. A file with a greater one is left alone.
inline constexpr std::int64_t version = 1;

/// Opens the store at `path`, and makes it when there is no file. A file that is no session store,
/// that a later program wrote, that is damaged where it can be seen at once or that may not be
/// written is refused and stays as it is, byte for byte.
[[nodiscard]] StoreResult<SQLiteDatabase> open(const std::filesystem::path& path,
                                               std::chrono::milliseconds busyTimeout);

/// A store that lives as long as its connection.
[[nodiscard]] StoreResult<SQLiteDatabase> openInMemory();

}  // namespace SessionSchema

}  // namespace quorvex
