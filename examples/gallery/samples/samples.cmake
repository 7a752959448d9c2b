# SPDX-License-Identifier: LGPL-2.1-or-later
# SPDX-FileCopyrightText: common_gui developers
# Sample text files for the "Text files" page, in the encodings they declare (or do not): copied
# byte for byte into the build's resource tree and installed under <prefix>/share/common_gui/samples.
file(GLOB GALLERY_SAMPLES CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.sh ${CMAKE_CURRENT_LIST_DIR}/*.xml
  ${CMAKE_CURRENT_LIST_DIR}/*.lsp)
set(GALLERY_SAMPLE_OUTPUTS)
foreach(sample ${GALLERY_SAMPLES})
  get_filename_component(name ${sample} NAME)
  set(target ${CG_BUILD_DATADIR}/samples/${name})
  add_custom_command(OUTPUT ${target}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CG_BUILD_DATADIR}/samples
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${sample} ${target}
    DEPENDS ${sample}
    VERBATIM)
  list(APPEND GALLERY_SAMPLE_OUTPUTS ${target})
endforeach()
add_custom_target(common_gui_gallery_samples ALL DEPENDS ${GALLERY_SAMPLE_OUTPUTS})
add_dependencies(common_gui_gallery common_gui_gallery_samples)
install(FILES ${GALLERY_SAMPLES} DESTINATION ${CG_INSTALL_DATADIR}/samples)
