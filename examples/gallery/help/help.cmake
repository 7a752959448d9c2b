# SPDX-License-Identifier: LGPL-2.1-or-later
# SPDX-FileCopyrightText: common_gui developers
# The gallery's own help pages, one directory per language: the gallery names its product
# common_gui_gallery, so they belong in share/common_gui_gallery/help of the build tree (where the
# gallery run from the build finds them) and of the install, never in the library's data directory.
set(GALLERY_BUILD_DATADIR ${CMAKE_BINARY_DIR}/share/common_gui_gallery)
file(GLOB_RECURSE GALLERY_HELP_PAGES CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_LIST_DIR}
  ${CMAKE_CURRENT_LIST_DIR}/*.html)
set(GALLERY_HELP_OUTPUTS)
foreach(page ${GALLERY_HELP_PAGES})
  set(target_page ${GALLERY_BUILD_DATADIR}/help/${page})
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
install(DIRECTORY ${CMAKE_CURRENT_LIST_DIR}/ DESTINATION ${CMAKE_INSTALL_DATADIR}/common_gui_gallery/help
  FILES_MATCHING PATTERN "*.html")
