# SPDX-FileCopyrightText: 2026 The Morvix authors
# SPDX-License-Identifier: GPL-3.0-or-later

# A compiler cache and precompiled headers never hit together; the headers are for builds that
# start from nothing.
option(MORVIX_PRECOMPILE "Precompile the headers of libraries, in place of the compiler cache" OFF)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER AND NOT MORVIX_PRECOMPILE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

# Which libraries' headers the targets of a folder and below find precompiled: core or widgets.
set(MORVIX_HEADERS core)

# morvix_add_precompiled(KIND LINKS…): the two that morvix_precompile() hands out for a kind of
# target. They serve many targets each, as making one takes as long as compiling ten sources.
function(morvix_add_precompiled kind)
    if(NOT MORVIX_PRECOMPILE)
        return()
    endif()
    foreach(headers core widgets)
        set(name morvix_${kind}_${headers}_headers)
        add_library(${name} OBJECT "${PROJECT_SOURCE_DIR}/cmake/Precompiled.cpp")
        set_target_properties(${name} PROPERTIES AUTOMOC OFF)
        target_link_libraries(${name} PRIVATE morvix_options Qt6::Core ${ARGN})
        target_precompile_headers(${name} PRIVATE "${PROJECT_SOURCE_DIR}/cmake/Precompiled.h")
    endforeach()
    target_link_libraries(${name} PRIVATE Qt6::Widgets)
endfunction()

# morvix_precompile(TARGET KIND)
function(morvix_precompile target kind)
    if(MORVIX_PRECOMPILE)
        target_precompile_headers(${target} REUSE_FROM morvix_${kind}_${MORVIX_HEADERS}_headers)
    endif()
endfunction()
