# Checks the folders' layering by their #include lines and fails when a file
# breaks it. Runs as a build step that every library waits for, and as a
# test.
#   cmake -DROOT=<source dir> [-DSTAMP=<file touched on success>] -P check_layering.cmake
cmake_minimum_required(VERSION 3.25)
#
# Which folders of src/ a file may include, by the folder it lives in (its
# own folder always). apps/cli and apps/qgis stand above all of src/.
set(src_folders platform errors support presentation metadata shell transforms plot standids waypoints)
set(may_include_platform     "")
set(may_include_errors       platform)
set(may_include_support      errors platform)
set(may_include_presentation support errors platform)
set(may_include_metadata     presentation support errors platform)
set(may_include_shell        presentation support errors platform)
set(may_include_transforms   shell presentation support errors platform)
set(may_include_plot         transforms shell metadata presentation support errors platform)
set(may_include_standids     transforms shell metadata presentation support errors platform)
set(may_include_waypoints    transforms shell presentation support errors platform)
set(may_include_cli          ${src_folders})
set(may_include_qgis         ${src_folders})

# Outside libraries that only one folder may include: GDAL, GEOS, PROJ and
# SQLite in src/platform, Qt and QGIS in apps/qgis.
set(data_libraries "^(gdal|ogr|cpl_|geos|proj[._/]|proj$|sqlite3)")
set(data_libraries_home platform)
set(desktop_libraries "^(Q[A-Za-z]+$|Qt[A-Za-z]*/|qgs|qgis)")
set(desktop_libraries_home qgis)

file(GLOB_RECURSE files ${ROOT}/src/*.h ${ROOT}/src/*.cpp ${ROOT}/src/*.h.in ${ROOT}/apps/*.h ${ROOT}/apps/*.cpp)
set(violations "")
foreach(file IN LISTS files)
  file(RELATIVE_PATH relative ${ROOT} ${file})
  string(REGEX REPLACE "^(src|apps)/([^/]+)/.*" "\\2" folder "${relative}")
  if(NOT DEFINED may_include_${folder})
    list(APPEND violations "${relative}: the folder '${folder}' has no row in the layering table")
    continue()
  endif()
  file(STRINGS ${file} includes REGEX "^[ \t]*#[ \t]*include[ \t]*[<\"]")
  foreach(line IN LISTS includes)
    string(REGEX MATCH "[<\"]([^>\"]+)[>\"]" ignored "${line}")
    set(header "${CMAKE_MATCH_1}")
    string(REGEX MATCH "^[a-z_]+/" target_folder "${header}")
    string(REPLACE "/" "" target_folder "${target_folder}")
    if(target_folder AND NOT target_folder STREQUAL folder AND target_folder IN_LIST src_folders
       AND NOT target_folder IN_LIST may_include_${folder})
      list(APPEND violations "${relative}: ${folder}/ may not include ${header}")
    endif()
    if(header MATCHES "${data_libraries}" AND NOT folder STREQUAL data_libraries_home)
      list(APPEND violations "${relative}: only src/${data_libraries_home}/ may include ${header}")
    endif()
    if(header MATCHES "${desktop_libraries}" AND NOT folder STREQUAL desktop_libraries_home)
      list(APPEND violations "${relative}: only apps/${desktop_libraries_home}/ may include ${header}")
    endif()
  endforeach()
endforeach()

if(violations)
  list(JOIN violations "\n  " text)
  message(FATAL_ERROR "Layering broken:\n  ${text}")
endif()
if(STAMP)
  file(TOUCH ${STAMP})
endif()
