# SPDX-FileCopyrightText: 2026 The Morvix authors
# SPDX-License-Identifier: GPL-3.0-or-later

# A compiler cache and precompiled headers never hit together; the headers are for builds that
# start from nothing.
option(MORVIX_PRECOMPILE "Precompile the headers of libraries, in place of the compiler cache" OFF)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER AND NOT MORVIX_PRECOMPILE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

# morvix_add_precompiled(NAME LINKS…): what morvix_precompile() hands out. One serves many targets, as
# making it takes as long as compiling ten sources.
function(morvix_add_precompiled name)
    if(NOT MORVIX_PRECOMPILE)
        return()
    endif()
    add_library(${name} OBJECT "${PROJECT_SOURCE_DIR}/cmake/Precompiled.cpp")
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
    target_link_libraries(${name} PRIVATE morvix_options Qt6::Core ${ARGN})
    # The folders alone and not the definitions: the compiler takes the header for targets that
    # define more than it was made with, and for none that defines less.
    target_include_directories(${name} SYSTEM PRIVATE
        $<TARGET_PROPERTY:Qt6::Gui,INTERFACE_INCLUDE_DIRECTORIES>
        $<TARGET_PROPERTY:Qt6::Widgets,INTERFACE_INCLUDE_DIRECTORIES>)
    target_precompile_headers(${name} PRIVATE "${PROJECT_SOURCE_DIR}/cmake/Precompiled.h")
endfunction()

# morvix_precompile(TARGET HEADERS)
function(morvix_precompile target headers)
    if(MORVIX_PRECOMPILE)
        target_precompile_headers(${target} REUSE_FROM ${headers})
    endif()
endfunction()
