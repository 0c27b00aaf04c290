# What every POSIX system does the same way. What systems do differently is behind ChildSystem.h,
# ContinuousClock.h and WallClock.h, with one source file a system.
set(posix_sources
  DynamicLoader.cpp PosixChildProcess.cpp PosixChildProcesses.cpp PosixFileAttributes.cpp
  SystemClock.cpp)
