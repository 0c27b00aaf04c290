#pragma once

namespace quorvex {

/// Gives memory that the process holds and does not need now back to the system: free parts of the
/// heap, and pages of program files that the system can fetch again. For the moment after something
/// large has ended. Changes nothing else. Any thread.
void releaseIdleMemory();

}  // namespace quorvex
