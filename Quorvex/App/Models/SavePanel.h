#pragma once

#include <QString>
#include <functional>

namespace quorvex {

/// What a panel that saves a file is asked for.
struct SaveRequest {
  QString title;
  QString proposedName;
  QString fileExtension;  ///< the only one that it allows
  QString fileTypeName;   ///< in words
};

/// Asks the user where to save, and calls `chosen` with the file once the user has confirmed. It
/// returns at once. Main thread.
using SavePanel = std::function<void(const SaveRequest& request,
                                     std::function<void(const QString& file)> chosen)>;

}  // namespace quorvex
