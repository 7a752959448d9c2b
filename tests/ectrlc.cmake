# SPDX-License-Identifier: LGPL-2.1-or-later
# SPDX-FileCopyrightText: common_gui developers
# tst_ectrlc signals a child process that installed ECtrlC and watches it leave its event loop.
add_executable(ectrlc_child ${CMAKE_CURRENT_SOURCE_DIR}/ectrlc_child.cpp)
target_link_libraries(ectrlc_child PRIVATE common_gui)
add_dependencies(tst_ectrlc ectrlc_child)
target_compile_definitions(tst_ectrlc PRIVATE ECTRLC_CHILD="$<TARGET_FILE:ectrlc_child>")
