# Operator-language catalogues. The translation sources (<layer>/translations/
# <catalogue>_<language>.ts) are kept in the tree and updated by
# tools/update-translations.sh; the build only compiles them (lrelease), so a
# clean build never touches them.
find_package(Qt5LinguistTools 5.15 REQUIRED)

# Where the compiled catalogues go: one folder for the whole build tree, and
# share/alarmscreen/translations in an installed prefix.
set(AS_TRANSLATIONS_BUILD_DIR "${CMAKE_BINARY_DIR}/translations")
set(AS_TRANSLATIONS_INSTALL_DIR "${CMAKE_INSTALL_DATADIR}/alarmscreen/translations")

# as_add_translations(<target>)
# Compiles every translations/*.ts of the current source directory into a .qm
# that is ready before <target> is built, and installs it with the package.
function(as_add_translations target)
  file(GLOB ts_files CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/translations/*.ts")
  if(NOT ts_files)
    return()
  endif()
  set_source_files_properties(${ts_files} PROPERTIES OUTPUT_LOCATION "${AS_TRANSLATIONS_BUILD_DIR}")
  qt5_add_translation(qm_files ${ts_files} OPTIONS -silent)
  add_custom_target(${target}_translations DEPENDS ${qm_files})
  add_dependencies(${target} ${target}_translations)
  install(FILES ${qm_files} DESTINATION "${AS_TRANSLATIONS_INSTALL_DIR}")
endfunction()
