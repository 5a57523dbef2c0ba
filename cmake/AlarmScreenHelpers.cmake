# Shared build settings of the project's own targets.

function(as_target_warnings target)
  # clang (the fuzz build) knows no -Wshadow=local, and with -Wpedantic it
  # objects to Qt's logging macros.
  set(compiler_specific -Wshadow=local)
  if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    set(compiler_specific -Wno-gnu-zero-variadic-macro-arguments)
  endif()
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic ${compiler_specific}
                         -Wnon-virtual-dtor -Woverloaded-virtual)
  if(AS_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(AS_SANITIZE)
    # GCC leaves float-cast-overflow out of "undefined": a double beyond the
    # range of the integer it is converted to.
    target_compile_options(${target} PRIVATE -fsanitize=address,undefined,float-cast-overflow
                           -fno-omit-frame-pointer -fno-sanitize-recover=undefined,float-cast-overflow)
    target_link_options(${target} PRIVATE -fsanitize=address,undefined,float-cast-overflow)
  endif()
  if(AS_BUILD_FUZZ)
    # Coverage feedback for the fuzzer from the libraries too, not only the targets.
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link,address,undefined
                           -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
    target_link_options(${target} PRIVATE -fsanitize=address,undefined)
  endif()
endfunction()

# as_add_layer(<target> EXPORT_NAME <name> OUTPUT_NAME <name> INCLUDE_SUBDIRS <dirs...>
#              LIBS <libs...>)
# One library per layer. Sources are the layer's .cpp/.h/.ui/.qrc files; the public
# headers are installed under include/alarmscreen/<layer>.
function(as_add_layer target)
  cmake_parse_arguments(ARG "" "EXPORT_NAME;OUTPUT_NAME;LAYER" "INCLUDE_SUBDIRS;LIBS" ${ARGN})
  set(dirs ".")
  list(APPEND dirs ${ARG_INCLUDE_SUBDIRS})
  set(sources "")
  set(build_includes "")
  set(install_includes "")
  foreach(dir ${dirs})
    file(GLOB found CONFIGURE_DEPENDS
         "${CMAKE_CURRENT_SOURCE_DIR}/${dir}/*.cpp"
         "${CMAKE_CURRENT_SOURCE_DIR}/${dir}/*.h"
         "${CMAKE_CURRENT_SOURCE_DIR}/${dir}/*.ui"
         "${CMAKE_CURRENT_SOURCE_DIR}/${dir}/*.qrc")
    list(APPEND sources ${found})
    list(APPEND build_includes "$<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/${dir}>")
    if(dir STREQUAL ".")
      list(APPEND install_includes "$<INSTALL_INTERFACE:include/alarmscreen/${ARG_LAYER}>")
    else()
      list(APPEND install_includes "$<INSTALL_INTERFACE:include/alarmscreen/${ARG_LAYER}/${dir}>")
    endif()
    file(GLOB headers CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${dir}/*.h")
    install(FILES ${headers} DESTINATION include/alarmscreen/${ARG_LAYER}/${dir})
    # Exported as an include path even while it holds no headers yet.
    install(DIRECTORY DESTINATION include/alarmscreen/${ARG_LAYER}/${dir})
  endforeach()

  add_library(${target} SHARED ${sources})
  set_target_properties(${target} PROPERTIES
      EXPORT_NAME ${ARG_EXPORT_NAME}
      OUTPUT_NAME ${ARG_OUTPUT_NAME}
      VERSION ${PROJECT_VERSION}
      SOVERSION ${PROJECT_VERSION_MAJOR}
      AUTOUIC_SEARCH_PATHS "${CMAKE_CURRENT_SOURCE_DIR}"
      # Installed, the layers sit side by side in one directory: each finds the
      # ones it needs there, wherever the prefix is, so that a host linking
      # only the widgets does not have to know about the layers beneath.
      INSTALL_RPATH "$ORIGIN")
  string(TOUPPER ${ARG_LAYER} upper)
  generate_export_header(${target}
      BASE_NAME ${upper}
      EXPORT_FILE_NAME "${CMAKE_CURRENT_BINARY_DIR}/${ARG_LAYER}_export.h")
  target_include_directories(${target} PUBLIC
      ${build_includes} ${install_includes}
      "$<BUILD_INTERFACE:${CMAKE_CURRENT_BINARY_DIR}>")
  target_link_libraries(${target} PUBLIC ${ARG_LIBS})
  as_target_warnings(${target})
  add_library(AlarmScreen::${ARG_EXPORT_NAME} ALIAS ${target})
  install(TARGETS ${target} EXPORT AlarmScreenTargets
          LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
          ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
          RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${ARG_LAYER}_export.h"
          DESTINATION include/alarmscreen/${ARG_LAYER})
endfunction()

# as_add_tests(<prefix> LIBS <libs...> [SOURCES <shared sources>])
# Every tst_<name>.cpp below the current directory (sub-folders mirror the layer's
# own) becomes one QtTest executable and one ctest test, run headless. Shared
# helper sources are compiled into each; helpers at the directory's top are found
# by every test.
function(as_add_tests prefix)
  cmake_parse_arguments(ARG "" "" "LIBS;SOURCES;ENVIRONMENT" ${ARGN})
  file(GLOB_RECURSE tests CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/tst_*.cpp")
  foreach(src ${tests})
    get_filename_component(name ${src} NAME_WE)
    set(target "${prefix}_${name}")
    add_executable(${target} ${src} ${ARG_SOURCES})
    target_link_libraries(${target} PRIVATE Qt5::Test ${ARG_LIBS})
    target_include_directories(${target} PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}"
                               "${CMAKE_SOURCE_DIR}/tests/common")
    as_target_warnings(${target})
    add_test(NAME ${target} COMMAND ${target})
    set_tests_properties(${target} PROPERTIES
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;AS_TEST_SOURCE_DIR=${CMAKE_SOURCE_DIR};${ARG_ENVIRONMENT}"
        TIMEOUT 120)
  endforeach()
endfunction()

# as_install_rpath_to_libdir(<target>)
# An installed executable finds the project's libraries in the prefix's library
# directory, relative to its own place, so that the prefix can move.
function(as_install_rpath_to_libdir target)
  file(RELATIVE_PATH to_libdir "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN/${to_libdir}")
endfunction()
