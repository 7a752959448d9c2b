# SPDX-License-Identifier: LGPL-2.1-or-later
# SPDX-FileCopyrightText: common_gui developers
# Installs the build tree into a fresh prefix, then builds and runs a separate application against
# it: once through find_package(common_gui), once with the flags pkg-config gives.
# Then the example application is built against the install, installed beside it, and runs its
# self-test headless with its own product directories.
# Arguments: CG_BUILD_DIR CG_CONSUMER_SOURCE CG_EXAMPLE_SOURCE CG_WORK_DIR CG_CXX CG_SANITIZE CG_LAUNCHER CG_QT_MAJOR

function(run what)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${what} failed (${result}):\n${out}\n${err}")
  endif()
  message(STATUS "${what}: done")
  set(run_output "${out}" PARENT_SCOPE)
endfunction()

set(prefix ${CG_WORK_DIR}/prefix)
file(REMOVE_RECURSE ${CG_WORK_DIR})
file(MAKE_DIRECTORY ${prefix} ${CG_WORK_DIR}/home ${CG_WORK_DIR}/user ${CG_WORK_DIR}/common)

set(sanitizer_flags)
if(CG_SANITIZE)
  set(sanitizer_flags -fsanitize=address,undefined -fno-omit-frame-pointer)
endif()
string(REPLACE ";" " " sanitizer_string "${sanitizer_flags}")

run("install" ${CMAKE_COMMAND} --install ${CG_BUILD_DIR} --prefix ${prefix})

# The library's data directory holds its own files only; the gallery's help is the gallery's.
foreach(expected share/common_gui/icons.rcc share/common_gui/translations/common_gui_rus.lcl
                 share/common_gui_gallery/help/eng/index.html)
  if(NOT EXISTS ${prefix}/${expected})
    message(FATAL_ERROR "not installed: ${expected}")
  endif()
endforeach()
# A consumer needs only what the installed headers use: no X11 development packages.
file(GLOB_RECURSE package_files ${prefix}/*/common_guiConfig.cmake ${prefix}/*/common_guiTargets.cmake ${prefix}/*/common_gui.pc)
foreach(package_file ${package_files})
  file(STRINGS ${package_file} x11 REGEX "X11Extras|x11")
  if(x11)
    message(FATAL_ERROR "${package_file} asks consumers for X11 packages: ${x11}")
  endif()
endforeach()
if(EXISTS ${prefix}/share/common_gui/help)
  message(FATAL_ERROR "the gallery's help pages were installed into the library's data directory")
endif()

# The consumer's own directories; the resource directory is left for the library to find.
set(ENV{HOME} ${CG_WORK_DIR}/home)
set(ENV{XDG_CONFIG_HOME} ${CG_WORK_DIR}/home/.config)
set(ENV{CG_USER_DIR} ${CG_WORK_DIR}/user)
set(ENV{CG_COMMON_DIR} ${CG_WORK_DIR}/common)
unset(ENV{CG_RESOURCE_DIR})
unset(ENV{CG_BIN_DIR})
set(ENV{QT_QPA_PLATFORM} offscreen)

# 1. CMake package.
set(launcher)
if(CG_LAUNCHER)
  set(launcher -DCMAKE_CXX_COMPILER_LAUNCHER=${CG_LAUNCHER})
endif()
run("configure the consumer" ${CMAKE_COMMAND} -S ${CG_CONSUMER_SOURCE} -B ${CG_WORK_DIR}/build
  -DCMAKE_BUILD_TYPE=Release -DCMAKE_PREFIX_PATH=${prefix} -DCG_EXPECT_QT_MAJOR=${CG_QT_MAJOR} -DCMAKE_CXX_COMPILER=${CG_CXX} ${launcher}
  "-DCMAKE_CXX_FLAGS=${sanitizer_string}" "-DCMAKE_EXE_LINKER_FLAGS=${sanitizer_string}")
file(STRINGS ${CG_WORK_DIR}/build/CMakeCache.txt found REGEX "^common_gui_DIR:")
string(FIND "${found}" "${prefix}/" at)
if(NOT at GREATER -1)
  message(FATAL_ERROR "find_package(common_gui) found another install: ${found}")
endif()
run("build the consumer" ${CMAKE_COMMAND} --build ${CG_WORK_DIR}/build -j2)
run("run the consumer" ${CG_WORK_DIR}/build/consumer ${prefix})
message("${run_output}")

# 2. pkg-config.
file(GLOB_RECURSE pc_files ${prefix}/*/common_gui.pc)
list(LENGTH pc_files pc_count)
if(NOT pc_count EQUAL 1)
  message(FATAL_ERROR "expected one installed common_gui.pc, found: ${pc_files}")
endif()
get_filename_component(pc_dir ${pc_files} DIRECTORY)
set(ENV{PKG_CONFIG_PATH} ${pc_dir})
run("pkg-config" pkg-config --variable=qt_major common_gui)
string(STRIP "${run_output}" pc_qt_major)
run("pkg-config" pkg-config --print-requires common_gui)
if(NOT pc_qt_major STREQUAL CG_QT_MAJOR OR NOT run_output MATCHES "(^|\n)Qt${CG_QT_MAJOR}Widgets")
  message(FATAL_ERROR "common_gui.pc names Qt '${pc_qt_major}' and requires:\n${run_output}\nthe build used Qt ${CG_QT_MAJOR}")
endif()
run("pkg-config" pkg-config --cflags --libs common_gui)
string(STRIP "${run_output}" pc_flags)
message(STATUS "pkg-config: ${pc_flags}")
separate_arguments(pc_flags UNIX_COMMAND "${pc_flags}")
set(saw_include FALSE)
foreach(flag ${pc_flags})
  if(flag MATCHES "^-I(.*)$")
    get_filename_component(dir "${CMAKE_MATCH_1}" REALPATH)
    if(NOT IS_DIRECTORY "${dir}")
      message(FATAL_ERROR "pkg-config names a missing include directory: ${flag}")
    endif()
    if(dir STREQUAL "${prefix}/include/common_gui")
      set(saw_include TRUE)
    endif()
  elseif(flag MATCHES "^-L(.*)$")
    get_filename_component(libdir "${CMAKE_MATCH_1}" REALPATH)
  endif()
endforeach()
if(NOT saw_include OR NOT EXISTS "${libdir}/libcommon_gui.so")
  message(FATAL_ERROR "pkg-config does not point into the install: ${pc_flags}")
endif()
file(REMOVE_RECURSE ${CG_WORK_DIR}/user ${CG_WORK_DIR}/common)
run("build with pkg-config flags" ${CG_CXX} -std=c++17 ${sanitizer_flags} -DCG_EXPECT_QT_MAJOR=${CG_QT_MAJOR} ${CG_CONSUMER_SOURCE}/main.cpp
  ${pc_flags} -Wl,-rpath,${libdir} -o ${CG_WORK_DIR}/consumer_pc)
run("run the pkg-config consumer" ${CG_WORK_DIR}/consumer_pc ${prefix})
message("${run_output}")

# 3. The example application, with the directories a real user has: no CG_ variables at all.
run("configure the example" ${CMAKE_COMMAND} -S ${CG_EXAMPLE_SOURCE} -B ${CG_WORK_DIR}/hostlist
  -DCMAKE_BUILD_TYPE=Release -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_INSTALL_PREFIX=${prefix}
  -DCMAKE_CXX_COMPILER=${CG_CXX} ${launcher}
  "-DCMAKE_CXX_FLAGS=${sanitizer_string}" "-DCMAKE_EXE_LINKER_FLAGS=${sanitizer_string}")
run("build the example" ${CMAKE_COMMAND} --build ${CG_WORK_DIR}/hostlist -j2)
run("install the example" ${CMAKE_COMMAND} --install ${CG_WORK_DIR}/hostlist)
unset(ENV{CG_USER_DIR})
unset(ENV{CG_COMMON_DIR})
unset(ENV{CG_PRODUCT_NAME})
set(ENV{XDG_CONFIG_DIRS} ${CG_WORK_DIR}/xdg)
run("run the example's self-test" ${prefix}/bin/hostlist --self-test)
message("${run_output}")
if(NOT EXISTS ${CG_WORK_DIR}/home/.config/hostlist/lang.ini AND NOT EXISTS ${CG_WORK_DIR}/xdg/hostlist/lang.ini)
  message(FATAL_ERROR "the example's language choice is not in its own folders")
endif()
