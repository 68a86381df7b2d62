# What every target of the project is built with.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(QT_QML_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/qml)

find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Network Qml Quick ShaderTools Svg Widgets)
if(UNIX AND NOT APPLE)
  find_package(Qt6 6.4 REQUIRED COMPONENTS DBus)
endif()

find_program(BRINDLE_CCACHE ccache)
if(BRINDLE_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${BRINDLE_CCACHE})
endif()

add_library(brindle_options INTERFACE)
target_include_directories(brindle_options INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_compile_definitions(brindle_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_KEYWORDS QT_NO_FOREACH QT_USE_QSTRINGBUILDER)

# Generated code is not ours to warn about, so the warnings go to the hand-written targets only.
# (Not -Wnull-dereference: it speaks only at -O2 and up, and there of every QPointer that was tested before use.)
set(BRINDLE_WARNINGS -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
  -Wold-style-cast -Wcast-qual -Werror)

set(BRINDLE_SANITIZE "" CACHE STRING "Sanitizers, as -fsanitize takes them")
if(BRINDLE_SANITIZE)
  target_compile_options(brindle_options INTERFACE
    -fsanitize=${BRINDLE_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(brindle_options INTERFACE -fsanitize=${BRINDLE_SANITIZE})
  target_sources(brindle_options INTERFACE
    $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:${CMAKE_SOURCE_DIR}/cmake/SanitizerOptions.cpp>)
  # GCC guesses at these from optimised code, and wrongly from instrumented code; the release build keeps them.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    list(APPEND BRINDLE_WARNINGS -Wno-maybe-uninitialized -Wno-null-dereference)
  endif()
endif()
