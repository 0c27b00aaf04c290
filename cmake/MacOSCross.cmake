# Toolchain: compiles for Macs with Apple silicon on a computer that is none. The cross compiler has
# Darwin's C headers; what else the program needs of macOS is in QUORVEX_MACOS_SYSROOT, whose
# libraries have symbols and no code. What comes out shows that everything compiles and links; it is
# not meant to run. scripts/check-macos prepares all of it.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR arm64)
set(CMAKE_CXX_COMPILER "${QUORVEX_MACOS_TOOLS}/c++")
set(CMAKE_AR "${QUORVEX_MACOS_TOOLS}/ar" CACHE FILEPATH "")
set(CMAKE_RANLIB "${QUORVEX_MACOS_TOOLS}/ranlib" CACHE FILEPATH "")
set(CMAKE_INSTALL_NAME_TOOL "${QUORVEX_MACOS_TOOLS}/ranlib" CACHE FILEPATH "")
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES QUORVEX_MACOS_TOOLS QUORVEX_MACOS_SYSROOT)

set(CMAKE_CXX_STANDARD_INCLUDE_DIRECTORIES
  "${QUORVEX_MACOS_SYSROOT}/include" "${CMAKE_CURRENT_LIST_DIR}/../Tests/Darwin/include")
set(framework_search "-F${QUORVEX_MACOS_SYSROOT}/Frameworks -L${QUORVEX_MACOS_SYSROOT}/lib")
set(CMAKE_EXE_LINKER_FLAGS_INIT "${framework_search}")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "${framework_search}")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "${framework_search}")

set(CMAKE_FIND_ROOT_PATH "${QUORVEX_MACOS_SYSROOT}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
