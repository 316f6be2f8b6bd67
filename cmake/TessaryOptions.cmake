# Compiler settings shared by every target, and the function that declares a room of the house.
option(TESSARY_TESTS "Build the tests" ON)
option(TESSARY_BENCHMARKS "Build the benchmarks" OFF)
set(TESSARY_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_INTERPROCEDURAL_OPTIMIZATION OFF)

find_program(TESSARY_CCACHE ccache)
if(TESSARY_CCACHE)
    # Precompiled headers are only cached with these two checks relaxed.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${TESSARY_CCACHE})
endif()

add_library(tessary_options INTERFACE)
target_compile_options(tessary_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -fpch-preprocess)
target_compile_definitions(tessary_options INTERFACE
    QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_JAVA_STYLE_ITERATORS
    TESSARY_VERSION="${PROJECT_VERSION}")
target_include_directories(tessary_options INTERFACE "${PROJECT_SOURCE_DIR}")
if(TESSARY_SANITIZE)
    target_compile_options(tessary_options INTERFACE
        -fsanitize=${TESSARY_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(tessary_options INTERFACE -fsanitize=${TESSARY_SANITIZE})
endif()

# tessary_library(NAME SOURCES ... [USES ...]): one folder's static library. What stands behind
# USES is all that its files may include.
function(tessary_library name)
    cmake_parse_arguments(arg "" "" "SOURCES;USES" ${ARGN})
    add_library(${name} STATIC ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    target_link_libraries(${name} PUBLIC tessary_options ${arg_USES})
    if(name STREQUAL "tessary_base")
        target_precompile_headers(${name} PRIVATE "${PROJECT_SOURCE_DIR}/cmake/precompiled.h")
    else()
        target_precompile_headers(${name} REUSE_FROM tessary_base)
    endif()
endfunction()
