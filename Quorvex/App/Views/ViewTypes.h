#pragma once

#include <QQmlEngine>

namespace quorvex {

/// Makes the program's views and the items that they are drawn with known to an engine. Main
/// thread.
void registerViewTypes(QQmlEngine& engine);

}  // namespace quorvex
