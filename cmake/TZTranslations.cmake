# tz_add_translations(<target> CATALOG <name> SOURCES <folder>...)
#
# Translations of the library's visible texts, kept in resources/translations:
#  - "cmake --build build --target translations" runs lupdate over the
#    source folders and the forms and refreshes the template <name>.ts and
#    every language file <name>_<lang>.ts there (new texts are added
#    unfinished, translations already made are kept);
#  - every build compiles the language files to .qm and compiles them into
#    <target> under ":/i18n/", where TZRenderTranslation finds them.
# A new language starts as a copy of the template named <name>_<lang>.ts.
function(tz_add_translations target)
  cmake_parse_arguments(ARG "" "CATALOG" "SOURCES" ${ARGN})
  set(ts_dir ${CMAKE_SOURCE_DIR}/resources/translations)
  file(GLOB languages CONFIGURE_DEPENDS ${ts_dir}/${ARG_CATALOG}_*.ts)

  add_custom_target(translations
    COMMAND Qt5::lupdate -silent -locations relative ${ARG_SOURCES}
            -ts ${ts_dir}/${ARG_CATALOG}.ts ${languages}
    WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
    COMMENT "Updating the translation files in resources/translations"
    VERBATIM)

  set(qm_dir ${CMAKE_CURRENT_BINARY_DIR}/i18n)
  set_source_files_properties(${languages} PROPERTIES OUTPUT_LOCATION ${qm_dir})
  qt5_add_translation(qm_files ${languages} OPTIONS -silent)

  # The compiled files, as a resource of their own (not AUTORCC: the .qm
  # files are made by this build).
  set(entries)
  foreach(qm IN LISTS qm_files)
    get_filename_component(qm_name ${qm} NAME)
    string(APPEND entries "    <file alias=\"${qm_name}\">${qm}</file>\n")
  endforeach()
  set(qrc ${qm_dir}/${ARG_CATALOG}_i18n.qrc)
  file(CONFIGURE OUTPUT ${qrc} CONTENT
    "<RCC>\n  <qresource prefix=\"/i18n\">\n${entries}  </qresource>\n</RCC>\n")
  set(qrc_cpp ${qm_dir}/qrc_${ARG_CATALOG}_i18n.cpp)
  add_custom_command(OUTPUT ${qrc_cpp}
    COMMAND Qt5::rcc --name ${ARG_CATALOG}_i18n --output ${qrc_cpp} ${qrc}
    DEPENDS ${qrc} ${qm_files}
    COMMENT "Compiling the translations into ${target}"
    VERBATIM)
  set_source_files_properties(${qrc_cpp} PROPERTIES SKIP_AUTOGEN ON)
  target_sources(${target} PRIVATE ${qrc_cpp})
endfunction()
