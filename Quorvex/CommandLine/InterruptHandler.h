#pragma once

namespace quorvex {

/// From now on the interrupt signal (Ctrl+C) shows the cursor, resets the colours, says "Stopped."
/// on standard output and ends the process with status 0. It may come at any time, on any thread.
/// Main thread.
void installInterruptHandler();

}  // namespace quorvex
