# SPDX-License-Identifier: LGPL-2.1-or-later
# SPDX-FileCopyrightText: common_gui developers
# Binary resource files for tst_eresource, packed by rcc from tests/data/eresource at build time.
set(CG_ERESOURCE_DATA ${CMAKE_CURRENT_SOURCE_DIR}/data/eresource)
set(CG_ERESOURCE_RCC)
foreach(set early late)
  set(rcc ${CMAKE_CURRENT_BINARY_DIR}/eresource_${set}.rcc)
  add_custom_command(
    OUTPUT ${rcc}
    COMMAND $<TARGET_FILE:${CG_QT}::rcc> --binary ${CG_ERESOURCE_DATA}/${set}.qrc -o ${rcc}
    DEPENDS ${CG_ERESOURCE_DATA}/${set}.qrc ${CG_ERESOURCE_DATA}/blue24.png ${CG_ERESOURCE_DATA}/red16.png
            ${CG_ERESOURCE_DATA}/garbage.png
    VERBATIM)
  list(APPEND CG_ERESOURCE_RCC ${rcc})
endforeach()
add_custom_target(tst_eresource_rcc DEPENDS ${CG_ERESOURCE_RCC})
add_dependencies(tst_eresource tst_eresource_rcc)
target_compile_definitions(tst_eresource PRIVATE CG_ERESOURCE_RCC_DIR="${CMAKE_CURRENT_BINARY_DIR}")
