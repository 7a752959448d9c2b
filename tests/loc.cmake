# SPDX-License-Identifier: LGPL-2.1-or-later
# SPDX-FileCopyrightText: common_gui developers
# The localization and language tests run a child process (cg_loc_probe) and the localization tools.
# The probe lives in a directory of its own because the qt.conf beside it moves Qt's translations
# directory away, which no other program of the build should see.
set(CG_LOC_PROBE_DIR ${CMAKE_CURRENT_BINARY_DIR}/loc_probe)
add_executable(cg_loc_probe ${CMAKE_CURRENT_SOURCE_DIR}/probe/loc_probe.cpp)
target_link_libraries(cg_loc_probe PRIVATE common_gui Qt::Core)
set_target_properties(cg_loc_probe PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CG_LOC_PROBE_DIR})
file(WRITE ${CG_LOC_PROBE_DIR}/qt.conf "[Paths]\nTranslations=no-translations-here\n")

target_compile_definitions(tst_localization PRIVATE
  CG_LOC_PROBE="$<TARGET_FILE:cg_loc_probe>"
  CG_LOC_COMPILE="$<TARGET_FILE:cg_loc_compile>"
  CG_LOC_DUMP="$<TARGET_FILE:cg_loc_dump>")
add_dependencies(tst_localization cg_loc_probe cg_loc_compile cg_loc_dump cg_translations)
target_compile_definitions(tst_edirs PRIVATE CG_LOC_PROBE="$<TARGET_FILE:cg_loc_probe>")
add_dependencies(tst_edirs cg_loc_probe)
