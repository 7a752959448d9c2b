# SPDX-License-Identifier: LGPL-2.1-or-later
# SPDX-FileCopyrightText: common_gui developers
# The full-disk test runs the localization tools against a full file system.
target_compile_definitions(tst_fulldisk PRIVATE
  CG_LOC_COMPILE="$<TARGET_FILE:cg_loc_compile>"
  CG_LOC_DUMP="$<TARGET_FILE:cg_loc_dump>")
add_dependencies(tst_fulldisk cg_loc_compile cg_loc_dump)
