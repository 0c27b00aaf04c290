#include <utility>

#include "QuickWindowHost.h"

/// Entry point of the module of the windows.
extern "C" __attribute__((visibility("default"))) quorvex::WindowHost* quorvex_make_windows(
    quorvex::WindowHost::ModelMaker* makeModel) {
  return new quorvex::QuickWindowHost(std::move(*makeModel));
}
