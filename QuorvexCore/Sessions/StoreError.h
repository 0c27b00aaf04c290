#pragma once

#include <string>

#include "Result.h"

namespace quorvex {

/// Why an operation of the session store failed.
struct StoreError {
  enum class Kind {
    cannotOpen,      ///< no such folder, no permission, no regular file
    notAStore,       ///< a file of another kind, left untouched
    newerSchema,     ///< written by a later version of the program, left untouched
    damaged,         ///< a store whose content is broken
    readOnly,        ///< the file may not be written
    diskFull,        ///< no space left for the change
    busy,            ///< another process kept the store longer than the time-out
    gone,            ///< the file was moved or deleted while it was open
    failedIO,        ///< the disk or the database failed in another way
    sessionDeleted,  ///< the session is no longer in the store
    notEncodable,    ///< a value that has no JSON form
  };

  Kind kind = Kind::failedIO;
  std::string description;  ///< one sentence for people

  bool operator==(const StoreError&) const = default;
};

template <typename Value>
using StoreResult = Result<Value, StoreError>;

}  // namespace quorvex
