# SPDX-License-Identifier: LGPL-2.1-or-later
# SPDX-FileCopyrightText: common_gui developers
# Every fuzz target, built without libFuzzer, runs over its seed corpus and over the inputs that
# once made it fail (tests/data/fuzz/<target>): an old fault cannot come back unnoticed.
foreach(target ${CG_FUZZ_TARGETS})
  add_executable(replay_${target} ${PROJECT_SOURCE_DIR}/fuzz/${target}.cpp ${PROJECT_SOURCE_DIR}/fuzz/fuzzsupport.cpp
                 ${PROJECT_SOURCE_DIR}/fuzz/replay_main.cpp)
  target_include_directories(replay_${target} PRIVATE ${PROJECT_SOURCE_DIR}/fuzz)
  target_link_libraries(replay_${target} PRIVATE common_gui cg_locfile Qt::Widgets)
  set(inputs ${PROJECT_SOURCE_DIR}/fuzz/corpus/${target})
  if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/data/fuzz/${target})
    list(APPEND inputs ${CMAKE_CURRENT_SOURCE_DIR}/data/fuzz/${target})
  endif()
  add_test(NAME replay_${target} COMMAND replay_${target} ${inputs})
  set_tests_properties(replay_${target} PROPERTIES ENVIRONMENT "${CG_TEST_ENV}" TIMEOUT 300)
endforeach()
