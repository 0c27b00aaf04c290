# Makes Quorvex.app of what the build has made: cmake -D NAME=value … -P MakeBundle.cmake
#
# OUTPUT      the bundle's path; what is there is replaced
# VERSION     of the program
# TEMPLATE    Info.plist with its version left open
# EXECUTABLE  `quorvex`; COMMAND_LINE, APP and WINDOWS: the modules that it loads from its own folder
# HELPER      the root-owned tool that the app installs
# ICON        the .icns file
# DEPLOY      optional: Qt's macdeployqt, which copies Qt into the bundle; QML: the folder of the views
# SIGN        optional: the identity that codesign signs with, "-" for none of anybody's
foreach(name OUTPUT VERSION TEMPLATE EXECUTABLE COMMAND_LINE APP WINDOWS HELPER ICON)
  if(NOT ${name})
    message(FATAL_ERROR "MakeBundle needs -D ${name}=…")
  endif()
endforeach()

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(contents "${OUTPUT}/Contents")
file(REMOVE_RECURSE "${OUTPUT}")
file(MAKE_DIRECTORY "${contents}/MacOS" "${contents}/Resources")
set(QUORVEX_VERSION "${VERSION}")
configure_file("${TEMPLATE}" "${contents}/Info.plist" @ONLY)
file(WRITE "${contents}/PkgInfo" "APPL????")
# The command line finds its modules beside itself, through any symbolic link to it.
file(COPY "${EXECUTABLE}" "${COMMAND_LINE}" "${APP}" "${WINDOWS}" DESTINATION "${contents}/MacOS")
file(COPY "${HELPER}" DESTINATION "${contents}/Resources")
file(COPY_FILE "${ICON}" "${contents}/Resources/AppIcon.icns")

set(module_paths "")
foreach(module "${COMMAND_LINE}" "${APP}" "${WINDOWS}")
  get_filename_component(name "${module}" NAME)
  list(APPEND module_paths "${contents}/MacOS/${name}")
endforeach()

if(DEPLOY)
  list(TRANSFORM module_paths PREPEND "-executable=" OUTPUT_VARIABLE deployed)
  run("${DEPLOY}" "${OUTPUT}" ${deployed} "-qmldir=${QML}" -verbose=1)
endif()

if(SIGN)
  # From the inside out: a signature covers what lies within.
  foreach(file "${contents}/Resources/QuorvexHelper" ${module_paths})
    run(codesign --force --options runtime --timestamp=none --sign "${SIGN}" "${file}")
  endforeach()
  file(GLOB inner "${contents}/Frameworks/*" "${contents}/PlugIns/*/*.dylib")
  foreach(file IN LISTS inner)
    run(codesign --force --options runtime --timestamp=none --sign "${SIGN}" "${file}")
  endforeach()
  run(codesign --force --options runtime --timestamp=none --sign "${SIGN}" "${OUTPUT}")
  run(codesign --verify --strict "${OUTPUT}")
endif()
