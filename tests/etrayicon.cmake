# SPDX-License-Identifier: LGPL-2.1-or-later
# SPDX-FileCopyrightText: common_gui developers
# tst_etrayicon asks the X server about the tray's windows. CTest runs it twice: offscreen like every
# suite (no tray there), and under a virtual X server of its own, where the test starts a real tray
# host (trayer) and puts icons into it.
target_link_libraries(tst_etrayicon PRIVATE ${X11_LIBRARIES})

find_program(CG_XVFB Xvfb)
if(CG_XVFB)
  add_test(NAME tst_etrayicon_x11
           COMMAND sh ${CMAKE_CURRENT_SOURCE_DIR}/xvfbfixture.sh ${CG_XVFB} $<TARGET_FILE:tst_etrayicon>)
  set(CG_X11_TEST_ENV ${CG_TEST_ENV})
  list(FILTER CG_X11_TEST_ENV EXCLUDE REGEX "^QT_QPA_PLATFORM=")
  set_tests_properties(tst_etrayicon_x11 PROPERTIES ENVIRONMENT "${CG_X11_TEST_ENV}" TIMEOUT 300)
else()
  message(STATUS "Xvfb not found: the tray icon is tested offscreen only")
endif()
