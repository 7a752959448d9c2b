# SPDX-License-Identifier: LGPL-2.1-or-later
# SPDX-FileCopyrightText: common_gui developers
# tst_estate gives windows icons from the small resource file made for tst_eresource.
add_dependencies(tst_estate tst_eresource_rcc)
target_compile_definitions(tst_estate PRIVATE CG_ERESOURCE_RCC_DIR="${CMAKE_CURRENT_BINARY_DIR}")
