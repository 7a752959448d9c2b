# SPDX-License-Identifier: LGPL-2.1-or-later
# SPDX-FileCopyrightText: common_gui developers
# Install the build tree into a temporary prefix and use it from a separate project, through the
# CMake package and through pkg-config; the example application is built, installed and run too. Needs the whole build, so it runs after the suites.
find_program(CG_PKG_CONFIG pkg-config)
if(CG_PKG_CONFIG)
  add_test(NAME install_consumer COMMAND ${CMAKE_COMMAND}
    -DCG_BUILD_DIR=${PROJECT_BINARY_DIR}
    -DCG_CONSUMER_SOURCE=${CMAKE_CURRENT_SOURCE_DIR}/install_consumer
    -DCG_EXAMPLE_SOURCE=${PROJECT_SOURCE_DIR}/examples/hostlist
    -DCG_WORK_DIR=${CMAKE_CURRENT_BINARY_DIR}/install_consumer
    -DCG_CXX=${CMAKE_CXX_COMPILER}
    -DCG_SANITIZE=${CG_SANITIZE}
    -DCG_LAUNCHER=${CG_CCACHE}
    -DCG_QT_MAJOR=${CG_QT_MAJOR}
    -P ${CMAKE_CURRENT_SOURCE_DIR}/install_consumer/run.cmake)
  set_tests_properties(install_consumer PROPERTIES ENVIRONMENT "${CG_TEST_ENV}" TIMEOUT 900 RUN_SERIAL TRUE)
else()
  message(STATUS "pkg-config not found: the install test is skipped")
endif()
