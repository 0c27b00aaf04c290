# How every target of the project is compiled, and the functions that declare them.
find_package(Threads REQUIRED)
find_package(fmt REQUIRED)

add_library(QuorvexOptions INTERFACE)
target_compile_options(QuorvexOptions INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
# Designated initialisers may leave out fields that have a default.
target_compile_options(QuorvexOptions INTERFACE -Wno-missing-field-initializers)
if(QUORVEX_SANITIZERS)
  target_compile_options(QuorvexOptions INTERFACE
    -fsanitize=${QUORVEX_SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(QuorvexOptions INTERFACE -fsanitize=${QUORVEX_SANITIZERS})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # The instrumentation hides initialisations from this warning: it then finds faults in the
    # standard library's own regular expressions. Builds without a sanitizer keep it.
    target_compile_options(QuorvexOptions INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()
if(QUORVEX_FUZZ)
  target_compile_options(QuorvexOptions INTERFACE -fsanitize=fuzzer-no-link)
endif()
target_link_libraries(QuorvexOptions INTERFACE Threads::Threads)

# One folder, one static library. Its headers are found only by targets that link it, so that an
# include against the direction of dependencies does not compile.
function(quorvex_library name)
  add_library(${name} STATIC ${ARGN})
  target_include_directories(${name} PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
  target_link_libraries(${name} PUBLIC QuorvexOptions)
  target_precompile_headers(${name} PRIVATE
    <algorithm> <array> <chrono> <cstdint> <map> <memory> <optional> <span> <string>
    <string_view> <utility> <variant> <vector>)
endfunction()

# A module offers its entry point only. What it links statically is not looked up by name when it is
# loaded, which would take most of the loading.
function(quorvex_hides_its_libraries module)
  if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND NOT QUORVEX_SANITIZERS)
    target_link_options(${module} PRIVATE LINKER:--exclude-libs,ALL)
  endif()
endfunction()

# A compiler cache makes repeated builds cheap; precompiled headers need these allowances.
find_program(QUORVEX_CCACHE ccache)
if(QUORVEX_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER
    ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${QUORVEX_CCACHE})
endif()
