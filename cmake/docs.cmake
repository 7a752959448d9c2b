# SPDX-License-Identifier: LGPL-2.1-or-later
# SPDX-FileCopyrightText: common_gui developers
# Run by the docs target: gets doxygen if the machine lacks it (only this target needs it), builds
# the HTML reference and reports every public member that has no documentation.
#   cmake -DDOXYFILE=... -DOUTPUT=... -P docs.cmake
find_program(DOXYGEN doxygen)
if(NOT DOXYGEN)
  find_program(APT_GET apt-get)
  execute_process(COMMAND id -u OUTPUT_VARIABLE uid OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(APT_GET AND uid STREQUAL "0")
    message(STATUS "Installing doxygen for the docs target")
    execute_process(COMMAND ${APT_GET} install -y -qq --no-install-recommends doxygen
                    RESULT_VARIABLE result OUTPUT_QUIET)
    if(NOT result EQUAL 0)
      execute_process(COMMAND ${APT_GET} update -qq OUTPUT_QUIET)
      execute_process(COMMAND ${APT_GET} install -y -qq --no-install-recommends doxygen OUTPUT_QUIET)
    endif()
    find_program(DOXYGEN doxygen)
  endif()
  if(NOT DOXYGEN)
    message(FATAL_ERROR "doxygen is needed for the docs target: sudo apt-get install doxygen")
  endif()
endif()
file(MAKE_DIRECTORY ${OUTPUT})
execute_process(COMMAND ${DOXYGEN} ${DOXYFILE} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "doxygen failed")
endif()
file(STRINGS ${OUTPUT}/warnings.txt undocumented REGEX "is not documented")
list(LENGTH undocumented count)
foreach(line IN LISTS undocumented)
  message("${line}")
endforeach()
message(STATUS "API reference: ${OUTPUT}/html/index.html; ${count} public members are not documented "
               "(all warnings in ${OUTPUT}/warnings.txt)")
