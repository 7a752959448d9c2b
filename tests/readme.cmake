# SPDX-License-Identifier: LGPL-2.1-or-later
# SPDX-FileCopyrightText: common_gui developers
# Every ```cpp block of README.md that holds a main() is a complete example: it is extracted at
# configure time (again whenever README.md changes), built against the library and run offscreen,
# so the README cannot drift from the library.
set(CG_README ${PROJECT_SOURCE_DIR}/README.md)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CG_README})
file(READ ${CG_README} CG_README_TEXT)
set(CG_README_DIR ${CMAKE_CURRENT_BINARY_DIR}/readme)
set(CG_README_FENCE "```")
set(CG_README_COUNT 0)
while(TRUE)
  string(FIND "${CG_README_TEXT}" "${CG_README_FENCE}cpp\n" begin)
  if(begin EQUAL -1)
    break()
  endif()
  math(EXPR begin "${begin} + 7")
  string(SUBSTRING "${CG_README_TEXT}" ${begin} -1 CG_README_TEXT)
  string(FIND "${CG_README_TEXT}" "\n${CG_README_FENCE}" end)
  if(end EQUAL -1)
    message(FATAL_ERROR "README.md: a cpp block is not closed")
  endif()
  string(SUBSTRING "${CG_README_TEXT}" 0 ${end} code)
  math(EXPR end "${end} + 4")
  string(SUBSTRING "${CG_README_TEXT}" ${end} -1 CG_README_TEXT)
  string(FIND "${code}" "int main(" hasMain)
  if(hasMain EQUAL -1)
    continue()
  endif()
  math(EXPR CG_README_COUNT "${CG_README_COUNT} + 1")
  set(name readme_example_${CG_README_COUNT})
  # A one-file example with a Q_OBJECT class includes its moc output, named after its own file:
  # the file gets that name; an example that forgot the include gets one.
  set(base ${name})
  if(code MATCHES "#include \"([A-Za-z0-9_]+)\\.moc\"")
    set(base ${CMAKE_MATCH_1})
  else()
    string(FIND "${code}" "Q_OBJECT" hasObject)
    if(NOT hasObject EQUAL -1)
      string(APPEND code "\n#include \"${name}.moc\"")
    endif()
  endif()
  set(source ${CG_README_DIR}/${name}/${base}.cpp)
  # Written only when changed, so an unchanged example is not rebuilt.
  file(WRITE ${source}.new "${code}\n")
  configure_file(${source}.new ${source} COPYONLY)
  add_executable(${name} ${source})
  target_link_libraries(${name} PRIVATE common_gui Qt::Widgets)
  target_compile_options(${name} PRIVATE -include ${CMAKE_CURRENT_SOURCE_DIR}/readme/quit_soon.h)
  add_test(NAME ${name} COMMAND ${CMAKE_COMMAND} -E env
    CG_USER_DIR=${CG_README_DIR}/${name}/user CG_COMMON_DIR=${CG_README_DIR}/${name}/common
    HOME=${CG_README_DIR}/${name}/home XDG_CONFIG_HOME=${CG_README_DIR}/${name}/home/.config
    $<TARGET_FILE:${name}>)
  file(MAKE_DIRECTORY ${CG_README_DIR}/${name}/user ${CG_README_DIR}/${name}/common ${CG_README_DIR}/${name}/home/.config)
  set_tests_properties(${name} PROPERTIES ENVIRONMENT "${CG_TEST_ENV}" TIMEOUT 60)
endwhile()
if(CG_README_COUNT EQUAL 0)
  # A README without a complete example fails this test rather than the build.
  add_test(NAME readme_has_a_complete_example COMMAND ${CMAKE_COMMAND} -E false)
endif()
