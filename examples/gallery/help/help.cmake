# SPDX-License-Identifier: LGPL-2.1-or-later
# SPDX-FileCopyrightText: common_gui developers
# The gallery's own help pages, one directory per language: copied into the build's resource tree
# (so the gallery run from the build finds them) and installed under <prefix>/share/common_gui/help.
file(GLOB_RECURSE GALLERY_HELP_PAGES CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_LIST_DIR}
  ${CMAKE_CURRENT_LIST_DIR}/*.html)
set(GALLERY_HELP_OUTPUTS)
foreach(page ${GALLERY_HELP_PAGES})
  set(target_page ${CG_BUILD_DATADIR}/help/${page})
  get_filename_component(target_dir ${target_page} DIRECTORY)
  add_custom_command(OUTPUT ${target_page}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${target_dir}
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${CMAKE_CURRENT_LIST_DIR}/${page} ${target_page}
    DEPENDS ${CMAKE_CURRENT_LIST_DIR}/${page}
    VERBATIM)
  list(APPEND GALLERY_HELP_OUTPUTS ${target_page})
endforeach()
add_custom_target(common_gui_gallery_help ALL DEPENDS ${GALLERY_HELP_OUTPUTS})
add_dependencies(common_gui_gallery common_gui_gallery_help)
install(DIRECTORY ${CMAKE_CURRENT_LIST_DIR}/ DESTINATION ${CG_INSTALL_DATADIR}/help
  FILES_MATCHING PATTERN "*.html")
