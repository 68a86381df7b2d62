# The kinds of targets that the project has.

function(_brindle_common target)
  target_link_libraries(${target} PUBLIC brindle_options)
  target_compile_options(${target} PRIVATE ${BRINDLE_WARNINGS})
endfunction()

# brindle_library(NAME SOURCES … LINKS …): a plain static library, one for each room without QML.
function(brindle_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC ${arg_LINKS})
  _brindle_common(${name})
endfunction()

# brindle_qml_library(NAME URI Brindle.X SOURCES … QML … SINGLETONS … LINKS … MODULES …): a room with QML; one static
# library and one QML module, which knows the types of the named MODULES. The plugin is linked by whoever loads the module (target <NAME>plugin).
function(brindle_qml_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "URI" "SOURCES;QML;SINGLETONS;RESOURCES;LINKS;MODULES")
  foreach(file IN LISTS arg_SINGLETONS)
    set_source_files_properties(${file} PROPERTIES QT_QML_SINGLETON_TYPE TRUE)
  endforeach()
  string(REPLACE "." "/" folder ${arg_URI})
  qt_add_qml_module(${name} STATIC
    URI ${arg_URI} VERSION 1.0 RESOURCE_PREFIX /qt/qml
    DEPENDENCIES QtQml QtQml.Models QtQuick ${arg_MODULES}
    OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/qml/${folder}
    SOURCES ${arg_SOURCES} QML_FILES ${arg_QML} ${arg_SINGLETONS} RESOURCES ${arg_RESOURCES})
  target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC Qt6::Quick ${arg_LINKS} brindle_options)
  set_source_files_properties(${arg_SOURCES} PROPERTIES COMPILE_OPTIONS "${BRINDLE_WARNINGS}")
endfunction()

# brindle_test(NAME LABEL unit SOURCES … LINKS …): a GoogleTest binary; each case is one entry of ctest. Sanitized
# entries have a prefix, so that one run over several build folders tells them apart.
function(brindle_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "LABEL;TIMEOUT;ENVIRONMENT" "SOURCES;LINKS")
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE brindle_test_support ${arg_LINKS})
  _brindle_common(${name})
  brindle_test_again(${name} LABEL ${arg_LABEL} TIMEOUT "${arg_TIMEOUT}" ENVIRONMENT "${arg_ENVIRONMENT}")
endfunction()

# brindle_test_again(NAME LABEL unit PREFIX "2x: " FILTER "Suite.*" ENVIRONMENT NAME=VALUE): the same binary, or some of
# its cases, in other surroundings. One variable only: gtest_discover_tests loses those after the first.
function(brindle_test_again name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "LABEL;TIMEOUT;PREFIX;FILTER;ENVIRONMENT" "")
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 60)
  endif()
  if(BRINDLE_SANITIZE)
    string(PREPEND arg_PREFIX "sanitized:")
  endif()
  set(environment "")
  if(arg_ENVIRONMENT)
    set(environment ENVIRONMENT "${arg_ENVIRONMENT}")
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST TEST_PREFIX "${arg_PREFIX}" TEST_FILTER "${arg_FILTER}"
    PROPERTIES LABELS ${arg_LABEL} TIMEOUT ${arg_TIMEOUT} ${environment})
endfunction()
